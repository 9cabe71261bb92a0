// Whether the outline of an area is the outline of one piece of land.
#pragma once

#include <string>
#include <vector>

#include "kavostdlib.h"

namespace kavo_app {

/// What makes an outline doubtful, told by the numbers of its corners, counted from 1: a corner
/// that it has twice, or two sides that cross. Empty when nothing does. The last corner may be the
/// first one again; a corner may lie on another side, and sides may lie in one line.
std::string OutlineDoubt(const std::vector<CoordPt>& corners);

}  // namespace kavo_app
