#include "lsq/storage.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr Index kLowest = std::numeric_limits<Index>::min();
constexpr Index kHighest = std::numeric_limits<Index>::max();

TEST(Storage, MatrixIsIndexedOverItsRangeAlone) {
  const struct {
    const char* name;
    Index nrl, nrh, ncl, nch;
    std::size_t rows, elements;  // that it takes memory for
  } ranges[] = {
      {"from 1", 1, 3, 1, 2, 3, 6},
      {"other lower bounds", 0, 2, -1, 1, 3, 9},
      {"lowest indices", kLowest, kLowest + 1, kLowest, kLowest + 2, 2, 6},
      {"highest indices", kHighest - 2, kHighest - 1, kHighest - 1, kHighest - 1, 2, 2},
      {"a row without elements", 1, 1, 1, 0, 1, 0},
      {"no row still has a handle for one", 1, 0, 1, 0, 1, 0},
      {"less than nothing", 5, -5, 5, -5, 1, 0},
  };
  for (const auto& [name, nrl, nrh, ncl, nch, rows, elements] : ranges) {
    SCOPED_TRACE(name);
    const HeapGuard guard;
    const Matrix m = MatAlloc(nrl, nrh, ncl, nch);
    EXPECT_EQ(2, Heap().requests);
    EXPECT_EQ((rows + 1) * sizeof(Vector) + (elements + 1) * sizeof(double), Heap().liveBytes);
    // Row after row, without gaps: to write in this order is to fill the block.
    Numbers written;
    for (Index i = nrl; i <= nrh; ++i) {
      for (Index j = ncl; j <= nch; ++j) {
        written.push_back(static_cast<double>(written.size()));
        m[i][j] = written.back();
      }
    }
    EXPECT_EQ(written, NumbersOf(m[nrl], static_cast<Index>(elements)));
    MatFree(m, nrl, 12345, ncl);
    EXPECT_EQ((std::vector{2, 1}), Heap().released);
  }
}

TEST(Storage, VectorIsIndexedOverItsRangeAlone) {
  const struct {
    Index nl, nh;
    std::size_t count;
  } table[] = {{1, 5, 5}, {-3, 0, 4}, {kHighest - 1, kHighest - 1, 1}, {1, 0, 0}, {1, -9, 0}};
  for (const auto& [nl, nh, count] : table) {
    const HeapGuard guard;
    const Vector v = VecAlloc(nl, nh);
    EXPECT_EQ((count + 1) * sizeof(double), Heap().liveBytes);
    EXPECT_EQ(v.Block() + 1, &v[nl]);
    VecFree(v, nl, 12345);
    const IntVector iv = IVecAlloc(nl, nh);
    EXPECT_EQ((count + 1) * sizeof(std::int32_t), Heap().liveBytes);
    EXPECT_EQ(iv.Block() + 1, &iv[nl]);
    IVecFree(iv, nl, -12345);
  }
}

TEST(Storage, BandIsItsDiagonalAndItsNeighbours) {
  const HeapGuard guard;
  const Band band = BandAlloc(4);
  EXPECT_EQ((5 + 4) * sizeof(double), Heap().liveBytes);
  EXPECT_EQ(band.diagonal.Block() + 1, &band.diagonal[1]);
  EXPECT_EQ(band.coupling.Block() + 1, &band.coupling[1]);
  BandFree(band);
  EXPECT_EQ((std::vector{2, 1}), Heap().released);
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

TEST(Storage, SizesBeyondTheAddressSpaceAreNotAskedFor) {
  const HeapGuard guard;
  // 2^60 doubles are 2^63 bytes; where addresses have 32 bits, even their 2^28 row handles are too
  // many.
  constexpr int kHandleBlocks = sizeof(void*) > 4 ? 1 : 0;
  Heap().pretend = 1;
  EXPECT_FALSE(MatAlloc(1, 1 << 28, kLowest, kHighest));
  EXPECT_EQ(kHandleBlocks, Heap().requests);
  EXPECT_EQ(kHandleBlocks, ReclaimHeap());  // the row handles, lost by design
}

template <class Create>
std::string RefuseCreating(Create create) {
  return RefuseEachRequest([&] {
    const Owner created{create()};
    return created ? kEngineOk : kEngineNoMemory;
  });
}

TEST(Storage, RefusedRequestIsANullHandle) {
  const HeapGuard guard;
  // Row handles whose elements cannot be had are lost by design.
  EXPECT_EQ(".L", RefuseCreating([] { return MatAlloc(1, 2, 1, 2); }));
  EXPECT_EQ(".", RefuseCreating([] { return IVecAlloc(1, 2); }));
  EXPECT_EQ("..", RefuseCreating([] { return BandAlloc(2); }));
}

// The work arrays of an adjustment.
struct Work {
  Matrix a, qxx;
  Vector l, dx, v;

  std::int32_t Alloc() { return LsqAllocWork(a, l, dx, v, qxx, 2, 5); }
};

TEST(Work, HasTheShapesOfAnAdjustment) {
  const HeapGuard guard;
  Work work;
  ASSERT_EQ(kEngineOk, work.Alloc());
  const Numbers sizes{6 * sizeof(Vector), 11 * 8, 6 * 8, 3 * 8, 6 * 8, 3 * sizeof(Vector), 5 * 8};
  Numbers asked(sizes.size());
  for (const auto& [block, known] : Heap().live) {
    asked.at(static_cast<std::size_t>(known.request - 1)) = static_cast<double>(known.size);
  }
  EXPECT_EQ(sizes, asked);
  const Vector x0 = VecAlloc(1, 2);   // request 8
  const Band weights = BandAlloc(5);  // 9 and 10
  const Vector obs = VecAlloc(1, 5);  // 11
  LsqFreeWork(obs, weights, x0, work.a, work.l, work.dx, work.v, work.qxx, 2, 5);
  EXPECT_EQ((std::vector{7, 6, 5, 4, 3, 2, 1, 8, 10, 9, 11}), Heap().released);
}

TEST(Work, IsAllOrNone) {
  const HeapGuard guard;
  Work work;
  EXPECT_EQ(".L....L", RefuseEachRequest([&] {
              const auto code = work.Alloc();
              if (code == kEngineOk) {
                std::apply([](auto... part) { (Release(part), ...); },
                           std::tuple{work.a, work.qxx, work.l, work.dx, work.v});
              }
              return code;
            }));
  ReclaimHeap();
  Heap().refuse = 5;  // the fourth array
  EXPECT_EQ(kEngineNoMemory, work.Alloc());
  EXPECT_FALSE(work.v);
  EXPECT_EQ((std::vector{4, 3, 2, 1}), Heap().released);
}

}  // namespace
