// The services of coordinate geometry.
#pragma once

#include <span>

#include "service.hpp"

namespace kavo_app {

/// One row for each service; `call` hands its inputs to the export and the export's results back.
std::span<const Service> CogoServices();

}  // namespace kavo_app
