// The services of station set-up.
#pragma once

#include <span>

#include "service.hpp"

namespace kavo_app {

/// One row for each service, as in CogoServices.
std::span<const Service> StationServices();

}  // namespace kavo_app
