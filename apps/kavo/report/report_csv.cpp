#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "base/geometry.hpp"
#include "report/report.hpp"
#include "scene/coordinates.hpp"

namespace kavo_app {
namespace {

// In quotation marks where a comma, a mark or an edge blank would be read otherwise.
std::string CsvField(std::string_view text) {
  const bool plain =
      text.find_first_of(",\"\r\n") == text.npos && !text.starts_with(' ') && !text.ends_with(' ');
  if (plain) {
    return std::string(text);
  }
  std::string out = "\"";
  for (const char c : text) {
    out += c == '"' ? "\"\"" : std::string(1, c);
  }
  return out + '"';
}

std::string DescriptionOf(const JobPoint& point) {
  const auto what = point.code.empty() ? point.service : std::string_view(point.code);
  return point.flaw.empty() ? std::string(what) : fmt::format("{} ({})", what, point.flaw);
}

}  // namespace

std::string CsvList(const Job& job, const std::vector<Outcome>& outcomes) {
  std::string out = "name,north [m],east [m],elevation [m],description\n";
  for (const auto& point : AllPoints(job, outcomes)) {
    if (!point.service.empty() && point.role != Role::kFoot) {
      fmt::format_to(std::back_inserter(out), "{},{},{},{},{}\n", CsvField(point.name),
                     point.at.north, point.at.east,
                     HasElev(point.at) ? fmt::format("{}", point.at.elev) : "",
                     CsvField(DescriptionOf(point)));
    }
  }
  return out;
}

}  // namespace kavo_app
