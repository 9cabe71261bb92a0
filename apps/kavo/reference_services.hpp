// The services of reference lines, arcs and planes.
#pragma once

#include <span>

#include "service.hpp"

namespace kavo_app {

/// One row for each service, as in CogoServices.
std::span<const Service> ReferenceServices();

}  // namespace kavo_app
