// Control points from a list of coordinates.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/user_error.hpp"
#include "kavostdlib.h"

namespace kavo_app {

/// A known point, and where the list has it.
struct ControlPoint {
  std::string name;
  CoordPt at;
  Place place;
};

/// Reads a comma-separated PNEZD list: point name, north, east, elevation, description. Elevation
/// and description may be empty or left out. A first line that has words for
/// numbers is a heading; its second and third column must be called north and east.
/// @throws UserError  with file and line.
std::vector<ControlPoint> ReadControlPoints(const std::filesystem::path& path);

}  // namespace kavo_app
