// The tables of a set-up in a text report.
#pragma once

#include "base/angle_text.hpp"
#include "report/text_page.hpp"
#include "run.hpp"

namespace kavo_app {

/// The sights of a step as the call got them, on face 1, and the pairs as they were read with what
/// they say of the instrument.
void PrintSights(const Outcome& outcome, AngleUnit unit, TextPage& page);

/// The residuals of its sights.
void PrintResiduals(const Outcome& outcome, TextPage& page);

}  // namespace kavo_app
