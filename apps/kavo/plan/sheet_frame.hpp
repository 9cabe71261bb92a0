// What surrounds a drawing on its sheet: frame and grid, title, scale and north.
#pragma once

#include "plan/projection.hpp"
#include "plan/svg_writer.hpp"

namespace kavo_app {

/// Where the north arrow stands, in a corner of the frame.
constexpr PaperBox NorthArrowOn(const Sheet& sheet) {
  return {sheet.frame.right - 9.0, sheet.frame.top, sheet.frame.right - 3.0,
          sheet.frame.top + 15.0};
}

/// Frame, crosses at round coordinates and their values at the edges.
void DrawGrid(const Scene& scene, const Projection& projection, SvgWriter& svg);

/// Below the frame the heading, which is the job's title, the view's title and remarks.
void DrawTitle(const View& view, const Sheet& sheet, const std::string& heading,
               const std::vector<std::string>& remarks, SvgWriter& svg);

/// The scale in figures and as a bar, and the north arrow of a plan.
void DrawScaleAndNorth(const Scene& scene, const Projection& projection, SvgWriter& svg);

}  // namespace kavo_app
