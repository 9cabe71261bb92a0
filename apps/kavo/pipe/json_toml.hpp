// Parts of a request as parts of a job, for those that the reader of jobs reads.
#pragma once

#include <toml++/toml.h>

#include "pipe/json_fields.hpp"

namespace kavo_app {

/// The same object as a table; without what is null, which counts as absent.
/// @throws UserError  when a key is given twice.
toml::table TomlOf(const simdjson::dom::object& object, const JsonPlace& place);

/// The same list.
toml::array TomlOf(const simdjson::dom::array& list, const JsonPlace& place);

}  // namespace kavo_app
