// One step of a text report, as a list.
#pragma once

#include "base/angle_text.hpp"
#include "job/run.hpp"
#include "report/text_page.hpp"

namespace kavo_app {

/// Prints what the step was given, what came of it, and what it expects. Its name stands above.
void PrintList(const Step& step, const Outcome& outcome, AngleUnit unit, TextPage& page);

/// The inputs that a step was given, but its sights, which have tables of their own.
/// @param skipped  tells for each input whether it is printed elsewhere.
void PrintInputs(const Step& step, const std::vector<bool>& skipped, TextPage& page);

}  // namespace kavo_app
