#include "lsq/adjustment.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kAsItWas = 42.0;

// What one pass of an adjustment computes: the rows of Qxx, x, v, the sum of squares and the code.
template <WeightMatrix Weights>
Rows Adjust(const Rows& aRows, const Weights& p, const Numbers& lNumbers) {
  const Index m = CountOf(aRows);
  const Index n = CountOf(aRows.front());
  const Owner a{MatrixOf(aRows)};
  const Owner l{VectorOf(lNumbers)};
  const Owner qxx{MatAlloc(1, n, 1, n)};
  const Owner x{VecAlloc(1, n)};
  const Owner v{VecAlloc(1, m)};
  double squares = kNaN;
  const auto code = LsqNormalInverse(*a, p, *qxx, m, n);
  EXPECT_EQ(kEngineOk, LsqSolutionVector(*a, *qxx, p, *l, *x, m, n));
  EXPECT_EQ(kEngineOk, LsqMatVecAdd(*a, *l, *x, *v, m, n));
  EXPECT_EQ(kEngineOk, LsqQuadraticForm(p, *v, squares, m));
  Rows pass = RowsOf(*qxx, n, n);
  pass.insert(pass.end(), {NumbersOf(*x, n), NumbersOf(*v, m), {squares, 1.0 * code}});
  return pass;
}

// N = (6 5; 5 7) of determinant 17, A^T P l = (84, 87), P v = (-20, -20, 20): worked by hand.
TEST(Adjustment, WorkedByHand) {
  const HeapGuard guard;
  const Rows a{{1, 0}, {0, 1}, {1, 1}};
  const Numbers l{1, 2, 20};
  const Rows pass{{7.0 / 17, -5.0 / 17}, {-5.0 / 17, 6.0 / 17}, {-9, -6}, {-8, -4, 5}, {340, 0}};
  const Owner dense{MatrixOf({{2, 1, 0}, {1, 3, 0}, {0, 0, 4}})};
  const Owner band{Band{VectorOf({2, 3, 4}), VectorOf({1, 0})}};
  EXPECT_LE(Distance(pass, Adjust(a, *dense, l)), 1e-11);
  EXPECT_LE(Distance(pass, Adjust(a, *band, l)), 1e-11);
}

TEST(Adjustment, RefusesAnUnknownWithoutObservation) {
  const HeapGuard guard;
  const Owner p{Band{VectorOf({1, 1}), VectorOf({0})}};
  const int before = Heap().requests;
  const Rows pass = Adjust({{1, 0}, {2, 0}}, *p, {0, 0});
  EXPECT_EQ((Rows{{1, 0}, {0, 1}, {0, 0}, {0, 0}, {0, kEngineSingular}}), pass);
  EXPECT_EQ(1, ReclaimAfter(before)) << "the scale vector is lost by design";
}

template <WeightMatrix Weights>
void ExpectRefusals(const Weights& p) {
  const Owner a{MatrixOf({{1}, {2}})};
  const Owner l{VectorOf({1, 1})};
  const Owner qxx{MatrixOf({{kAsItWas}})};
  const Owner x{VectorOf({kAsItWas})};
  const Owner v{VectorOf({kAsItWas, kAsItWas})};
  double squares = kAsItWas;
  // P A, the normal matrix and the inversion's own, matrices with their row handles.
  EXPECT_EQ(".L.L.L.L.L..", RefuseEachRequest([&] { return LsqNormalInverse(*a, p, *qxx, 2, 1); }));
  const auto expectRefusals = [](const char* letters, const double& result, auto call) {
    EXPECT_EQ(letters, RefuseEachRequest([&] {
                const auto code = call();
                EXPECT_EQ(code == kEngineOk, result != kAsItWas);
                return code;
              }));
  };
  expectRefusals(".L.L", (*x)[1], [&] { return LsqSolutionVector(*a, *qxx, p, *l, *x, 2, 1); });
  expectRefusals(".", (*v)[1], [&] { return LsqMatVecAdd(*a, *l, *x, *v, 2, 1); });
  expectRefusals(".", squares, [&] { return LsqQuadraticForm(p, *v, squares, 2); });
}

TEST(Adjustment, OutOfMemory) {
  const HeapGuard guard;
  const Owner dense{MatrixOf({{1, 0}, {0, 1}})};
  const Owner band{Band{VectorOf({1, 1}), VectorOf({0})}};
  ExpectRefusals(*dense);
  ExpectRefusals(*band);
}

// Numbers of a random network, now and then one that upsets arithmetic.
class Draw {
 public:
  explicit Draw(bool wild) : wild_(wild) {}

  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

  double Number() {
    constexpr double kUpsetting[] = {0.0, -0.0, kNaN, kInf, -kInf, 1e-200, -1e200, 5e-324};
    if (Below(wild_ ? 4 : 40) == 0) {
      return kUpsetting[Below(8)];
    }
    return std::uniform_real_distribution<double>(-100.0, 100.0)(random_);
  }

  // Some of them `instead`.
  Numbers Several(Index count, int oneIn = 1 << 30, double instead = 0.0) {
    Numbers numbers(static_cast<std::size_t>(count));
    for (double& number : numbers) {
      number = Below(oneIn) == 0 ? instead : Number();
    }
    return numbers;
  }

 private:
  std::mt19937_64 random_{20261121};
  bool wild_;
};

// Any NaN is the same as any other.
bool SameBits(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

template <class Item>
bool SameBits(const std::vector<Item>& a, const std::vector<Item>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const Item& one, const Item& other) { return SameBits(one, other); });
}

// One pass over a random design with the two forms of the same weights. True when its result is
// a number.
bool ExpectSamePass(Draw& draw, Matrix dense, const Band& band, Index m) {
  const Index n = 3 + draw.Below(2);
  Rows a;
  for (Index i = 0; i < m; ++i) {
    a.push_back(draw.Several(n, 3, 0.0));
  }
  const Numbers l = draw.Several(m);
  const Rows pass = Adjust(a, dense, l);
  EXPECT_TRUE(SameBits(pass, Adjust(a, band, l)));
  return pass.back()[1] == kEngineOk && std::isfinite(pass.back()[0]);
}

// True when the adjustment of both gives a number.
bool ExpectSameNetwork(Draw& draw) {
  std::vector<MultiResectObs> recs;
  for (int left = 1 + draw.Below(8); left > 0; --left) {
    const auto f = draw.Several(6, 6, kValueAbsent);
    recs.push_back({0, 0, f[0], 0, f[1], f[2], f[3], f[4], f[5], 0, 0, 0});
  }
  const std::array sigmas{draw.Number(), draw.Number(), draw.Number()};
  const std::int32_t mode = 2 + draw.Below(2);
  const auto dense = Build<Matrix>(mode, recs, sigmas);
  const auto band = Build<Band>(mode, recs, sigmas);
  EXPECT_EQ((std::vector{dense.code, dense.mode, dense.total, dense.nDist}),
            (std::vector{band.code, band.mode, band.total, band.nDist}));
  if (dense.code != kEngineOk || dense.total == 0) {
    return false;
  }
  const Index m = dense.total;
  EXPECT_TRUE(SameBits(NumbersOf(dense.obs, m), NumbersOf(band.obs, m)));
  EXPECT_TRUE(SameBits(RowsOf(dense.w, m, m), RowsOf(band.w, m)));
  return ExpectSamePass(draw, dense.w, band.w, m);
}

// Weights that no sights would have.
bool ExpectSameWeights(Draw& draw) {
  const Index m = 1 + draw.Below(7);
  const Band band{VectorOf(draw.Several(m)), VectorOf(draw.Several(m - 1))};
  return ExpectSamePass(draw, MatrixOf(RowsOf(band, m)), band, m);
}

TEST(BandWeights, GiveTheBitsOfDenseOnes) {
  for (const auto& expectSame : {ExpectSameNetwork, ExpectSameWeights}) {
    Draw tame(false);
    Draw wild(true);
    int solved = 0;
    for (int round = 0; round < 6000 && !HasFailure(); ++round) {
      SCOPED_TRACE(round);
      solved += expectSame(round % 2 == 0 ? tame : wild) ? 1 : 0;
      ReclaimHeap();  // with what singular systems lost
    }
    EXPECT_GT(solved, 1000);
  }
}

// A sight with two observations may cost 400 bytes, 96 of them its own record. As a matrix the
// weights alone would take 64 kB a sight here.
TEST(BandWeights, TakeMemoryInProportion) {
  const HeapGuard guard;
  constexpr Index kSights = 2000;
  const MultiResectObs rec{0, 0, 0, 0, 1, 1.5, 90, 90, 1, 0, 0, 0};
  const auto net = Build<Band>(2, std::vector<MultiResectObs>(kSights, rec));
  ASSERT_EQ(kEngineOk, net.code);
  const Owner obs{net.obs};
  const Owner w{net.w};
  Rows a;
  for (Index i = 0; i < net.total; ++i) {
    a.push_back({std::sin(i), std::cos(i), i % 2 == 0 ? 1.0 : 0.0});
  }
  EXPECT_EQ(kEngineOk, Adjust(a, net.w, Numbers(a.size(), 0.001)).back()[1]);
  EXPECT_LE(Heap().peakBytes / kSights + sizeof(MultiResectObs), 400U);
}

}  // namespace
