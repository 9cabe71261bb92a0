// How a fuzzer ends.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace kavo_fuzz {

/// Ends the process, so that the fuzzer keeps the input: who broke which rule, with which values.
[[noreturn]] inline void Fail(std::string_view who, std::string_view rule,
                              const std::string& values) {
  std::fprintf(stderr, "\n%s: %s\n%s\n", std::string(who).c_str(), std::string(rule).c_str(),
               values.c_str());
  std::abort();
}

}  // namespace kavo_fuzz
