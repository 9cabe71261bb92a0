// The shapes of points, lines and sights, as jobs and requests have them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "service.hpp"

namespace kavo_app {

/// A point has the first two and may have the third.
inline constexpr std::array<std::string_view, 3> kPointKeys = {"north", "east", "elev"};

/// A line has the first and one of the others.
inline constexpr std::array<std::string_view, 3> kLineKeys = {"from", "to", "azimuth"};

/// A sight has `ha`, and at most one of the two distances.
inline constexpr std::array<std::string_view, 7> kSightKeys = {
    "point", "ha", "va", "slopeDist", "horizDist", "heightDiff", "th"};

/// The library counts points and sights in 16 bits.
inline constexpr std::size_t kMostRecords = std::numeric_limits<std::int16_t>::max();

/// A sight on face 1, with the horizontal part of a slope distance or the slope of a horizontal
/// one.
Sight Reduced(Sight sight);

}  // namespace kavo_app
