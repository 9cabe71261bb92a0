// Short ways to write the sights of a multi-point resection or a known line, and to make the call.
#pragma once

#include <vector>

#include "points.hpp"

namespace kavo_test {

using MultiSights = std::vector<MultiResectInput>;

/// A level sight; slope and horizontal distance are the same, 0 for none.
inline MultiResectInput Sight(const CoordPt& point, IntAngle ha, double dist = 0.0,
                              double heightDiff = 0.0, double heightTerm = 0.0) {
  return {point, ha, ANGLE_QUARTER_CIRCLE, dist, dist, heightDiff, heightTerm};
}

/// The sight without a distance and with another zenith reading.
inline MultiResectInput WithZenith(MultiResectInput sight, IntAngle va) {
  sight.va = va;
  return sight;
}

/// What a resection answers over outputs that were Untouched.
struct MultiAnswer {
  std::int32_t status;
  MultiResectResult result = Untouched<MultiResectResult>();
  std::vector<MultiResectResidual> residuals;

  /// True when no byte was written.
  [[nodiscard]] bool IsUntouched() const {
    bool same = Text(result) == Text(Untouched<MultiResectResult>());
    for (const auto& residual : residuals) {
      same = same && Text(residual) == Text(Untouched<MultiResectResidual>());
    }
    return same;
  }
};

inline MultiAnswer Resect(const MultiSights& sights) {
  MultiAnswer answer{0, Untouched<MultiResectResult>(),
                     std::vector(sights.size(), Untouched<MultiResectResidual>())};
  answer.status = KavoSTNMultiResect(static_cast<std::int16_t>(sights.size()), sights.data(),
                                     &answer.result, answer.residuals.data());
  return answer;
}

}  // namespace kavo_test
