// The services of the measurement programs.
#pragma once

#include <span>

#include "service.hpp"

namespace kavo_app {

/// One row for each service, as in CogoServices.
std::span<const Service> MeasureServices();

}  // namespace kavo_app
