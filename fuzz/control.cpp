// Lists of control points.
#include <cmath>
#include <cstring>

#include "job/control_points.hpp"
#include "readers.hpp"

namespace kavo_fuzz {
namespace {

using namespace kavo_app;

// A number that reads back as the same.
std::string Digits(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

std::string Quoted(std::string_view name) {
  std::string text = "\"";
  for (const char c : name) {
    text += c == '"' ? "\"\"" : std::string(1, c);
  }
  return text + '"';
}

std::string ListOf(const std::vector<ControlPoint>& points) {
  std::string list;
  for (const auto& [name, point, place] : points) {
    const bool hasElev = (point.flags & COORD_HAS_ELEV) != 0;
    list += Quoted(name) + ',' + Digits(point.north) + ',' + Digits(point.east) + ',' +
            (hasElev ? Digits(point.elev) : "") + ",\n";
  }
  return list;
}

}  // namespace
}  // namespace kavo_fuzz

// What is read is finite, and written as a list it is read as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  static const Folder folder;
  const std::string text(data, data + size);
  std::vector<ControlPoint> points;
  const auto path = folder.Write("points.csv", text);
  if (!Reads([&] { points = ReadControlPoints(path); })) {
    return 0;
  }
  for (const auto& [name, point, place] : points) {
    Hold(!name.empty() && std::isfinite(point.north) && std::isfinite(point.east) &&
             std::isfinite(point.elev) && (point.flags == 1 || point.flags == 3),
         "ReadControlPoints", "gives points with names and numbers", text);
  }
  std::vector<ControlPoint> again;
  const std::string list = ListOf(points);
  const auto copy = folder.Write("copy.csv", list);
  Hold(Reads([&] { again = ReadControlPoints(copy); }) && ListOf(again) == list,
       "ReadControlPoints", "reads its own points again", list);
  return 0;
}
