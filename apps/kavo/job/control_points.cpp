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

// A name may hold a semicolon or tab; then the number after it shows that commas divide the line.
void RefuseOtherColumns(const CsvRow& row) {
  const auto& fields = row.fields;
  if (fields[0].find_first_of(kOtherSeparators) != std::string::npos &&
      (fields.size() < 3 || !ReadNumber(fields[1]))) {
    throw UserError(row.place, "", SeparatorAdvice());
  }
}

void CheckFields(const CsvRow& row) {
  const auto& fields = row.fields;
  if (fields[0].empty()) {
    throw UserError(row.place, "", "the point has no name; give it one, in the first column");
  }
  const auto label = "point " + Shown(fields[0]);
  if (fields.size() < 3) {
    throw UserError(row.place, label,
                    fmt::format("has fewer columns than name, north and east; {}", kListRule));
  }
  if (fields.size() > 5) {
    throw UserError(row.place, label,
                    fmt::format("has more columns than name, north, east, elevation and "
                                "description; {}; text with commas stands in quotation marks",
                                kListRule));
  }
  if (MayBeDecimalCommas(fields)) {
    throw UserError(
        row.place, label,
        fmt::format("its numbers may be cut at decimal commas; {}, such as 1234.0", kListRule));
  }
}

CoordPt PointOf(const CsvRow& row) {
  const auto& fields = row.fields;
  CheckFields(row);
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

// What begins as a number is a point's, also when it is mistyped.
bool IsWord(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first != text.npos && std::string_view("0123456789+-.,").find(text[first]) == text.npos;
}

bool IsHeading(const CsvRow& row) {
  return row.place.line == 1 && row.fields.size() >= 3 && IsWord(row.fields[1]) &&
         IsWord(row.fields[2]);
}

// North begins with this letter in many languages.
bool MayBeNorth(std::string_view column) {
  return column.starts_with('n') || column.starts_with('N');
}

// The columns go by their place; a heading that says otherwise tells of exchanged coordinates.
void CheckHeading(const CsvRow& heading) {
  if (MayBeNorth(heading.fields[2]) && !MayBeNorth(heading.fields[1])) {
    throw UserError(heading.place, "heading: " + Quoted(heading.fields[2]),
                    "stands third; a list has name, north, east, elevation and description, in "
                    "this order");
  }
}

}  // namespace

std::vector<ControlPoint> ReadControlPoints(const std::filesystem::path& path) {
  std::vector<ControlPoint> points;
  for (auto& row : ReadCsv(path, "a comma-separated list of points")) {
    RefuseOtherColumns(row);
    if (IsHeading(row)) {
      CheckHeading(row);
      continue;
    }
    const auto at = PointOf(row);
    points.push_back({std::move(row.fields.front()), at, std::move(row.place)});
  }
  return points;
}

}  // namespace kavo_app
