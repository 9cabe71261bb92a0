// What the symbols and lines of a sheet mean.
#pragma once

#include "plan/projection.hpp"
#include "plan/svg_writer.hpp"

namespace kavo_app {

/// The symbols and lines that the scene has, and samples of its enlarged vectors.
void DrawLegend(const Scene& scene, const Sheet& sheet, const Enlargement& enlargement,
                SvgWriter& svg);

}  // namespace kavo_app
