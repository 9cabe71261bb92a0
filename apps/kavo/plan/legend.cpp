#include "plan/legend.hpp"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "plan/sheet_style.hpp"

namespace kavo_app {
namespace {

constexpr double kColumn = 52.0;  // millimetres, as all here
constexpr double kRow = 4.4;
constexpr double kMiddle = 0.9;  // of a line of text, above its base

struct Entry {
  std::string_view text;
  std::string_view symbol;  // or, when empty,
  std::string_view stroke;  // the class of a line
};

struct Line {
  Stroke stroke;
  std::string_view text;
};
constexpr std::array kLines = {
    Line{Stroke::kSight, "sight"},         Line{Stroke::kConstruction, "construction line"},
    Line{Stroke::kReference, "reference"}, Line{Stroke::kOffset, "offset"},
    Line{Stroke::kBoundary, "area"},
};

std::vector<Entry> EntriesOf(const Drawn& drawn) {
  std::vector<Entry> entries;
  for (const auto role : kRoles) {
    if (drawn.symbols.contains(role)) {
      entries.push_back({RoleText(role), SymbolOf(role), ""});
    }
  }
  if (drawn.dots) {
    entries.push_back({"point, named on another sheet", kDot, ""});
  }
  for (const auto& line : kLines) {
    if (drawn.lines.contains(line.stroke)) {
      const bool ticked = line.stroke == Stroke::kReference && drawn.ticks;
      entries.push_back({ticked ? "reference, metres along" : line.text, "", ClassOf(line.stroke)});
    }
  }
  return entries;
}

// Where the text of an entry has its base line; its symbol stands before it.
PaperSpot PlaceOf(const Sheet& sheet, std::size_t entry) {
  const std::size_t column = entry / sheet.legendRows;
  const std::size_t row = entry % sheet.legendRows;
  return {sheet.legend.fromLeft + kColumn * static_cast<double>(column),
          sheet.legend.fromTop + kRow * static_cast<double>(row)};
}

void DrawEntry(const Entry& entry, PaperSpot at, SvgWriter& svg) {
  const double middle = at.fromTop - kMiddle;
  if (entry.symbol.empty()) {
    svg.Line(entry.stroke, {at.fromLeft, middle}, {at.fromLeft + 6.0, middle});
  } else {
    svg.Symbol(entry.symbol, {at.fromLeft + 3.0, middle});
  }
  svg.Text("small", {at.fromLeft + 8.0, at.fromTop}, entry.text);
}

// An enlarged vector of a round length.
void DrawSample(const Enlargement& enlargement, std::string_view className, std::string_view text,
                PaperSpot at, SvgWriter& svg) {
  const double middle = at.fromTop - kMiddle;
  const double end = at.fromLeft + enlargement.SampleLength();
  svg.Line(className, {at.fromLeft, middle}, {end, middle});
  svg.Text("small", {end + 2.0, at.fromTop}, fmt::format("{} mm {}", enlargement.Sample(), text));
}

}  // namespace

void DrawLegend(const Drawn& drawn, const Sheet& sheet, const Enlargement& enlargement,
                SvgWriter& svg) {
  std::size_t place = 0;
  for (const auto& entry : EntriesOf(drawn)) {
    DrawEntry(entry, PlaceOf(sheet, place++), svg);
  }
  if (drawn.residuals) {
    DrawSample(enlargement, "residual", "residual", PlaceOf(sheet, place++), svg);
  }
  if (drawn.deviations) {
    DrawSample(enlargement, "deviation", "std. deviation", PlaceOf(sheet, place++), svg);
  }
}

}  // namespace kavo_app
