#include "plan/projection.hpp"

#include <algorithm>
#include <cmath>

namespace kavo_app {
namespace {

constexpr double kMargin = 11.0;  // around the scene for labels and the arrow, millimetres
constexpr double kLeastDenominator = 5.0;
constexpr double kLongestVector = 10.0;  // on the sheet, millimetres
constexpr double kLeastVector = 1e-4;    // metres; less is only the rounding of readings
constexpr double kShortestSample = 4.0;  // on the sheet, millimetres
constexpr double kPerMetre = 1000.0;     // millimetres

// What a scene may take of a sheet, millimetres.
Spot RoomOn(const Sheet& sheet) {
  return {sheet.frame.right - sheet.frame.left - 2 * kMargin,
          sheet.frame.bottom - sheet.frame.top - 2 * kMargin};
}

// The n of the largest round scale 1 : n at which something so large fits a frame.
double DenominatorOn(const Sheet& sheet, const Extent& extent) {
  const auto room = RoomOn(sheet);
  const double needed =
      std::max((extent.right - extent.left) / room.right, (extent.top - extent.bottom) / room.up) *
      kPerMetre;
  return std::max(needed > 0.0 ? RoundUp(needed) : 0.0, kLeastDenominator);
}

}  // namespace

Projection::Projection(const Extent& window)
    : sheet_(&kLandscape), denominator_(kLeastDenominator), centre_{0.0, 0.0} {
  if (!window.Empty()) {
    denominator_ = DenominatorOn(kLandscape, window);
    const double standing = DenominatorOn(kPortrait, window);
    if (standing < denominator_) {
      sheet_ = &kPortrait;
      denominator_ = standing;
    }
    centre_ = {(window.left + window.right) / 2.0, (window.bottom + window.top) / 2.0};
  }
  perMetre_ = kPerMetre / denominator_;
  const auto& frame = sheet_->frame;
  middle_ = {(frame.left + frame.right) / 2.0, (frame.top + frame.bottom) / 2.0};
}

Extent Projection::Shown() const {
  const double right = Metres(sheet_->frame.right - middle_.fromLeft);
  const double up = Metres(sheet_->frame.bottom - middle_.fromTop);
  return {centre_.right - right, centre_.right + right, centre_.up - up, centre_.up + up};
}

bool IsLabelledOn(const View& view, const Projection& projection, Spot spot) {
  return projection.Shows(spot) && std::ranges::none_of(view.insets, [spot](const Inset& inset) {
           return inset.extent.Holds(spot);
         });
}

Spot LargestAt(double denominator) {
  const auto room = RoomOn(kLandscape);
  return {room.right * denominator / kPerMetre, room.up * denominator / kPerMetre};
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
