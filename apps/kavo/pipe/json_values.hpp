// The values of a request's fields.
#pragma once

#include "base/angle_text.hpp"
#include "pipe/json_fields.hpp"
#include "service/service.hpp"

namespace kavo_app {

/// Reads the value of a field that is there, as its kind wants it; a base has no value of its own.
/// @throws UserError  for anything else.
Value ReadJsonValue(const JsonFields& fields, const Field& field, AngleUnit angles);

}  // namespace kavo_app
