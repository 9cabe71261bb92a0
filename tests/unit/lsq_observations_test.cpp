#include "lsq/observations.hpp"

#include <gtest/gtest.h>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

constexpr double kNone = kValueAbsent;
constexpr double kAsItWas = 42.0;

MultiResectObs Sight(double elev, double hz, double zenith, double slope, double horiz, double dh) {
  return {1, 2, elev, 3, hz, zenith, slope, horiz, dh, kAsItWas, kAsItWas, kAsItWas};
}

const MultiResectObs kWhole = Sight(7, 0.1, 1.5, 100.5, 100, 5);
const MultiResectObs kFlat = Sight(kNone, 0.2, 1.5, 100.5, 100, 5);
const MultiResectObs kDirection = Sight(7, 0.3, 1.5, kNone, kNone, kNone);
const MultiResectObs kDistance = Sight(7, kNone, 1.5, 200.5, 200, 6);

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
  };
  for (const auto& row : table) {
    SCOPED_TRACE(row.name);
    std::int32_t mode = row.asked;
    std::vector<Index> n(4, -1);
    LsqCountObs(mode, CountOf(row.recs), row.recs.data(), n[0], n[1], n[2], n[3]);
    EXPECT_EQ(row.mode, mode);
    EXPECT_EQ(row.counts, n);
  }
}

TEST(BuildWeights, InThePlane) {
  const HeapGuard guard;
  const auto built = Build<Band>(2, {kDirection, kWhole, kDistance});
  ASSERT_EQ(kEngineOk, built.code);
  const Owner obs{built.obs};
  const Owner w{built.w};
  EXPECT_EQ((Numbers{0.3, 0.1, 100, 200}), NumbersOf(*obs, built.total));
  EXPECT_EQ(2, built.nDist);
  // (2 * 4.84813681109536e-6)^2 / (0.002^2 + (2e-6 * dist)^2), worked in 40 decimal digits.
  const double at100 = 2.327171340504741225e-5;
  const double at200 = 2.260041397990181382e-5;
  const Rows weights{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, at100, 0}, {0, 0, 0, at200}};
  EXPECT_LE(Distance(weights, RowsOf(*w, built.total)), 1e-20);
}

TEST(BuildWeights, DividesBeforeItMultiplies) {
  const HeapGuard guard;
  // The square of the angle's 1e-200 radians would vanish; its ratio to 1e-300 does not.
  const auto built = Build<Band>(2, {kDistance}, {1e-200 / 4.84813681109536e-6, 1e-150, 0.0});
  ASSERT_EQ(kEngineOk, built.code);
  const Owner obs{built.obs};
  const Owner w{built.w};
  EXPECT_NEAR(1.0, (*w).diagonal[1] / 1e-100, 1e-14);
}

// Along the sight the weight is that of the slope distance, across it that of the zenith angle at
// the distance, and between the two directions there is none: the block is a turned diagonal.
TEST(BuildWeights, InSpaceIsATurnedDiagonal) {
  const double slopeDist = 250.0;
  const double sigmaAngle = 2.0 / 206264.80624709636;
  const double weight = std::pow(sigmaAngle, 2) / (4e-6 + std::pow(2e-6 * slopeDist, 2));
  for (const double zenith : {0.0, 0.4, 1.2, 1.5707963267948966, 2.0, 3.0}) {
    SCOPED_TRACE(zenith);
    const HeapGuard guard;
    const auto built = Build<Band>(3, {Sight(7, 0.1, zenith, slopeDist, 1e6, 30)});
    const Owner obs{built.obs};
    const Owner owner{built.w};
    ASSERT_EQ((Numbers{0.1, 1e6, 30}), NumbersOf(*obs, built.total));
    const Rows w = RowsOf(*owner, built.total);
    const auto form = [&w](const Numbers& a, const Numbers& b) {
      return a[0] * (w[1][1] * b[0] + w[1][2] * b[1]) + a[1] * (w[2][1] * b[0] + w[2][2] * b[1]);
    };
    const Numbers along{std::sin(zenith), std::cos(zenith)};
    const Numbers across{std::cos(zenith), -std::sin(zenith)};
    EXPECT_NEAR(weight, form(along, along), 1e-18);
    EXPECT_NEAR(1.0 / (slopeDist * slopeDist), form(across, across), 1e-18);
    EXPECT_NEAR(0.0, form(along, across), 1e-18);
    EXPECT_EQ((Numbers{1, 0, 0}), w[0]);
  }
}

TEST(BuildWeights, RefusesASlopeDistanceOfNothingInSpace) {
  const HeapGuard guard;
  const auto codeOf = [](std::int32_t mode, double slopeDist, double elev = 7) {
    const auto built = Build<Band>(mode, {kWhole, Sight(elev, 0.1, 1.5, slopeDist, 9, 1)});
    EXPECT_EQ(built.code == kEngineOk, built.obs && built.w);
    const Owner obs{built.obs};
    const Owner w{built.w};
    return built.code;
  };
  EXPECT_EQ(kEngineSingular, codeOf(3, 0.0));
  EXPECT_EQ(kEngineSingular, codeOf(3, 0x1.fffffffffffffp-27));
  EXPECT_EQ(kEngineOk, codeOf(3, 0x1p-26));  // its square is the bound
  EXPECT_EQ(kEngineOk, codeOf(2, 0.0));
  EXPECT_EQ(kEngineOk, codeOf(3, 0.0, kNone));
  EXPECT_EQ(kEngineOk, codeOf(5, 0.0));
}

TEST(BuildWeights, OfNoSightIsEmpty) {
  for (const Index count : {0, -7}) {
    const HeapGuard guard;
    Built<Matrix> b{3};
    ASSERT_EQ(kEngineOk,
              LsqBuildWeights(b.mode, count, nullptr, 2, 2, 2, b.obs, b.w, b.total, b.nDist));
    const Owner obs{b.obs};
    const Owner w{b.w};
    EXPECT_EQ((std::vector<Index>{2, 0, 0}), (std::vector<Index>{b.mode, b.total, b.nDist}));
  }
}

template <WeightMatrix Weights>
std::string RefuseBuilding() {
  return RefuseEachRequest([] {
    const auto built = Build<Weights>(3, {kWhole});
    EXPECT_EQ(built.code == kEngineOk, built.obs && built.w);
    EXPECT_EQ(static_cast<bool>(built.obs), static_cast<bool>(built.w));
    const Owner obs{built.obs};
    const Owner w{built.w};
    return built.code;
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
  const Owner v{VectorOf({1, -2, 4, 8, 16, 32, 64})};
  const auto expectResiduals = [&](std::int32_t mode, const Rows& residuals) {
    auto written = recs;
    LsqScatterResiduals(mode, CountOf(recs), written.data(), *v);
    Rows rows;
    for (const auto& rec : written) {
      rows.push_back({rec.resHz, rec.resHorizDist, rec.resHeightDiff});
    }
    EXPECT_EQ(Text(residuals), Text(rows)) << mode;
  };
  expectResiduals(2, {{-1, 2, 0}, {0, -4, 0}, {-8, 0, 0}, {-16, -32, 0}});
  expectResiduals(3, {{-1, 0, 0}, {0, 2, -4}, {-8, 0, 0}, {-16, -32, -64}});
  expectResiduals(5, Rows(4, {kAsItWas, kAsItWas, kAsItWas}));
}

}  // namespace
