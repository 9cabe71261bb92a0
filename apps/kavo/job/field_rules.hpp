// What points, lines and faces are, whether a job or a request has them: the readers of both have
// Find, Number, Required and FailAt.
#pragma once

#include <array>
#include <string_view>

#include "kavostdlib.h"

namespace kavo_app {

/// What the numbers of a point are called.
inline constexpr std::array<std::string_view, 3> kPointKeys = {"north", "east", "elev"};
inline constexpr std::array<std::string_view, 3> kLineKeys = {"from", "to", "azimuth"};

/// Reads a point: north, east and, if known, elev.
/// @param fields  of kPointKeys and no others.
template <class Fields>
CoordPt ReadPointFields(const Fields& fields) {
  constexpr std::string_view kRule = "a point has north and east, and may have elev";
  fields.Required("north", kRule);
  fields.Required("east", kRule);
  CoordPt point{};
  point.north = fields.Number("north", 0.0);
  point.east = fields.Number("east", 0.0);
  point.elev = fields.Number("elev", 0.0);
  point.flags = fields.Find("elev") != nullptr ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
  return point;
}

/// Says how a line is given, which has what that needs: LINE_MODE_TWO_POINTS by from and to, or
/// LINE_MODE_DIRECTION by from and azimuth.
/// @param fields  of kLineKeys and no others.
template <class Fields>
decltype(LineDef::mode) ReadLineMode(const Fields& fields) {
  constexpr std::string_view kRule = "a line has from, and either to or azimuth";
  fields.Required("from", kRule);
  if (fields.Find("azimuth") == nullptr) {
    fields.Required("to", kRule);
    return LINE_MODE_TWO_POINTS;
  }
  if (fields.Find("to") != nullptr) {
    fields.FailAt("azimuth", "give either this or to");
  }
  return LINE_MODE_DIRECTION;
}

/// True for a face of 2, false for 1 or none.
template <class Fields>
bool ReadFace2(const Fields& fields) {
  const double face = fields.Number("face", 1.0);
  if (face != 1.0 && face != 2.0) {
    fields.FailAt("face", "write 1 or 2");
  }
  return face == 2.0;
}

}  // namespace kavo_app
