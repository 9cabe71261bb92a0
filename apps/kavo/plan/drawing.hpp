// A job as a drawing.
#pragma once

#include <string>
#include <vector>

#include "job/run.hpp"

namespace kavo_app {

/// Plans, facades and sections as an SVG drawing of A4 sheets, one below the other.
std::string SvgDrawing(const Job& job, const std::vector<Outcome>& outcomes);

}  // namespace kavo_app
