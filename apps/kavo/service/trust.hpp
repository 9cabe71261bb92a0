// Whether the numbers of a service can be trusted at the coordinates that it got.
#pragma once

#include "service/service.hpp"

namespace kavo_app {

/// Calls a service, and warns where it doubts what the inputs describe, or where a correction that
/// the instrument is set to is not made. Where its formula loses digits far from the origin of the
/// coordinates, it is called again with the same scene moved next to the origin; if that changes a
/// number by more than the last digit that a report prints, the answer says so, with both values.
/// So it does where the service knows a truth of its own.
Answer CheckedCall(const Service& service, const Inputs& in);

}  // namespace kavo_app
