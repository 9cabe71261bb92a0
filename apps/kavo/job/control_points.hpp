// Control points from a list of coordinates.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "kavostdlib.h"

namespace kavo_app {

/// Known points by name.
using ControlPoints = std::map<std::string, CoordPt, std::less<>>;

/// Reads a comma-separated PNEZD list: point name, north, east, elevation, description. Elevation
/// and description may be empty or left out. A first line whose north is not a number is taken for
/// a heading.
/// @param path   the list.
/// @param[in,out] points  receives the points; a name that is already there is an error.
/// @throws UserError  with file and line.
void ReadControlPoints(const std::filesystem::path& path, ControlPoints& points);

}  // namespace kavo_app
