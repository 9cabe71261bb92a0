#include "lsq/adjustment.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "fake_heap.hpp"
#include "lsq/observations.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kAsItWas = 42.0;

// Everything that one pass of an adjustment computes.
struct Pass {
  std::int32_t code;
  Rows qxx;
  Numbers x;
  Numbers v;
  double squares;
};

template <WeightMatrix Weights>
Pass Adjust(const Rows& aRows, const Weights& p, const Numbers& lNumbers) {
  const Index m = CountOf(aRows);
  const Index n = CountOf(aRows.front());
  const Owner a{MatrixOf(aRows)};
  const Owner l{VectorOf(lNumbers)};
  const Owner qxx{MatAlloc(1, n, 1, n)};
  const Owner x{VecAlloc(1, n)};
  const Owner v{VecAlloc(1, m)};
  Pass pass{LsqNormalInverse(*a, p, *qxx, m, n), RowsOf(*qxx, n, n), {}, {}, 0.0};
  EXPECT_EQ(kEngineOk, LsqSolutionVector(*a, *qxx, p, *l, *x, m, n));
  EXPECT_EQ(kEngineOk, LsqMatVecAdd(*a, *l, *x, *v, m, n));
  EXPECT_EQ(kEngineOk, LsqQuadraticForm(p, *v, pass.squares, m));
  pass.x = NumbersOf(*x, n);
  pass.v = NumbersOf(*v, m);
  return pass;
}

Band BandOf(const Numbers& diagonal, const Numbers& coupling) {
  const Band band = BandAlloc(CountOf(diagonal));
  for (Index i = 1; i <= CountOf(diagonal); ++i) {
    band.diagonal[i] = diagonal[static_cast<std::size_t>(i - 1)];
  }
  for (Index i = 1; i < CountOf(diagonal); ++i) {
    band.coupling[i] = coupling[static_cast<std::size_t>(i - 1)];
  }
  return band;
}

// N = (6 5; 5 7) of determinant 17, A^T P l = (84, 87), P v = (-20, -20, 20): worked by hand.
void ExpectWorkedByHand(const Pass& pass) {
  EXPECT_EQ(kEngineOk, pass.code);
  EXPECT_LE(Distance({{7.0 / 17, -5.0 / 17}, {-5.0 / 17, 6.0 / 17}}, pass.qxx), 1e-15);
  EXPECT_LE(Distance({-9, -6}, pass.x), 1e-13);
  EXPECT_LE(Distance({-8, -4, 5}, pass.v), 1e-13);
  EXPECT_NEAR(340.0, pass.squares, 1e-11);
}

TEST(Adjustment, WorkedByHand) {
  const HeapGuard guard;
  const Rows a{{1, 0}, {0, 1}, {1, 1}};
  const Numbers l{1, 2, 20};
  const Owner dense{MatrixOf({{2, 1, 0}, {1, 3, 0}, {0, 0, 4}})};
  const Owner band{BandOf({2, 3, 4}, {1, 0})};
  ExpectWorkedByHand(Adjust(a, *dense, l));
  ExpectWorkedByHand(Adjust(a, *band, l));
}

TEST(Adjustment, RefusesAnUnknownWithoutObservation) {
  const HeapGuard guard;
  const Owner a{MatrixOf({{1, 0}, {2, 0}})};
  const Owner p{BandOf({1, 1}, {0})};
  const Owner qxx{MatAlloc(1, 2, 1, 2)};
  const int before = Heap().requests;
  EXPECT_EQ(kEngineSingular, LsqNormalInverse(*a, *p, *qxx, 2, 2));
  EXPECT_EQ((Rows{{1, 0}, {0, 1}}), RowsOf(*qxx, 2, 2));
  EXPECT_EQ(1, ReclaimAfter(before)) << "the scale vector is lost by design";
}

TEST(Adjustment, SquaresOfNothingAreNothing) {
  const HeapGuard guard;
  const Owner p{BandOf({kInf, kNaN}, {kInf})};
  const Owner v{VectorOf({0.0, -0.0})};
  double squares = kAsItWas;
  EXPECT_EQ(kEngineOk, LsqQuadraticForm(*p, *v, squares, 2));
  EXPECT_EQ(Text(0.0), Text(squares));
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
  const auto writesOnlyWhenOk = [](std::int32_t code, const double& result) {
    EXPECT_EQ(code == kEngineOk, result != kAsItWas);
    return code;
  };
  EXPECT_EQ(".L.L", RefuseEachRequest([&] {
              return writesOnlyWhenOk(LsqSolutionVector(*a, *qxx, p, *l, *x, 2, 1), (*x)[1]);
            }));
  EXPECT_EQ(".", RefuseEachRequest([&] {
              return writesOnlyWhenOk(LsqMatVecAdd(*a, *l, *x, *v, 2, 1), (*v)[1]);
            }));
  EXPECT_EQ(".", RefuseEachRequest([&] {
              return writesOnlyWhenOk(LsqQuadraticForm(p, *v, squares, 2), squares);
            }));
}

TEST(Adjustment, OutOfMemory) {
  const HeapGuard guard;
  const Owner dense{MatrixOf({{1, 0}, {0, 1}})};
  const Owner band{BandOf({1, 1}, {0})};
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

  double Field() { return Below(6) == 0 ? kValueAbsent : Number(); }

 private:
  std::mt19937_64 random_{20261121};
  bool wild_;
};

// Numbers as their bits, any NaN as the same one.
void AppendBits(std::vector<std::uint64_t>& bits, const Numbers& numbers) {
  for (const double number : numbers) {
    bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(number) ? kNaN : number));
  }
}

std::vector<std::uint64_t> Bits(const Rows& rows) {
  std::vector<std::uint64_t> bits;
  for (const auto& row : rows) {
    AppendBits(bits, row);
  }
  return bits;
}

std::vector<std::uint64_t> Bits(const Pass& pass) {
  auto bits = Bits(pass.qxx);
  AppendBits(bits, pass.x);
  AppendBits(bits, pass.v);
  AppendBits(bits, {pass.squares, static_cast<double>(pass.code)});
  return bits;
}

// One pass over a random design with the two forms of the same weights. True when its result is
// a number.
bool ExpectSamePass(Draw& draw, Matrix dense, const Band& band, Index m) {
  const int n = 3 + draw.Below(2);
  Rows a(static_cast<std::size_t>(m), Numbers(static_cast<std::size_t>(n)));
  for (auto& row : a) {
    std::generate(row.begin(), row.end(), [&] { return draw.Below(3) == 0 ? 0.0 : draw.Number(); });
  }
  Numbers l(a.size());
  std::generate(l.begin(), l.end(), [&] { return draw.Number(); });
  const Pass pass = Adjust(a, dense, l);
  EXPECT_EQ(Bits(pass), Bits(Adjust(a, band, l)));
  return pass.code == kEngineOk && std::isfinite(pass.squares);
}

template <WeightMatrix Weights>
struct Network {
  std::int32_t mode;
  std::int32_t code;
  Vector obs;
  Weights w;
  Index total;
  Index nDist;
};

template <WeightMatrix Weights>
Network<Weights> Build(std::int32_t mode, const std::vector<MultiResectObs>& recs,
                       const Numbers& sigmas) {
  Network<Weights> net{mode, -1, {}, {}, -1, -1};
  net.code = LsqBuildWeights(net.mode, CountOf(recs), recs.data(), sigmas[0], sigmas[1], sigmas[2],
                             net.obs, net.w, net.total, net.nDist);
  return net;
}

std::vector<MultiResectObs> RandomSights(Draw& draw) {
  std::vector<MultiResectObs> recs(static_cast<std::size_t>(1 + draw.Below(8)));
  for (auto& rec : recs) {
    rec = {0,
           0,
           draw.Field(),
           0,
           draw.Field(),
           draw.Field(),
           draw.Field(),
           draw.Field(),
           draw.Field(),
           0,
           0,
           0};
  }
  return recs;
}

// True when the adjustment of both gives a number.
bool ExpectSameNetwork(Draw& draw) {
  const auto recs = RandomSights(draw);
  const Numbers sigmas{draw.Number(), draw.Number(), draw.Number()};
  const std::int32_t mode = 2 + draw.Below(2);
  const auto dense = Build<Matrix>(mode, recs, sigmas);
  const auto band = Build<Band>(mode, recs, sigmas);
  EXPECT_EQ((std::vector{dense.code, dense.mode, dense.total, dense.nDist}),
            (std::vector{band.code, band.mode, band.total, band.nDist}));
  if (dense.code != kEngineOk || dense.total == 0) {
    return false;
  }
  const Index m = dense.total;
  EXPECT_EQ(Bits({NumbersOf(dense.obs, m)}), Bits({NumbersOf(band.obs, m)}));
  EXPECT_EQ(Bits(RowsOf(dense.w, m, m)), Bits(RowsOf(band.w, m)));
  return ExpectSamePass(draw, dense.w, band.w, m);
}

// Weights that no sights would have.
bool ExpectSameWeights(Draw& draw) {
  const Index m = 1 + draw.Below(7);
  Numbers diagonal(static_cast<std::size_t>(m));
  Numbers coupling(diagonal.size());
  std::generate(diagonal.begin(), diagonal.end(), [&] { return draw.Number(); });
  std::generate(coupling.begin(), coupling.end(), [&] { return draw.Number(); });
  const Band band = BandOf(diagonal, coupling);
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
  constexpr std::size_t kSights = 2000;
  const std::vector<MultiResectObs> recs(kSights, {0, 0, 0, 0, 1, 1.5, 90, 90, 1, 0, 0, 0});
  const auto net = Build<Band>(2, recs, {2, 0.002, 2e-6});
  ASSERT_EQ(kEngineOk, net.code);
  const Owner obs{net.obs};
  const Owner w{net.w};
  Rows a;
  for (std::size_t i = 0; i < 2 * kSights; ++i) {
    const auto azimuth = static_cast<double>(i);
    a.push_back({std::sin(azimuth), std::cos(azimuth), i % 2 == 0 ? 1.0 : 0.0});
  }
  EXPECT_EQ(kEngineOk, Adjust(a, net.w, Numbers(a.size(), 0.001)).code);
  const std::size_t perSight = Heap().peakBytes / kSights + sizeof(MultiResectObs);
  RecordProperty("bytesPerSight", static_cast<int>(perSight));
  EXPECT_LE(perSight, 400U);
}

}  // namespace
