// The steps of an `each` in a text report, as a table.
#pragma once

#include <span>
#include <string_view>

#include "base/angle_text.hpp"
#include "job/run.hpp"
#include "report/text_page.hpp"

namespace kavo_app {

/// Prints what all steps were given alike, and a row for each: what it was given of its own, what
/// came of it beside what it expects, and remarks. Sights and residuals have no place in it.
/// @param steps, outcomes  as many of each, of one service.
void PrintTable(std::span<const Step> steps, std::span<const Outcome> outcomes, AngleUnit unit,
                TextPage& page);

/// The warning that all rows of a table have, which stands once above it; empty when they do not
/// agree.
std::string_view CommonWarning(std::span<const Outcome> outcomes);

}  // namespace kavo_app
