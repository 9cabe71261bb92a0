#include "job/control_points.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <utility>

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
  if (fields.size() == 5 && std::ranges::any_of(fields[4], IsControl)) {
    throw UserError(row.place, label, "the description holds a tab; write a blank");
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

// Headings of columns in metres, in small letters.
constexpr std::array<std::string_view, 3> kNorths = {"north", "northing", "n"};
constexpr std::array<std::string_view, 3> kEasts = {"east", "easting", "e"};
constexpr std::array<std::string_view, 6> kMetres = {"", "m", "metre", "metres", "meter", "meters"};

// The word and the unit of "Northing", "north [m]", "N_m" or "E(metres)".
std::pair<std::string, std::string> WordAndUnit(std::string_view column) {
  const auto lower = Lower(column);
  const auto end = std::min(lower.find_first_of(" _(["), lower.size());
  auto unit = lower.substr(end);
  std::erase_if(
      unit, [](char c) { return std::string_view(" _()[]").find(c) != std::string_view::npos; });
  return {lower.substr(0, end), unit};
}

bool Heads(std::string_view column, std::span<const std::string_view> words) {
  const auto [word, unit] = WordAndUnit(column);
  return std::ranges::find(words, word) != words.end() &&
         std::ranges::find(kMetres, unit) != kMetres.end();
}

// The columns go by their place. In many lists the second is the east, under many names: what is
// not understood may be exchanged.
void CheckHeading(const CsvRow& heading) {
  if (!Heads(heading.fields[1], kNorths) || !Heads(heading.fields[2], kEasts)) {
    throw UserError(
        heading.place,
        fmt::format("heading: {}, {}", Quoted(heading.fields[1]), Quoted(heading.fields[2])),
        "are not called north and east; a list has name, north, east, elevation and "
        "description, in this order and in metres: see which column is which");
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
