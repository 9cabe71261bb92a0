// What all set-ups of a station share: fields, and what is made of a sight.
#pragma once

#include <string>
#include <vector>

#include "service/service.hpp"
#include "service/service_rows.hpp"

namespace kavo_app {

inline constexpr Limit kTwoSights{[](double count) { return count == 2.0; }, "exactly two sights"};
inline constexpr Field kAxisHeight{
    "ih", Kind::kLength, "instrument height, for the axis's elevation", Need::kOrZero, kBelow100};
inline constexpr Field kSetUpStation{"station", Kind::kPoint, "the station"};
inline constexpr Field kSetUpOrient{"orient", Kind::kAzimuth, "azimuth of the circle's zero"};

/// Metres to add to a sighted point's elevation to come to the station's ground mark.
double HeightTerm(const Sight& sight, const Inputs& in);

/// The name of a sight's point, or for one without a name its place in the list, "sight 2".
std::string SightName(const std::vector<Sight>& sights, std::size_t index);

/// The orientation from an adjustment, which counts it from north whatever the instrument is set
/// to, as azimuths are counted. The resections in closed form hand theirs out so themselves.
Value AdjustedOrient(IntAngle orient);

/// Names the sights of face 2: kavo reduces them itself, because the adjustment takes face 1 alone.
/// Empty when there are none.
std::string FaceNote(const std::vector<Sight>& sights);

/// A check's value; none when it could not be formed.
Value CheckWhere(bool formed, double check);

}  // namespace kavo_app
