#include <gtest/gtest.h>

#include <cmath>

#include "fake_heap.hpp"
#include "fake_host.hpp"
#include "multi_sights.hpp"
#include "sights.hpp"

namespace {

using namespace kavo_test;

constexpr IntAngle kQuarter = ANGLE_QUARTER_CIRCLE;

// Sights with distances all round the origin, with errors of a few seconds and millimetres.
MultiSights AllRound(int count) {
  MultiSights sights;
  for (int i = 0; i < count; ++i) {
    const IntAngle azimuth = ANGLE_FULL_CIRCLE / count * i;
    const double dist = 100.0 + i % 7;
    sights.push_back(Sight(PointAt(Pt(0, 0), azimuth, dist), azimuth + 16 * (i % 3), dist + 0.002));
  }
  return sights;
}

// The working records first; then the adjustment, which loses row handles without elements (meant
// so): observations, two parts of weights, x0, A, l, dx, v, Qxx, and the temporaries of every step.
TEST(MultiResectionMemory, IsGivenBackWhateverRequestIsRefused) {
  const HeapGuard guard;
  const MultiSights sights = AllRound(5);
  const std::string letters = RefuseEachRequest([&] {
    const bool refusesRecords = Heap().refuse == Heap().requests + 1;
    const MultiAnswer answer = Resect(sights);
    if (answer.status == STATUS_OK) {
      return kavo::kEngineOk;
    }
    EXPECT_EQ(refusesRecords ? ERR_NO_MEMORY : ERR_REFUSED, answer.status);
    EXPECT_TRUE(answer.IsUntouched());
    return kavo::kEngineNoMemory;
  });
  EXPECT_EQ("......L....L", letters.substr(0, 12));
  EXPECT_GT(letters.size(), 30U);
  EXPECT_EQ(std::string::npos, letters.find('?')) << letters;
}

// In proportion to the sights: a square matrix of so many would take gigabytes.
TEST(MultiResectionMemory, TakesAtMost400BytesASight) {
  for (const int count : {50, 1000, 32767}) {
    const HeapGuard guard;
    const MultiAnswer answer = Resect(AllRound(count));
    ASSERT_EQ(STATUS_OK, answer.status);
    EXPECT_LT(std::hypot(answer.result.station.north, answer.result.station.east), 0.001);
    EXPECT_LE(Heap().peakBytes, 400U * static_cast<std::size_t>(count));
    RecordProperty("bytesPerSightOf" + std::to_string(count),
                   static_cast<int>(Heap().peakBytes / static_cast<std::size_t>(count)));
  }
}

// Azimuths of the host may count from south. Those that are handed in turn; those that the library
// forms from points turn there and back.
TEST(KnownLineAzimuth, MayCountFromSouth) {
  const HostGuard guard;
  const auto sight1 = Sight(Pt(30, -30), 7 * kQuarter / 2, std::hypot(30, 30));
  const auto sight2 = Sight(Pt(30, 30), kQuarter / 2, std::hypot(30, 30));
  Host().azimuthReference = 1;
  for (const IntAngle azimuth : {3 * kQuarter, AZIMUTH_FROM_POINTS}) {
    MultiResectResult result{};
    MultiResectResidual accuracy[2];
    ASSERT_EQ(STATUS_OK, KavoSTNKnownLine(&sight1, &sight2, azimuth, &result, accuracy));
    EXPECT_LT(std::hypot(result.station.north, result.station.east), 1e-9);
  }
}

}  // namespace
