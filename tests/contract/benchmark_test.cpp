#include <gtest/gtest.h>

#include <limits>

#include "text.hpp"

namespace {

using kavo_test::Text;

TEST(Benchmark, AddsTheHeightTermBeforeItTakesTheDifference) {
  const struct {
    const char* name;
    double bmElev;
    double heightTerm;
    double vertDiff;
    double elev;
  } rows[] = {
      {"benchmark above", 100.0, 1.5, 2.0, 99.5},
      {"benchmark below", 100.0, 1.5, -2.0, 103.5},
      {"level, no heights", 100.25, 0.0, 0.0, 100.25},
      // 2^53 + 1 is no double: in any other order the one would survive.
      {"the order of the sum", 0x1p53, 1.0, 0x1p53, 0.0},
      {"an infinite difference", 100.0, 1.5, std::numeric_limits<double>::infinity(),
       -std::numeric_limits<double>::infinity()},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Text(row.elev),
              Text(KavoSTNSeaLevelCalcByBM(row.bmElev, row.heightTerm, row.vertDiff)));
  }
}

}  // namespace
