// Limits on lengths and other numbers that people wrote as decimals.
#pragma once

#include <cmath>

namespace kavo_app {

/// By so much a difference may pass its limit, in the unit of both. 1.01 less 1 is not quite 0.01
/// in binary numbers, and a distance between two coordinates of up to 16,000 km is off by up to
/// 3e-9 m by their rounding alone. It is a ten-thousandth of the last digit that a report prints,
/// so what looks to be at the limit is within it.
inline constexpr double kLimitSlack = 1e-8;

/// Whether a difference is within its limit, which is not negative; what is no number is not.
inline bool WithinLimit(double difference, double limit) {
  return std::fabs(difference) <= limit + kLimitSlack;
}

}  // namespace kavo_app
