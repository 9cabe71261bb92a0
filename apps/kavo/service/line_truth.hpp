// Lines by geometry, to judge what the library's formulas make of them: these lose digits on lines
// that run nearly east, and far from the origin of the coordinates.
#pragma once

#include <optional>

#include "service/service.hpp"

namespace kavo_app {

/// The answer that intersect-line-circle should give; nothing when what it gave is as good, because
/// the line touches the circle as closely as can be told, or when the inputs are no figure.
std::optional<Answer> LineCircleTruth(const Inputs& in, const Answer& given);

/// The answer that foot should give; nothing when it gave none.
std::optional<Answer> FootTruth(const Inputs& in, const Answer& given);

}  // namespace kavo_app
