// What the symbols and lines of a sheet mean.
#pragma once

#include <set>

#include "plan/projection.hpp"
#include "plan/svg_writer.hpp"

namespace kavo_app {

/// What was drawn on a sheet, and so has to be explained there.
struct Drawn {
  std::set<Role> symbols;
  std::set<Stroke> lines;
  bool dots = false;
  bool ticks = false;
  bool residuals = false;
  bool deviations = false;
};

/// The symbols and lines that were drawn, and samples of the enlarged vectors.
void DrawLegend(const Drawn& drawn, const Sheet& sheet, const Enlargement& enlargement,
                SvgWriter& svg);

}  // namespace kavo_app
