#include "job/control_points.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "base/plain_text.hpp"
#include "job/csv_file.hpp"

namespace kavo_app {
namespace {

double MetresOf(const CsvRow& row, std::size_t column, std::string_view field) {
  const auto metres = ReadNumber(row.fields[column]);
  if (!metres) {
    throw UserError(row.place, fmt::format("point {}: {}", Shown(row.fields[0]), field),
                    NoNumberAdvice(row.fields[column]));
  }
  return *metres;
}

// "P,1234,56,5678,90" is two numbers with decimal commas, or three whole ones and a description.
bool MayBeDecimalCommas(const std::vector<std::string>& fields) {
  return fields.size() == 5 && std::all_of(fields.begin() + 1, fields.end(), [](const auto& field) {
           return ReadNumber(field) && field.find('.') == std::string::npos;
         });
}

// A name may hold a semicolon; then the number after it shows that commas divide the line.
void RefuseSemicolons(const CsvRow& row) {
  const auto& fields = row.fields;
  if (fields[0].find(';') != std::string::npos && (fields.size() < 3 || !ReadNumber(fields[1]))) {
    throw UserError(row.place, "",
                    "the columns stand between commas, not semicolons, and decimals have a point");
  }
}

CoordPt PointOf(const CsvRow& row) {
  const auto& fields = row.fields;
  if (fields.size() < 3 || fields.size() > 5 || fields[0].empty()) {
    throw UserError(row.place, "",
                    "a line holds name, north, east, elevation and description between commas; "
                    "text with commas stands in quotation marks");
  }
  if (MayBeDecimalCommas(fields)) {
    throw UserError(row.place, "point " + Shown(fields[0]),
                    "its numbers may be cut by decimal commas; write them with a point, 1234.0");
  }
  CoordPt point{};
  point.north = MetresOf(row, 1, "north");
  point.east = MetresOf(row, 2, "east");
  point.flags = COORD_HAS_NE;
  if (fields.size() > 3 && !fields[3].empty()) {
    point.elev = MetresOf(row, 3, "elevation");
    point.flags |= COORD_HAS_ELEV;
  }
  return point;
}

bool IsHeading(const CsvRow& row) {
  return row.place.line == 1 && row.fields.size() >= 3 && !ReadNumber(row.fields[1]) &&
         !ReadNumber(row.fields[2]);
}

// North begins with this letter in many languages.
bool MayBeNorth(std::string_view column) {
  return column.starts_with('n') || column.starts_with('N');
}

// The columns go by their place; a heading that says otherwise tells of exchanged coordinates.
void CheckHeading(const CsvRow& heading) {
  if (MayBeNorth(heading.fields[2]) && !MayBeNorth(heading.fields[1])) {
    throw UserError(heading.place, Quoted(heading.fields[2]),
                    "stands third; a list has name, north, east, elevation and description, in "
                    "this order");
  }
}

}  // namespace

void ReadControlPoints(const std::filesystem::path& path, ControlPoints& points) {
  for (const auto& row : ReadCsv(path, "a comma-separated list of points")) {
    RefuseSemicolons(row);
    if (IsHeading(row)) {
      CheckHeading(row);
      continue;
    }
    if (!points.emplace(row.fields.front(), PointOf(row)).second) {
      throw UserError(row.place, "point " + Shown(row.fields.front()),
                      "is given twice; give each point once");
    }
  }
}

}  // namespace kavo_app
