// A request: one line of JSON that names a service and gives its inputs.
#pragma once

#include <string>
#include <vector>

#include "base/angle_text.hpp"
#include "host/instrument.hpp"
#include "pipe/json_fields.hpp"
#include "service/service.hpp"

namespace kavo_app {

/// One call of a service, with everything that it needs.
struct Request {
  const Service* service = nullptr;
  AngleUnit angles = AngleUnit::kDms;
  InstrumentSettings settings{};
  std::vector<Value> inputs{};          ///< One for each input field; a base is filled in later.
  const Service* setService = nullptr;  ///< That sets the base; null when the service takes none.
  std::vector<Value> setInputs{};
};

/// Reads requests; keeps nothing from one to the next but its memory.
class RequestReader {
 public:
  RequestReader();

  /// Reads a line.
  /// @param line  any bytes.
  /// @param id    the request's id as JSON, set as soon as it is known; empty when there is none.
  /// @throws UserError  for a line that is no request; what() has no place.
  Request Read(std::string_view line, std::string& id);

 private:
  simdjson::dom::parser parser_;
};

}  // namespace kavo_app
