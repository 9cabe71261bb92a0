#include "job/csv_file.hpp"

#include <csv.h>
#include <fmt/format.h>

#include <istream>
#include <optional>

#include "base/input_file.hpp"
#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kLongestLine = 10'000;

// libcsv's parser, fed a line at a time so that every row knows its line.
class CsvParser {
 public:
  CsvParser() { csv_init(&parser_, CSV_STRICT); }
  CsvParser(const CsvParser&) = delete;
  CsvParser& operator=(const CsvParser&) = delete;
  ~CsvParser() { csv_free(&parser_); }

  /// The fields of a line; empty for a blank one, nothing for a quote that does not close.
  std::optional<std::vector<std::string>> Read(const std::string& line) {
    fields_.clear();
    complete_ = line.empty();
    const auto text = line + '\n';
    if (csv_parse(&parser_, text.data(), text.size(), OnField, OnRow, this) != text.size() ||
        !complete_) {
      return std::nullopt;
    }
    return fields_;
  }

 private:
  static void OnField(void* field, std::size_t size, void* self) {
    static_cast<CsvParser*>(self)->fields_.emplace_back(static_cast<const char*>(field), size);
  }
  static void OnRow(int /*end*/, void* self) { static_cast<CsvParser*>(self)->complete_ = true; }

  csv_parser parser_{};
  std::vector<std::string> fields_;
  bool complete_ = false;
};

// The next line without its end; nothing at the end of the file.
std::optional<std::string> NextLine(std::istream& file, const Place& place) {
  std::string line;
  for (int c = file.get(); c != std::istream::traits_type::eof(); c = file.get()) {
    if (c == '\n') {
      if (line.ends_with('\r')) {
        line.pop_back();
      }
      return line;
    }
    if (line.size() == kLongestLine) {
      throw UserError(place, "", fmt::format("is longer than {} bytes: no row is", kLongestLine));
    }
    line += static_cast<char>(c);
  }
  RefuseCutShort(file, place);
  if (!line.empty()) {
    throw UserError(place, "",
                    "the last line has no line end, so the file may be cut off; check it, and end "
                    "the line when it is whole");
  }
  return std::nullopt;
}

void RefuseWhatIsNoText(std::string_view line, const Place& place) {
  while (!line.empty()) {
    const auto c = static_cast<unsigned char>(line.front());
    if (IsControl(line.front()) && c != '\t') {
      throw UserError(
          place, "",
          fmt::format("holds a control character (code {}); save the file as plain text", c));
    }
    const auto length = CharacterBytes(line);
    if (length == 0) {
      throw UserError(place, "", "is not UTF-8 text; save the file as UTF-8");
    }
    line.remove_prefix(length);
  }
}

}  // namespace

std::string SeparatorAdvice() { return fmt::format("has semicolons or tabs; {}", kListRule); }

std::vector<CsvRow> ReadCsv(std::istream& file, const std::string& name) {
  CsvParser parser;
  std::vector<CsvRow> rows;
  for (Place place{name, 1};; ++place.line) {
    auto line = NextLine(file, place);
    if (!line) {
      return rows;
    }
    if (place.line == 1 && line->starts_with(kByteOrderMark)) {
      line->erase(0, kByteOrderMark.size());
    }
    RefuseWhatIsNoText(*line, place);
    auto fields = parser.Read(*line);
    if (!fields) {
      throw UserError(place, "",
                      "has a quotation mark within a field or one that does not close; put the "
                      "whole field in quotation marks and double those within");
    }
    if (!fields->empty()) {
      rows.push_back({place, std::move(*fields)});
    }
  }
}

std::vector<CsvRow> ReadCsv(const std::filesystem::path& path, const std::string& what) {
  auto file = OpenInput(path, what);
  return ReadCsv(file, path.string());
}

}  // namespace kavo_app
