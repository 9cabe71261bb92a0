#include "plan/sheet_frame.hpp"

#include <array>
#include <cmath>
#include <cstdint>

namespace kavo_app {
namespace {

constexpr double kGridSpacing = 40.0;  // at least, millimetres
constexpr double kBlockTop = 180.0;
constexpr double kTitleWidth = 108.0;
constexpr double kLegendLeft = 130.0;
constexpr double kLegendColumn = 52.0;
constexpr double kLegendRow = 4.6;
constexpr std::size_t kLegendRows = 5;

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

// --- legend

struct LegendEntry {
  std::string_view text;
  std::string_view symbol;  // or, when empty,
  std::string_view stroke;  // the class of a line
};

std::vector<LegendEntry> LegendOf(const Scene& scene) {
  std::vector<LegendEntry> entries;
  for (const auto role : {Role::kStation, Role::kControl, Role::kComputed, Role::kGiven}) {
    if (std::ranges::any_of(scene.points, [&](const auto& point) { return point.role == role; })) {
      entries.push_back({RoleText(role), SymbolOf(role), ""});
    }
  }
  struct Line {
    Stroke stroke;
    std::string_view text;
  };
  static constexpr std::array kLines = {
      Line{Stroke::kSight, "sight"},         Line{Stroke::kConstruction, "construction line"},
      Line{Stroke::kReference, "reference"}, Line{Stroke::kOffset, "offset"},
      Line{Stroke::kBoundary, "area"},
  };
  for (const auto& line : kLines) {
    if (std::ranges::any_of(scene.paths, [&](const auto& p) { return p.stroke == line.stroke; })) {
      const bool ticked = line.stroke == Stroke::kReference && !scene.chainages.empty();
      entries.push_back({ticked ? "reference, metres along" : line.text, "", ClassOf(line.stroke)});
    }
  }
  return entries;
}

void DrawLegendEntry(const LegendEntry& entry, PaperSpot at, SvgWriter& svg) {
  const double middle = at.fromTop - 0.9;
  if (entry.symbol.empty()) {
    svg.Line(entry.stroke, {at.fromLeft, middle}, {at.fromLeft + 6.0, middle});
  } else {
    svg.Symbol(entry.symbol, {at.fromLeft + 3.0, middle});
  }
  svg.Text("small", {at.fromLeft + 8.0, at.fromTop}, entry.text);
}

PaperSpot LegendPlace(std::size_t index) {
  const std::size_t column = index / kLegendRows;
  return {kLegendLeft + kLegendColumn * static_cast<double>(column),
          kBlockTop + 3.0 + kLegendRow * static_cast<double>(index % kLegendRows)};
}

// The enlarged vectors with a sample of their length.
void DrawSamples(const Scene& scene, const Enlargement& enlargement, std::size_t place,
                 SvgWriter& svg) {
  const auto sample = [&](std::string_view className, std::string_view text) {
    const auto at = LegendPlace(place++);
    const double middle = at.fromTop - 0.9;
    svg.Line(className, {at.fromLeft, middle}, {at.fromLeft + enlargement.SampleLength(), middle});
    svg.Text("small", {at.fromLeft + enlargement.SampleLength() + 2.0, at.fromTop},
             fmt::format("{} mm {}", enlargement.Sample(), text));
  };
  if (!scene.residuals.empty()) {
    sample("residual", "residual");
  }
  if (!scene.deviations.empty()) {
    sample("deviation", "std. deviation");
  }
}

void DrawTitle(const std::string& heading, const std::string& title,
               const std::vector<std::string>& remarks, SvgWriter& svg) {
  double base = kBlockTop + 4.0;
  const auto put = [&](std::string_view className, double size, std::size_t most,
                       const std::string& text) {
    for (const auto& line : WrappedText(text, size, kTitleWidth, most)) {
      svg.Text(className, {kFrame.left, base}, line);
      base += size * 1.25;
    }
  };
  put("title", 3.8, 2, heading);
  put("subtitle", 3.0, 2, title);
  for (const auto& remark : remarks) {
    put("small", 2.2, 3, remark);
  }
}

// A bar of a round length in two halves, black and white.
void DrawScale(const Projection& projection, SvgWriter& svg) {
  constexpr double kTop = kBlockTop + 9.0;
  constexpr double kHigh = 1.2;
  const double metres = RoundUp(projection.Metres(20.0));
  const double length = projection.Millimetres(metres);
  const double left = kFrame.right - length;
  svg.Text("subtitle", {kFrame.right, kBlockTop + 4.0},
           fmt::format("1 : {} at A4", projection.Denominator()), "text-anchor=\"end\"");
  svg.Raw(
      fmt::format("<rect class=\"scale\" x=\"{:.2f}\" y=\"{}\" width=\"{:.2f}\" "
                  "height=\"{}\"/>\n<rect class=\"scale-half\" x=\"{:.2f}\" y=\"{}\" "
                  "width=\"{:.2f}\" height=\"{}\"/>\n",
                  left, kTop, length, kHigh, left, kTop, length / 2.0, kHigh));
  svg.Text("small", {left, kTop + 4.0}, "0", "text-anchor=\"middle\"");
  svg.Text("small", {kFrame.right, kTop + 4.0}, fmt::format("{} m", metres), "text-anchor=\"end\"");
}

void DrawNorthArrow(SvgWriter& svg) {
  constexpr PaperSpot kFoot{(kNorthArrow.left + kNorthArrow.right) / 2.0, kNorthArrow.bottom - 1.0};
  svg.Raw(fmt::format("<path class=\"arrow\" d=\"M{0},{1} l2.2,0.9 l-2.2,-9 l-2.2,9 z\"/>\n",
                      kFoot.fromLeft, kFoot.fromTop - 1.0));
  svg.Text("subtitle", {kFoot.fromLeft, kFoot.fromTop - 10.0}, "N", "text-anchor=\"middle\"");
}

}  // namespace

std::string_view SymbolOf(Role role) {
  switch (role) {
    case Role::kGiven:
      return "given";
    case Role::kComputed:
      return "computed";
    case Role::kControl:
      return "control";
    case Role::kStation:
      break;
  }
  return "station";
}

std::string_view ClassOf(Stroke stroke) {
  switch (stroke) {
    case Stroke::kSight:
      return "sight";
    case Stroke::kConstruction:
      return "construction";
    case Stroke::kOffset:
      return "offset";
    case Stroke::kReference:
      return "reference";
    case Stroke::kBoundary:
      break;
  }
  return "boundary";
}

void DrawGrid(const Scene& scene, const Projection& projection, SvgWriter& svg) {
  const auto shown = projection.Shown();
  const double interval = RoundUp(projection.Metres(kGridSpacing));
  const auto columns = GridLines(shown.left, shown.right, interval, scene.rightAxis);
  const auto rows = GridLines(shown.bottom, shown.top, interval, scene.upAxis);
  svg.Open("grid");
  svg.Raw(fmt::format("<rect class=\"frame\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"/>\n",
                      kFrame.left, kFrame.top, kFrame.right - kFrame.left,
                      kFrame.bottom - kFrame.top));
  for (const auto& column : columns) {
    const double across = projection.On({column.at, 0.0}).fromLeft;
    svg.Text("small", {across, kFrame.bottom + 3.2}, column.text, "text-anchor=\"middle\"");
    for (const auto& row : rows) {
      svg.Symbol("cross", projection.On({column.at, row.at}));
    }
  }
  constexpr double kAxisName = 14.0;  // takes the edge's upper end, millimetres
  for (const auto& row : rows) {
    const double down = projection.On({0.0, row.at}).fromTop;
    if (down < kFrame.top + kAxisName) {
      continue;
    }
    svg.Text("small", {kFrame.left - 1.4, down}, row.text,
             fmt::format("text-anchor=\"middle\" transform=\"rotate(-90 {:.2f} {:.2f})\"",
                         kFrame.left - 1.4, down));
  }
  svg.Text("small", {kFrame.right, kFrame.bottom + 6.4}, scene.rightAxis.name + " [m]",
           "text-anchor=\"end\"");
  svg.Text("small", {kFrame.left - 5.0, kFrame.top}, scene.upAxis.name + " [m]",
           fmt::format("text-anchor=\"end\" transform=\"rotate(-90 {} {})\"", kFrame.left - 5.0,
                       kFrame.top));
  svg.Close();
}

void DrawBlock(const Scene& scene, const Projection& projection, const Enlargement& enlargement,
               const std::string& heading, const std::vector<std::string>& remarks,
               SvgWriter& svg) {
  svg.Open("block");
  if (scene.northUp) {
    DrawNorthArrow(svg);
  }
  DrawTitle(heading, scene.title, remarks, svg);
  const auto legend = LegendOf(scene);
  for (std::size_t i = 0; i < legend.size(); ++i) {
    DrawLegendEntry(legend[i], LegendPlace(i), svg);
  }
  if (enlargement.Visible()) {
    DrawSamples(scene, enlargement, legend.size(), svg);
  }
  DrawScale(projection, svg);
  svg.Close();
}

}  // namespace kavo_app
