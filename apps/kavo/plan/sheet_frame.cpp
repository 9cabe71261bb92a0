#include "plan/sheet_frame.hpp"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace kavo_app {
namespace {

constexpr double kGridSpacing = 40.0;  // at least, millimetres

struct GridLine {
  double at;  // metres on the drawing
  std::string text;
};

// As many as a round interval has.
int DecimalsOf(double interval) {
  constexpr double kRounding = 1e-6;
  int decimals = 0;
  for (; std::fabs(interval - std::round(interval)) > kRounding * interval; interval *= 10.0) {
    ++decimals;
  }
  return decimals;
}

std::vector<GridLine> GridLines(double from, double to, double interval, const Axis& axis) {
  std::vector<GridLine> lines;
  const int decimals = DecimalsOf(interval);
  for (auto i = static_cast<std::int64_t>(std::ceil(from / interval));
       i <= static_cast<std::int64_t>(std::floor(to / interval)); ++i) {
    const double at = static_cast<double>(i) * interval;
    lines.push_back({at, fmt::format("{:.{}f}", i == 0 ? 0.0 : axis.sign * at, decimals)});
  }
  return lines;
}

// The values of the grid's lines at the edges, and what they are values of.
void DrawColumnValues(const std::vector<GridLine>& columns, const Axis& axis,
                      const Projection& projection, SvgWriter& svg) {
  const auto& frame = projection.Paper().frame;
  for (const auto& column : columns) {
    svg.Text("small", {projection.On({column.at, 0.0}).fromLeft, frame.bottom + 3.2}, column.text,
             "text-anchor=\"middle\"");
  }
  svg.Text("small", {frame.right, frame.bottom + 6.4}, axis.name + " [m]", "text-anchor=\"end\"");
}

void DrawRowValues(const std::vector<GridLine>& rows, const Axis& axis,
                   const Projection& projection, SvgWriter& svg) {
  constexpr double kAxisName = 14.0;  // takes the edge's upper end, millimetres
  const auto& frame = projection.Paper().frame;
  const auto put = [&](PaperSpot at, std::string_view anchor, const std::string& text) {
    svg.Text("small", at, text,
             fmt::format("text-anchor=\"{}\" transform=\"rotate(-90 {:.2f} {:.2f})\"", anchor,
                         at.fromLeft, at.fromTop));
  };
  for (const auto& row : rows) {
    const double down = projection.On({0.0, row.at}).fromTop;
    if (down >= frame.top + kAxisName) {
      put({frame.left - 1.4, down}, "middle", row.text);
    }
  }
  put({frame.left - 5.0, frame.top}, "end", axis.name + " [m]");
}

// A bar of a round length in two halves, black and white.
void DrawScale(const Projection& projection, SvgWriter& svg) {
  constexpr double kHigh = 1.2;
  const double right = projection.Paper().frame.right;
  const double top = projection.Paper().blockTop + 9.0;
  const double metres = RoundUp(projection.Metres(20.0));
  const double length = projection.Millimetres(metres);
  const double left = right - length;
  svg.Text("subtitle", {right, top - 5.0}, fmt::format("1 : {} at A4", projection.Denominator()),
           "text-anchor=\"end\"");
  svg.Box("scale", {left, top, right, top + kHigh});
  svg.Box("scale-half", {left, top, left + length / 2.0, top + kHigh});
  svg.Text("small", {left, top + 4.0}, "0", "text-anchor=\"middle\"");
  svg.Text("small", {right, top + 4.0}, fmt::format("{} m", metres), "text-anchor=\"end\"");
}

void DrawNorthArrow(const Sheet& sheet, SvgWriter& svg) {
  const auto box = NorthArrowOn(sheet);
  const PaperSpot foot{(box.left + box.right) / 2.0, box.bottom - 1.0};
  svg.Raw(fmt::format("<path class=\"arrow\" d=\"M{0},{1} l2.2,0.9 l-2.2,-9 l-2.2,9 z\"/>\n",
                      foot.fromLeft, foot.fromTop - 1.0));
  svg.Text("subtitle", {foot.fromLeft, foot.fromTop - 10.0}, "N", "text-anchor=\"middle\"");
}

}  // namespace

void DrawGrid(const Scene& scene, const Projection& projection, SvgWriter& svg) {
  const auto shown = projection.Shown();
  const double interval = RoundUp(projection.Metres(kGridSpacing));
  const auto columns = GridLines(shown.left, shown.right, interval, scene.rightAxis);
  const auto rows = GridLines(shown.bottom, shown.top, interval, scene.upAxis);
  svg.Open("grid");
  svg.Box("frame", projection.Paper().frame);
  for (const auto& column : columns) {
    for (const auto& row : rows) {
      svg.Symbol("cross", projection.On({column.at, row.at}));
    }
  }
  DrawColumnValues(columns, scene.rightAxis, projection, svg);
  DrawRowValues(rows, scene.upAxis, projection, svg);
  svg.Close();
}

void DrawTitle(const View& view, const Sheet& sheet, const std::string& heading,
               const std::vector<std::string>& remarks, SvgWriter& svg) {
  double base = sheet.blockTop + 4.0;
  const auto put = [&](std::string_view className, double size, std::size_t most,
                       const std::string& text) {
    for (const auto& line : WrappedText(text, size, sheet.titleWidth, most)) {
      if (base <= sheet.titleBottom) {
        svg.Text(className, {sheet.frame.left, base}, line);
      }
      base += size * 1.25;
    }
  };
  put("title", 3.8, 2, heading);
  put("subtitle", 3.0, 2, view.title);
  for (const auto& remark : remarks) {
    put("small", 2.2, 3, remark);
  }
}

void DrawScaleAndNorth(const Scene& scene, const Projection& projection, SvgWriter& svg) {
  DrawScale(projection, svg);
  if (scene.northUp) {
    DrawNorthArrow(projection.Paper(), svg);
  }
}

}  // namespace kavo_app
