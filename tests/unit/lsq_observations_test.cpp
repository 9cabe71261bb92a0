#include "lsq/observations.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kNone = kValueAbsent;
constexpr double kAsItWas = 42.0;

MultiResectObs Sight(double elev, double hz, double zenith, double slopeDist, double horizDist,
                     double heightDiff) {
  return {1,         2,         elev,       3,        hz,       zenith,
          slopeDist, horizDist, heightDiff, kAsItWas, kAsItWas, kAsItWas};
}

const MultiResectObs kWhole = Sight(7, 0.1, 1.5, 100.5, 100, 5);
const MultiResectObs kFlat = Sight(kNone, 0.2, 1.5, 100.5, 100, 5);
const MultiResectObs kDirection = Sight(7, 0.3, 1.5, kNone, kNone, kNone);
const MultiResectObs kDistance = Sight(7, kNone, 1.5, 200.5, 200, 6);

std::string ResidualsOf(const std::vector<MultiResectObs>& recs) {
  Rows rows;
  for (const auto& rec : recs) {
    rows.push_back({rec.resHz, rec.resHorizDist, rec.resHeightDiff});
  }
  return Text(rows);
}

TEST(CountObs, DecidesBetweenPlaneAndSpace) {
  const struct {
    const char* name;
    std::int32_t asked, mode;
    std::vector<MultiResectObs> recs;
    std::vector<Index> counts;  // directions, heights, distances, elevations
  } table[] = {
      {"space", 3, 3, {kWhole, kDirection, kDistance}, {2, 2, 2, 3}},
      {"the plane", 2, 2, {kWhole, kDirection, kDistance}, {2, 0, 2, 3}},
      {"space without any elevation is the plane", 3, 2, {kFlat, kFlat}, {2, 0, 2, 0}},
      {"space without any distance is the plane", 3, 2, {kDirection}, {1, 0, 0, 1}},
      {"in space an elevation is needed for a distance", 3, 3, {kFlat, kWhole}, {2, 1, 1, 1}},
      {"a distance set lacks its zenith", 2, 2, {Sight(7, 0, kNone, 9, 9, 1)}, {1, 0, 0, 1}},
      {"a distance set lacks its slope", 2, 2, {Sight(7, 0, 1.5, kNone, 9, 1)}, {1, 0, 0, 1}},
      {"a distance set lacks its distance", 2, 2, {Sight(7, 0, 1.5, 9, kNone, 1)}, {1, 0, 0, 1}},
      {"a distance set lacks its height", 2, 2, {Sight(7, 0, 1.5, 9, 9, kNone)}, {1, 0, 0, 1}},
      {"not a number is there", 3, 3, {Sight(kNaN, kNaN, kNaN, 9, 9, kNaN)}, {1, 1, 1, 1}},
      {"another mode takes directions alone", 5, 5, {kWhole, kFlat}, {2, 0, 0, 1}},
      {"another mode falls back as well", 5, 2, {kFlat}, {1, 0, 1, 0}},
      {"no sight", 3, 2, {}, {0, 0, 0, 0}},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    std::int32_t mode = row.asked;
    Index nDir = -1;
    Index nHeight = -1;
    Index nDist = -1;
    Index nElev = -1;
    LsqCountObs(mode, CountOf(row.recs), row.recs.data(), nDir, nHeight, nDist, nElev);
    EXPECT_EQ(row.mode, mode);
    EXPECT_EQ(row.counts, (std::vector{nDir, nHeight, nDist, nElev}));
  }
}

struct Built {
  std::int32_t code;
  std::int32_t mode;
  Numbers obs;
  Rows weights;
  Index nDist;
};

Built BuildBand(std::int32_t mode, const std::vector<MultiResectObs>& recs, double sigmaAngle = 2.0,
                double sigmaConst = 0.002, double sigmaProp = 2e-6) {
  Built built{-1, mode, {}, {}, -1};
  Vector obs;
  Band w;
  Index total = -1;
  built.code = LsqBuildWeights(built.mode, CountOf(recs), recs.data(), sigmaAngle, sigmaConst,
                               sigmaProp, obs, w, total, built.nDist);
  if (built.code == kEngineOk) {
    const Owner ownObs{obs};
    const Owner ownW{w};
    built.obs = NumbersOf(obs, total);
    built.weights = RowsOf(w, total);
  } else {
    EXPECT_FALSE(obs);
    EXPECT_FALSE(w);
  }
  return built;
}

TEST(BuildWeights, InThePlane) {
  const HeapGuard guard;
  const Built built = BuildBand(2, {kDirection, kWhole, kDistance});
  ASSERT_EQ(kEngineOk, built.code);
  EXPECT_EQ((Numbers{0.3, 0.1, 100, 200}), built.obs);
  EXPECT_EQ(2, built.nDist);
  // (2 * 4.84813681109536e-6)^2 / (0.002^2 + (2e-6 * dist)^2), worked in 40 decimal digits.
  const double at100 = 2.327171340504741225e-5;
  const double at200 = 2.260041397990181382e-5;
  const Rows weights{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, at100, 0}, {0, 0, 0, at200}};
  EXPECT_LE(Distance(weights, built.weights), 1e-20);
}

TEST(BuildWeights, DividesBeforeItMultiplies) {
  const HeapGuard guard;
  // The square of the angle's 1e-200 radians would vanish; its ratio to 1e-300 does not.
  const Built built = BuildBand(2, {kDistance}, 1e-200 / 4.84813681109536e-6, 1e-150, 0.0);
  ASSERT_EQ(kEngineOk, built.code);
  EXPECT_NEAR(1.0, built.weights[0][0] / 1e-100, 1e-14);
}

// Along the sight the weight is that of the slope distance, across it that of the zenith angle at
// the distance, and between the two directions there is none: the block is a turned diagonal.
void ExpectTurnedDiagonal(double zenith) {
  SCOPED_TRACE(zenith);
  const double slopeDist = 250.0;
  const Built built = BuildBand(3, {Sight(7, 0.1, zenith, slopeDist, 1e6, 30)});
  ASSERT_EQ((Numbers{0.1, 1e6, 30}), built.obs);
  const auto& w = built.weights;
  const auto form = [&w](const Numbers& a, const Numbers& b) {
    return a[0] * (w[1][1] * b[0] + w[1][2] * b[1]) + a[1] * (w[2][1] * b[0] + w[2][2] * b[1]);
  };
  const Numbers along{std::sin(zenith), std::cos(zenith)};
  const Numbers across{std::cos(zenith), -std::sin(zenith)};
  const double sigmaAngle = 2.0 / 206264.80624709636;
  const double weight = std::pow(sigmaAngle, 2) / (4e-6 + std::pow(2e-6 * slopeDist, 2));
  EXPECT_NEAR(weight, form(along, along), 1e-18);
  EXPECT_NEAR(1.0 / (slopeDist * slopeDist), form(across, across), 1e-18);
  EXPECT_NEAR(0.0, form(along, across), 1e-18);
  EXPECT_EQ((Numbers{1, 0, 0}), w[0]);
}

TEST(BuildWeights, InSpaceIsATurnedDiagonal) {
  const HeapGuard guard;
  for (const double zenith : {0.0, 0.4, 1.2, 1.5707963267948966, 2.0, 3.0}) {
    ExpectTurnedDiagonal(zenith);
  }
}

TEST(BuildWeights, RefusesASlopeDistanceOfNothingInSpace) {
  const HeapGuard guard;
  const auto withSlope = [](double slopeDist) { return Sight(7, 0.1, 1.5, slopeDist, 9, 1); };
  EXPECT_EQ(kEngineSingular, BuildBand(3, {kWhole, withSlope(0.0)}).code);
  EXPECT_EQ(kEngineSingular, BuildBand(3, {withSlope(0x1.fffffffffffffp-27)}).code);
  EXPECT_EQ(kEngineOk, BuildBand(3, {withSlope(0x1p-26)}).code);  // its square is the bound
  EXPECT_EQ(kEngineOk, BuildBand(2, {withSlope(0.0)}).code);
  EXPECT_EQ(kEngineOk, BuildBand(3, {kWhole, Sight(kNone, 0.1, 1.5, 0.0, 9, 1)}).code);
  EXPECT_EQ(kEngineOk, BuildBand(5, {withSlope(0.0)}).code);
}

TEST(BuildWeights, OfNoSightIsEmpty) {
  for (const Index count : {0, -7}) {
    const HeapGuard guard;
    std::int32_t mode = 3;
    Vector obs;
    Matrix w;
    Index total = -1;
    Index nDist = -1;
    ASSERT_EQ(kEngineOk, LsqBuildWeights(mode, count, nullptr, 2, 2, 2, obs, w, total, nDist));
    EXPECT_EQ(2, mode);
    EXPECT_EQ(0, total);
    EXPECT_EQ(0, nDist);
    Release(w);
    Release(obs);
  }
}

template <WeightMatrix Weights>
std::string RefuseBuilding() {
  return RefuseEachRequest([] {
    std::int32_t mode = 3;
    Vector obs;
    Weights w;
    Index total = -1;
    Index nDist = -1;
    const auto code = LsqBuildWeights(mode, 1, &kWhole, 2, 0.002, 2e-6, obs, w, total, nDist);
    EXPECT_EQ(code == kEngineOk, static_cast<bool>(obs));
    EXPECT_EQ(code == kEngineOk, static_cast<bool>(w));
    if (code == kEngineOk) {
      Release(w);
      Release(obs);
    }
    return code;
  });
}

TEST(BuildWeights, OutOfMemory) {
  const HeapGuard guard;
  EXPECT_EQ("..L", RefuseBuilding<Matrix>());
  EXPECT_EQ("...", RefuseBuilding<Band>());
}

TEST(ScatterResiduals, TurnsTheSigns) {
  const HeapGuard guard;
  const std::vector<MultiResectObs> recs{kFlat, kDistance, kDirection, kWhole};
  const struct {
    std::int32_t mode;
    Rows residuals;
  } table[] = {
      {2, {{-1, 2, 0}, {0, -4, 0}, {-8, 0, 0}, {-16, -32, 0}}},
      {3, {{-1, 0, 0}, {0, 2, -4}, {-8, 0, 0}, {-16, -32, -64}}},
      {5, Rows(4, {kAsItWas, kAsItWas, kAsItWas})},
  };
  const Owner v{VectorOf({1, -2, 4, 8, 16, 32, 64})};
  for (const auto& row : table) {
    auto written = recs;
    LsqScatterResiduals(row.mode, CountOf(recs), written.data(), *v);
    EXPECT_EQ(Text(row.residuals), ResidualsOf(written)) << row.mode;
    EXPECT_EQ(recs[3].horizDist, written[3].horizDist);
  }
}

}  // namespace
