#include "job/toml_file.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/input_file.hpp"
#include "base/plain_text.hpp"
#include "base/user_error.hpp"

namespace kavo_app {
namespace {

// The parser may quote the file at any length.
constexpr std::size_t kMostOfComplaint = 200;

// What a line gives a value to, or the table that it opens.
std::string_view KeyOf(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  const auto first = std::min(line.find_first_not_of(kBlanks), line.size());
  const auto end =
      std::min(line.find(line.substr(first).starts_with('[') ? '#' : '='), line.size());
  const auto key = line.substr(first, end - first);
  return key.substr(0, key.find_last_not_of(kBlanks) + 1);
}

std::vector<std::string_view> KeysOf(std::string_view text) {
  std::vector<std::string_view> keys;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    keys.push_back(KeyOf(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return keys;
}

// The line that has the key of another one before it in the same table; 0 for none.
std::size_t LineBefore(const std::vector<std::string_view>& keys, std::size_t line) {
  const auto key = keys[line - 1];
  for (std::size_t i = line - 1; i > 0; --i) {
    if (keys[i - 1] == key) {
      return i;
    }
    if (keys[i - 1].starts_with('[') && !key.starts_with('[')) {
      break;
    }
  }
  return 0;
}

[[noreturn]] void Fail(const std::string& file, const std::string& text,
                       const toml::parse_error& error) {
  const Place place{file, error.source().begin.line};
  const auto complaint = Shown(error.description(), kMostOfComplaint);
  const auto keys = KeysOf(text);
  if (complaint.find("redefine") != std::string::npos && place.line <= keys.size()) {
    if (const auto before = LineBefore(keys, place.line); before > 0) {
      throw UserError(
          place, Shown(keys[place.line - 1]),
          fmt::format("stands at {} already; give each name once", Place{file, before}.Text()));
    }
  }
  throw UserError(place, "",
                  fmt::format("is not valid TOML: {}; text, DMS angles and names with blanks stand "
                              "in quotation marks, decimals have a point",
                              complaint));
}

// The whole file: the parser would seek, which it cannot in what is piped in.
std::string ReadWhole(const std::filesystem::path& path) {
  auto file = OpenInput(path, "a job file");
  std::string text;
  std::array<char, 65536> part{};
  while (file) {
    file.read(part.data(), part.size());
    text.append(part.data(), static_cast<std::size_t>(file.gcount()));
  }
  RefuseCutShort(file, {path.string(), 0});
  return text;
}

}  // namespace

toml::table ReadToml(const std::filesystem::path& path) {
  const auto text = ReadWhole(path);
  try {
    return toml::parse(text, path.string());
  } catch (const toml::parse_error& error) {
    Fail(path.string(), text, error);
  }
}

}  // namespace kavo_app
