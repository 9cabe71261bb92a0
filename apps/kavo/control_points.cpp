#include "control_points.hpp"

#include <csv.h>
#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

#include "user_error.hpp"

namespace kavo_app {
namespace {

using Row = std::vector<std::string>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// libcsv's parser, fed a line at a time so that every row knows its line.
class CsvParser {
 public:
  CsvParser() { csv_init(&parser_, CSV_STRICT); }
  CsvParser(const CsvParser&) = delete;
  CsvParser& operator=(const CsvParser&) = delete;
  ~CsvParser() { csv_free(&parser_); }

  /// The fields of a line; empty for a blank one, nothing for a quote that does not close.
  std::optional<Row> Read(const std::string& line) {
    row_.clear();
    complete_ = line.empty();
    const auto text = line + '\n';
    if (csv_parse(&parser_, text.data(), text.size(), OnField, OnRow, this) != text.size() ||
        !complete_) {
      return std::nullopt;
    }
    return row_;
  }

 private:
  static void OnField(void* field, std::size_t size, void* self) {
    static_cast<CsvParser*>(self)->row_.emplace_back(static_cast<const char*>(field), size);
  }
  static void OnRow(int /*end*/, void* self) { static_cast<CsvParser*>(self)->complete_ = true; }

  csv_parser parser_{};
  Row row_;
  bool complete_ = false;
};

std::optional<double> Metres(std::string_view text) {
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc{} && end == text.data() + text.size();
  return whole && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

double MetresOf(const Row& row, std::size_t column, std::string_view field, const Place& place) {
  const auto metres = Metres(row[column]);
  if (!metres) {
    throw UserError(place, fmt::format("point {}: {}", row[0], field),
                    fmt::format("\"{}\" is not a number; write metres like 1234.567", row[column]));
  }
  return *metres;
}

CoordPt PointOf(const Row& row, const Place& place) {
  if (row.size() < 3 || row[0].empty()) {
    throw UserError(place, "", "a line holds name, north, east, elevation and description");
  }
  CoordPt point{};
  point.north = MetresOf(row, 1, "north", place);
  point.east = MetresOf(row, 2, "east", place);
  point.flags = COORD_HAS_NE;
  if (row.size() > 3 && !row[3].empty()) {
    point.elev = MetresOf(row, 3, "elevation", place);
    point.flags |= COORD_HAS_ELEV;
  }
  return point;
}

bool IsHeading(const Row& row, std::size_t line) {
  return line == 1 && row.size() >= 3 && !Metres(row[1]) && !Metres(row[2]);
}

}  // namespace

void ReadControlPoints(const std::filesystem::path& path, ControlPoints& points) {
  std::ifstream file(path);
  Place place{path.string(), 0};
  if (!file || std::filesystem::is_directory(path)) {
    throw UserError(place, "", "cannot be read; give a comma-separated list of points");
  }
  CsvParser parser;
  for (std::string line; std::getline(file, line);) {
    ++place.line;
    if (place.line == 1 && line.starts_with(kByteOrderMark)) {
      line.erase(0, kByteOrderMark.size());
    }
    const auto row = parser.Read(line);
    if (!row) {
      throw UserError(place, "", "a quotation mark does not close on its line");
    }
    if (row->empty() || IsHeading(*row, place.line)) {
      continue;
    }
    if (!points.emplace((*row)[0], PointOf(*row, place)).second) {
      throw UserError(place, "point " + (*row)[0], "is given twice; give each point once");
    }
  }
}

}  // namespace kavo_app
