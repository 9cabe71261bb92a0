#include "lsq/solver.hpp"

#include <gtest/gtest.h>

#include <random>

#include "fake_heap.hpp"
#include "lsq/arithmetic.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

TEST(Decompose, ChoosesItsPivots) {
  const struct {
    const char* name;
    Rows a, lu;
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
       -1}};
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

TEST(Decompose, RefusesARowWithoutANumberAboveZero) {
  for (const Rows& rows : {Rows{{0}}, Rows{{1, 2}, {0, -0.0}}, Rows{{kNaN, 0}, {1, 1}}}) {
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
  const auto negligible = [](double last, Index r, Index c) {
    const Owner m{MatrixOf({{0, 0}, {0, last}})};
    return MatAllNegligible(*m, r, c);
  };
  EXPECT_TRUE(negligible(0x1p-52, 2, 2) && negligible(-0x1p-52, 2, 2));
  for (const double value : {0x1.0000000000001p-52, -1.0, kNaN}) {
    EXPECT_FALSE(negligible(value, 2, 2)) << value;
    EXPECT_TRUE(negligible(value, 1, 2) && negligible(value, 2, 0)) << value;
  }
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
  EXPECT_EQ((Rows{{sixTimes}, {-sixTimes}}), RowsOf(*b, 2, 1));
  EXPECT_EQ((Rows{{1, 1}, {1, 1e-20}}), RowsOf(*a, 2, 2));
}

// A random system of small integers with a solution of integers, so that the truth is known
// exactly. One element dominates each row, which keeps the condition below 50 and the errors below
// 1e-10.
TEST(Solve, FindsSolutionsOfIntegers) {
  const HeapGuard guard;
  std::mt19937 random(20261121);
  std::uniform_int_distribution<int> element(-9, 9);
  std::uniform_int_distribution<int> unknown(-1000, 1000);
  for (int round = 0; round < 2000; ++round) {
    const Index n = 1 + round % 8;
    const Owner a{MatAlloc(1, n, 1, n)};
    const Owner x{MatAlloc(1, n, 1, 2)};
    const Owner b{MatAlloc(1, n, 1, 2)};
    for (Index i = 1; i <= n; ++i) {
      for (Index j = 1; j <= n; ++j) {
        (*a)[i][j] = element(random) + (j == (i + round) % n + 1 ? 100 : 0);
      }
      (*x)[i][1] = unknown(random);
      (*x)[i][2] = unknown(random);
    }
    MatMul(*a, *x, *b, n, n, 2);
    ASSERT_EQ(kEngineOk, MatSolveRefined(*a, *b, n, 2));
    EXPECT_LE(Distance(RowsOf(*x, n, 2), RowsOf(*b, n, 2)), 1e-10) << round;
  }
}

TEST(Invert, OutOfMemoryLeavesTheMatrixAlone) {
  const HeapGuard guard;
  const Rows rows{{2, 1}, {1, 1}};
  const Owner a{MatrixOf(rows)};
  const Owner inverse{MatAlloc(1, 2, 1, 2)};
  // LU, X and R with their row handles, the pivot record, the scale vector.
  EXPECT_EQ(
      ".L.L.L..", RefuseEachRequest([&] {
        const auto code = MatInverse(*a, *inverse, 2);
        const bool ok = code == kEngineOk;
        EXPECT_EQ(ok ? (Rows{{1, 1}, {2, -1}}) : rows, RowsOf(*a, 2, 2));
        EXPECT_EQ(ok ? (Rows{{1, -1}, {-1, 2}}) : (Rows{{1, 0}, {0, 1}}), RowsOf(*inverse, 2, 2));
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
