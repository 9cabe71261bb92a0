// How each value is written as JSON.
#pragma once

#include "base/angle_text.hpp"
#include "base/json_writer.hpp"
#include "job/run.hpp"

namespace kavo_app {

/// Writes a value with all digits: an angle as the library's integer and in the given notation, a
/// point by its components, sights with their readings, null for no value. A base has no value of
/// its own. docs/report.schema.json describes them.
void WriteJsonValue(const JsonWriter& json, const Value& value, AngleUnit angles);

/// Writes what a step or request gave, by field name. A base is left out: the inputs that set it
/// say all of it.
void WriteJsonOutputs(const JsonWriter& json, const Service& service, const Outcome& outcome,
                      AngleUnit angles);

/// Writes the status that the export returned, and its name where it has one.
void WriteJsonStatus(ObjectWriter& object, const Outcome& outcome);

}  // namespace kavo_app
