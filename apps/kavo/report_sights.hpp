// The tables of a set-up in a text report.
#pragma once

#include "angle_text.hpp"
#include "run.hpp"
#include "text_page.hpp"

namespace kavo_app {

/// The sights of a step as the call got them, on face 1, and the pairs as they were read with what
/// they say of the instrument.
void PrintSights(const Outcome& outcome, AngleUnit unit, TextPage& page);

/// The residuals of its sights.
void PrintResiduals(const Outcome& outcome, TextPage& page);

}  // namespace kavo_app
