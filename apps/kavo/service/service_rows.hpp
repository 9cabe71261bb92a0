// Fields and statuses that several families of services share.
#pragma once

#include <array>
#include <cmath>
#include <span>

#include "service/service.hpp"

namespace kavo_app {

inline constexpr StatusRow kComputed{KAVO_STATUS(STATUS_OK), true, "computed"};
inline constexpr StatusRow kPointInvalid{KAVO_STATUS(ERR_POINT_INVALID), false,
                                         "a point has no position, or no elevation where one is "
                                         "needed: give its north and east, and elev"};
inline constexpr StatusRow kNoBase{KAVO_STATUS(ERR_NO_BASE), false,
                                   "there is no base: set one in an earlier step"};
inline constexpr StatusRow kLinePointsCoincide{
    KAVO_STATUS(ERR_NO_DIRECTION), false,
    "the line's two points coincide: give two different points"};

// Limits. A measured distance of 0 is none, and the exports would take a negative one backwards.
inline constexpr Limit kAboveZero{[](double number) { return number > 0.0; }, "above 0"};
inline constexpr Limit kNotNegative{[](double number) { return number >= 0.0; }, "0 or more"};

// No tripod or pole is as high; many a number in millimetres is.
inline constexpr Limit kBelow100{[](double height) { return std::fabs(height) < 100.0; },
                                 "below 100: it is in metres"};

// Measured: moving a scene from the origin to the coordinates of a national grid changes what these
// services give by more than a tenth of a millimetre, for some scenes by metres.
inline constexpr bool kLosesDigits = true;
inline constexpr bool kKeepsDigits = false;

inline constexpr std::span<const Rule> kNoRules;
inline constexpr std::string (*kNoDoubt)(const Inputs& in, const Outputs& out) = nullptr;

inline constexpr std::array kPointOut = {
    Field{"point", Kind::kPoint, "the computed point"},
};

// Where the instrument stands, for what is aimed at or sighted from there.
inline constexpr Field kInstrumentHeight{"ih", Kind::kLength, "instrument height", Need::kOrZero,
                                         kBelow100};
inline constexpr Field kTargetHeight{"th", Kind::kLength, "target height", Need::kOrZero,
                                     kBelow100};
inline constexpr Field kOrient{"orient", Kind::kAzimuth, "azimuth of the circle's zero",
                               Need::kOrZero};

}  // namespace kavo_app
