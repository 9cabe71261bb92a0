// A look at the library as it was loaded, whatever the tests before have set.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

namespace kavo_test {

/// Fails unless `holds()` is true in a process of its own, in which nothing has been called yet.
/// Must come before anything else that the test calls: the new process runs the test up to here.
template <class Condition>
void ExpectAtLoad(Condition holds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::_Exit(holds() ? 0 : 1), testing::ExitedWithCode(0), "");
}

}  // namespace kavo_test
