// An example of every service, for help: a step that can be pasted into a job, and a request.
#pragma once

#include <string>

#include "service/service.hpp"

namespace kavo_app {

/// The steps of a job that uses the service: before it, where it needs one, the step that sets its
/// base. They need no other points and are a whole job.
std::string ExampleSteps(const Service& service);

/// The same as a request, on one line.
std::string ExampleRequest(const Service& service);

}  // namespace kavo_app
