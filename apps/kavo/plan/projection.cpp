#include "plan/projection.hpp"

#include <cmath>

namespace kavo_app {
namespace {

constexpr double kMargin = 15.0;  // around the scene for labels and the arrow, millimetres
constexpr double kLeastDenominator = 5.0;
constexpr double kLongestVector = 12.0;  // on the sheet, millimetres
constexpr double kLeastVector = 1e-4;    // metres; less is only the rounding of readings
constexpr double kShortestSample = 4.0;  // on the sheet, millimetres
constexpr double kPerMetre = 1000.0;     // millimetres

}  // namespace

Projection::Projection(const Scene& scene)
    : denominator_(kLeastDenominator),
      perMetre_(kPerMetre),
      centre_{0.0, 0.0},
      middle_{(kFrame.left + kFrame.right) / 2.0, (kFrame.top + kFrame.bottom) / 2.0} {
  const auto extent = ExtentOf(scene);
  if (!extent.Empty()) {
    const double width = (extent.right - extent.left) / (kFrame.right - kFrame.left - 2 * kMargin);
    const double height = (extent.top - extent.bottom) / (kFrame.bottom - kFrame.top - 2 * kMargin);
    const double needed = std::max(width, height) * kPerMetre;
    denominator_ = std::max(needed > 0.0 ? RoundUp(needed) : 0.0, kLeastDenominator);
    centre_ = {(extent.left + extent.right) / 2.0, (extent.bottom + extent.top) / 2.0};
  }
  perMetre_ = kPerMetre / denominator_;
}

Extent Projection::Shown() const {
  const double right = Metres(kFrame.right - middle_.fromLeft);
  const double up = Metres(kFrame.bottom - middle_.fromTop);
  return {centre_.right - right, centre_.right + right, centre_.up - up, centre_.up + up};
}

Enlargement::Enlargement(const Scene& scene) {
  double longest = 0.0;
  for (const auto* vectors : {&scene.residuals, &scene.deviations}) {
    for (const auto& vector : *vectors) {
      longest = std::max(longest, std::hypot(vector.size.right, vector.size.up));
    }
  }
  if (longest > kLeastVector && std::isfinite(longest)) {
    perMetre_ = kPerMetre / RoundUp(longest * kPerMetre / kLongestVector);
  }
}

double Enlargement::Sample() const { return RoundUp(kShortestSample / perMetre_ * kPerMetre); }

}  // namespace kavo_app
