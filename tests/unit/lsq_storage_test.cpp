#include "lsq/storage.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr Index kLowest = std::numeric_limits<Index>::min();
constexpr Index kHighest = std::numeric_limits<Index>::max();

struct Range {
  const char* name;
  Index nrl, nrh, ncl, nch;
  std::size_t rows, elements;  // that it takes memory for
};

// Row after row, without gaps: to write in this order is to fill the block.
void ExpectFillsItsBlock(Matrix m, const Range& range) {
  Numbers written;
  for (Index i = range.nrl; i <= range.nrh; ++i) {
    for (Index j = range.ncl; j <= range.nch; ++j) {
      written.push_back(static_cast<double>(written.size()));
      m[i][j] = written.back();
    }
  }
  const double* first = m[range.nrl].Block() + 1;
  EXPECT_EQ(range.elements, written.size());
  EXPECT_EQ(written, Numbers(first, first + written.size()));
}

TEST(Storage, MatrixIsIndexedOverItsRangeAlone) {
  const Range ranges[] = {
      {"one element", 1, 1, 1, 1, 1, 1},
      {"from 1", 1, 3, 1, 2, 3, 6},
      {"other lower bounds", 0, 2, -1, 1, 3, 9},
      {"lowest indices", kLowest, kLowest + 1, kLowest, kLowest + 2, 2, 6},
      {"highest indices", kHighest - 2, kHighest - 1, kHighest - 1, kHighest - 1, 2, 2},
      {"a row without elements", 1, 1, 1, 0, 1, 0},
      {"no row still has a handle for one", 1, 0, 1, 0, 1, 0},
      {"less than nothing", 5, -5, 5, -5, 1, 0},
  };
  for (const auto& range : ranges) {
    SCOPED_TRACE(range.name);
    const HeapGuard guard;
    const Matrix m = MatAlloc(range.nrl, range.nrh, range.ncl, range.nch);
    EXPECT_EQ(2, Heap().requests);
    EXPECT_EQ((range.rows + 1) * sizeof(Vector) + (range.elements + 1) * sizeof(double),
              Heap().liveBytes);
    ExpectFillsItsBlock(m, range);
    MatFree(m, range.nrl, 12345, range.ncl);
    EXPECT_EQ((std::vector{2, 1}), Heap().released);
  }
}

TEST(Storage, VectorIsIndexedOverItsRangeAlone) {
  const struct {
    Index nl, nh;
    std::size_t count;
  } table[] = {{1, 5, 5}, {-3, 0, 4}, {kHighest - 1, kHighest - 1, 1}};
  for (const auto& row : table) {
    const HeapGuard guard;
    const Vector v = VecAlloc(row.nl, row.nh);
    EXPECT_EQ((row.count + 1) * sizeof(double), Heap().liveBytes);
    EXPECT_EQ(v.Block() + 1, &v[row.nl]);
    VecFree(v, row.nl, 12345);
    const IntVector iv = IVecAlloc(row.nl, row.nh);
    EXPECT_EQ((row.count + 1) * sizeof(std::int32_t), Heap().liveBytes);
    EXPECT_EQ(iv.Block() + 1, &iv[row.nl]);
    IVecFree(iv, row.nl, -12345);
  }
  for (const Index upper : {0, -9}) {
    const HeapGuard guard;
    const Owner empty{VecAlloc(1, upper)};
    EXPECT_EQ(sizeof(double), Heap().liveBytes);
  }
}

TEST(Storage, SizesDoNotWrapRound) {
  const HeapGuard guard;
  EXPECT_FALSE(MatAlloc(1, 65536, 1, 65536));
  EXPECT_EQ(1, ReclaimHeap());  // the row handles, lost by design
  EXPECT_FALSE(MatAlloc(1, 1, kLowest, kHighest));
  EXPECT_EQ(1, ReclaimHeap());
  EXPECT_FALSE(VecAlloc(kLowest, kHighest));
  EXPECT_FALSE(MatAlloc(kLowest, kHighest, kLowest, kHighest));
}

TEST(Storage, RefusedRequestIsANullHandle) {
  const HeapGuard guard;
  // Row handles whose elements cannot be had are lost by design.
  EXPECT_EQ(".L", RefuseEachRequest([] {
              const Owner m{MatAlloc(1, 2, 1, 2)};
              return m ? kEngineOk : kEngineNoMemory;
            }));
  EXPECT_EQ(".", RefuseEachRequest([] {
              const Owner v{IVecAlloc(1, 2)};
              return v ? kEngineOk : kEngineNoMemory;
            }));
  EXPECT_EQ("..", RefuseEachRequest([] {
              const Owner band{BandAlloc(2)};
              return band ? kEngineOk : kEngineNoMemory;
            }));
}

TEST(Work, HasTheShapesOfAnAdjustment) {
  const HeapGuard guard;
  constexpr Index kUnknowns = 2;
  constexpr Index kEquations = 5;
  Matrix a;
  Matrix qxx;
  Vector l;
  Vector dx;
  Vector v;
  ASSERT_EQ(kEngineOk, LsqAllocWork(a, l, dx, v, qxx, kUnknowns, kEquations));
  const Numbers sizes{6 * sizeof(Vector), 11 * 8, 6 * 8, 3 * 8, 6 * 8, 3 * sizeof(Vector), 5 * 8};
  Numbers asked(sizes.size());
  for (const auto& [block, known] : Heap().live) {
    asked.at(static_cast<std::size_t>(known.request - 1)) = static_cast<double>(known.size);
  }
  EXPECT_EQ(sizes, asked);
  const Vector x0 = VecAlloc(1, kUnknowns);    // request 8
  const Band weights = BandAlloc(kEquations);  // 9 and 10
  const Vector obs = VecAlloc(1, kEquations);  // 11
  LsqFreeWork(obs, weights, x0, a, l, dx, v, qxx, kUnknowns, kEquations);
  EXPECT_EQ((std::vector{7, 6, 5, 4, 3, 2, 1, 8, 10, 9, 11}), Heap().released);
}

TEST(Work, IsAllOrNone) {
  const HeapGuard guard;
  Matrix a;
  Matrix qxx;
  Vector l;
  Vector dx;
  Vector v;
  EXPECT_EQ(".L....L", RefuseEachRequest([&] {
              const auto code = LsqAllocWork(a, l, dx, v, qxx, 3, 8);
              if (code == kEngineOk) {
                Release(qxx);
                Release(v);
                Release(dx);
                Release(l);
                Release(a);
              }
              return code;
            }));
  ReclaimHeap();
  Heap().refuse = 5;  // the fourth array
  EXPECT_EQ(kEngineNoMemory, LsqAllocWork(a, l, dx, v, qxx, 3, 8));
  EXPECT_FALSE(v);
  EXPECT_EQ((std::vector{4, 3, 2, 1}), Heap().released);
}

}  // namespace
