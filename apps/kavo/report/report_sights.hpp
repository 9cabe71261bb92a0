// The tables of a set-up in a text report.
#pragma once

#include <vector>

#include "base/angle_text.hpp"
#include "report/text_page.hpp"
#include "service/service.hpp"

namespace kavo_app {

/// The sights as the call got them, on face 1, and the pairs as they were read with what they say
/// of the instrument.
void PrintSights(const std::vector<Sight>& sights, AngleUnit unit, TextPage& page);

/// What each sight is off.
void PrintResiduals(const std::vector<SightResidual>& residuals, AngleUnit unit, TextPage& page);

}  // namespace kavo_app
