// What surrounds a drawing on its sheet: frame and grid, title, legend, scale and north.
#pragma once

#include "plan/projection.hpp"
#include "plan/svg_writer.hpp"

namespace kavo_app {

/// Where the north arrow stands, in a corner of the frame.
inline constexpr PaperBox kNorthArrow{kFrame.right - 9.0, kFrame.top, kFrame.right - 3.0,
                                      kFrame.top + 15.0};

/// The symbol of a role, as the head of the drawing defines it.
std::string_view SymbolOf(Role role);

/// The class of a stroke, as the style of the drawing has it.
std::string_view ClassOf(Stroke stroke);

/// Frame, crosses at round coordinates and their values at the edges.
void DrawGrid(const Scene& scene, const Projection& projection, SvgWriter& svg);

/// Everything below the frame, and the north arrow.
/// @param heading  the job's title; `remarks` what stands under the scene's title.
void DrawBlock(const Scene& scene, const Projection& projection, const Enlargement& enlargement,
               const std::string& heading, const std::vector<std::string>& remarks, SvgWriter& svg);

}  // namespace kavo_app
