// Records as text that is exact to the bit: comparing the texts compares every field, tells -0 from
// +0 and takes a NaN for a value, and a failed comparison shows numbers that people can read.
#pragma once

#include <cmath>
#include <concepts>
#include <sstream>
#include <string>

#include "records.hpp"

namespace kavo_test {

inline std::string Text(double value) {
  if (std::isnan(value)) {
    return "nan";
  }
  std::ostringstream text;
  text.precision(17);
  text << value << " (" << std::hexfloat << value << ')';
  return text.str();
}

template <std::integral Integer>
std::string Text(Integer value) {
  return std::to_string(value);
}

template <Record T>
std::string Text(T record) {
  std::string text;
  VisitFields(record, [&](std::string_view name, auto value) {
    text += (text.empty() ? "{" : ", ") + std::string(name) + ' ' + Text(value);
    return value;
  });
  return text + '}';
}

}  // namespace kavo_test
