#include "lsq/solver.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "fake_heap.hpp"
#include "lsq/arithmetic.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Decompose, ChoosesItsPivots) {
  const struct {
    const char* name;
    Rows a;
    Rows lu;
    std::vector<Index> indx;
    double d;
  } table[] = {
      {"of equals the later row", {{1, 1}, {1, -1}}, {{1, -1}, {1, 2}}, {2, 2}, -1},
      {"equal only once they are scaled", {{8, 16}, {1, 2}}, {{1, 2}, {8, 1e-20}}, {2, 2}, -1},
      {"scaled: not the larger number", {{2, 8}, {1, 1}}, {{1, 1}, {2, 6}}, {2, 2}, -1},
      {"a scale goes with its row",
       {{0, 2, 8}, {0, 1, 1}, {1, 0, 0}},
       {{1, 0, 0}, {0, 1, 1}, {0, 2, 6}},
       {3, 2, 3},
       -1},
      {"in place", {{4, 2}, {2, 4}}, {{4, 2}, {0.5, 3}}, {1, 2}, 1},
      {"round in a ring: two interchanges",
       {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
       {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
       {2, 3, 3},
       1},
      {"equal rows leave a pivot of zero", {{1, 1}, {1, 1}}, {{1, 1}, {1, 1e-20}}, {2, 2}, -1},
      {"a column of NaNs keeps its diagonal",
       {{1, kNaN, 0}, {2, kNaN, 1}, {8, kNaN, 4}},
       {{8, kNaN, 4}, {0.25, kNaN, 0}, {0.125, kNaN, kNaN}},
       {3, 2, 3},
       -1},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    const HeapGuard guard;
    const Index n = CountOf(row.a);
    const Owner a{MatrixOf(row.a)};
    const Owner indx{IVecAlloc(1, n)};
    double d = kNaN;
    ASSERT_EQ(kEngineOk, LuDecompose(*a, n, *indx, d));
    EXPECT_EQ(Text(row.lu), Text(RowsOf(*a, n, n)));
    EXPECT_EQ(row.indx, std::vector<Index>(&(*indx)[1], &(*indx)[1] + n));
    EXPECT_EQ(row.d, d);
  }
}

void ExpectRefused(const Rows& rows) {
  const HeapGuard guard;
  const Index n = CountOf(rows);
  const Owner a{MatrixOf(rows)};
  const Owner b{MatrixOf(rows)};
  const Owner indx{IVecAlloc(1, n)};
  const int before = Heap().requests;
  double d = kNaN;
  EXPECT_EQ(kEngineSingular, LuDecompose(*a, n, *indx, d));
  EXPECT_EQ(-1, (*indx)[1]);  // as the heap gave it
  EXPECT_EQ(1, ReclaimAfter(before)) << "the scale vector is lost by design";
  EXPECT_EQ(kEngineSingular, MatSolveRefined(*a, *b, n, n));
  EXPECT_EQ(1, ReclaimAfter(before)) << "the scale vector, and nothing else";
  EXPECT_EQ(Text(rows) + Text(rows), Text(RowsOf(*a, n, n)) + Text(RowsOf(*b, n, n)));
}

TEST(Decompose, RefusesARowWithoutANumberAboveZero) {
  ExpectRefused({{0}});
  ExpectRefused({{1, 2}, {0, -0.0}});
  ExpectRefused({{kNaN, 0}, {1, 1}});
}

TEST(Substitute, PassesOverLeadingZerosAlone) {
  const HeapGuard guard;
  const Owner lu{MatrixOf({{1, 0, 0}, {kInf, 1, 0}, {kInf, kInf, 1}})};
  const Owner indx{IVecAlloc(1, 3)};
  for (Index i = 1; i <= 3; ++i) {
    (*indx)[i] = i;
  }
  const Owner b{MatrixOf({{0, 0}, {0, 1}, {5, 0}})};
  LuBackSubst(*lu, *b, 3, 2, *indx);
  // Infinite multipliers of leading zeros do not count; that of the 1 in the second system does.
  EXPECT_EQ(5.0, (*b)[3][1]);
  EXPECT_EQ(-kInf, (*b)[3][2]);
}

TEST(Negligible, IsAbsoluteAndNeverNaN) {
  const HeapGuard guard;
  const struct {
    double value;
    bool negligible;
  } table[] = {{0.0, true},   {0x1p-52, true}, {-0x1p-52, true}, {0x1.0000000000001p-52, false},
               {-1.0, false}, {kNaN, false}};
  for (const auto& row : table) {
    const Owner m{MatrixOf({{0, 0}, {0, row.value}})};
    EXPECT_EQ(row.negligible, MatAllNegligible(*m, 2, 2)) << row.value;
    EXPECT_TRUE(MatAllNegligible(*m, 1, 2));
    EXPECT_TRUE(MatAllNegligible(*m, 2, 0));
  }
}

TEST(Solve, ReplacesItsOperands) {
  const HeapGuard guard;
  const Owner a{MatrixOf({{4}})};
  const Owner b{MatrixOf({{2}})};
  ASSERT_EQ(kEngineOk, MatSolveRefined(*a, *b, 1, 1));
  EXPECT_EQ(4.0, (*a)[1][1]);
  EXPECT_EQ(0.5, (*b)[1][1]);
}

// With two equal rows and right-hand sides 1 and 2 the pivot 1e-20 gives +-1e20, which cancel in
// the residual: every pass adds the first solution once more.
TEST(Solve, StopsAfterFivePasses) {
  const HeapGuard guard;
  const Owner a{MatrixOf({{1, 1}, {1, 1}})};
  const Owner b{MatrixOf({{1}, {2}})};
  ASSERT_EQ(kEngineOk, MatSolveRefined(*a, *b, 2, 1));
  double sixTimes = 0.0;
  for (int i = 0; i < 6; ++i) {
    sixTimes += 1e20;
  }
  EXPECT_EQ(sixTimes, (*b)[1][1]);
  EXPECT_EQ(-sixTimes, (*b)[2][1]);
  EXPECT_EQ((Rows{{1, 1}, {1, 1e-20}}), RowsOf(*a, 2, 2));
}

// A random system of small integers with a solution of integers, so that the truth is known
// exactly. Returns how far the solver stays away from it.
double DistanceFromIntegers(std::mt19937& random, Index n, Index largest) {
  std::uniform_int_distribution<int> element(-9, 9);
  std::uniform_int_distribution<int> unknown(-1000, 1000);
  const Owner a{MatAlloc(1, n, 1, n)};
  const Owner x{MatAlloc(1, n, 1, 2)};
  const Owner b{MatAlloc(1, n, 1, 2)};
  for (Index i = 1; i <= n; ++i) {
    for (Index j = 1; j <= n; ++j) {
      (*a)[i][j] = element(random) + (j == (i + largest) % n + 1 ? 100 : 0);
    }
    (*x)[i][1] = unknown(random);
    (*x)[i][2] = unknown(random);
  }
  MatMul(*a, *x, *b, n, n, 2);
  EXPECT_EQ(kEngineOk, MatSolveRefined(*a, *b, n, 2));
  return Distance(RowsOf(*x, n, 2), RowsOf(*b, n, 2));
}

// One element dominates each row, which keeps the condition below 50 and the errors below 1e-10.
TEST(Solve, FindsSolutionsOfIntegers) {
  const HeapGuard guard;
  std::mt19937 random(20261121);
  for (int round = 0; round < 2000; ++round) {
    EXPECT_LE(DistanceFromIntegers(random, 1 + round % 8, round), 1e-10) << round;
  }
}

TEST(Invert, GivesKnownInverses) {
  const HeapGuard guard;
  const struct {
    const char* name;
    Rows a;
    Rows inverse;
    double tolerance;
  } table[] = {
      {"identity", {{1, 0}, {0, 1}}, {{1, 0}, {0, 1}}, 0},
      {"of integers alone", {{2, 1}, {1, 1}}, {{1, -1}, {-1, 2}}, 0},
      {"three by three",
       {{1, 2, 3}, {0, 1, 4}, {5, 6, 0}},
       {{-24, 18, 5}, {20, -15, -4}, {-5, 4, 1}},
       1e-12},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    const Index n = CountOf(row.a);
    const Owner a{MatrixOf(row.a)};
    const Owner inverse{MatAlloc(1, n, 1, n)};
    ASSERT_EQ(kEngineOk, MatInverse(*a, *inverse, n));
    EXPECT_LE(Distance(row.inverse, RowsOf(*inverse, n, n)), row.tolerance);
  }
}

TEST(Invert, OutOfMemoryLeavesTheMatrixAlone) {
  const HeapGuard guard;
  const Rows rows{{2, 1}, {1, 1}};
  const Owner a{MatrixOf(rows)};
  const Owner inverse{MatAlloc(1, 2, 1, 2)};
  // LU, X and R with their row handles, the pivot record, the scale vector.
  EXPECT_EQ(".L.L.L..", RefuseEachRequest([&] {
              const auto code = MatInverse(*a, *inverse, 2);
              if (code != kEngineOk) {
                EXPECT_EQ(rows, RowsOf(*a, 2, 2));
                EXPECT_EQ((Rows{{1, 0}, {0, 1}}), RowsOf(*inverse, 2, 2));
              }
              return code;
            }));
}

TEST(Invert, ReleasesInReverseOrder) {
  const HeapGuard guard;
  const Owner a{MatrixOf({{1}})};        // requests 1 and 2
  const Owner inverse{MatrixOf({{1}})};  // 3 and 4
  Heap().refuse = 11;                    // the pivot record
  EXPECT_EQ(kEngineNoMemory, MatInverse(*a, *inverse, 1));
  EXPECT_EQ((std::vector{10, 9, 8, 7, 6, 5}), Heap().released);
}

}  // namespace
