// A scene that is too full for one sheet, cut into sheets like a map.
#pragma once

#include <vector>

#include "plan/projection.hpp"

namespace kavo_app {

/// The parts of which each gets a sheet, row by row from the top left; none when there is room for
/// the labels on one sheet. Parts with nothing to label are left out.
/// @param most  that may be.
std::vector<Extent> TilesOf(const View& view, const Projection& projection, std::size_t most);

}  // namespace kavo_app
