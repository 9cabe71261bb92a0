#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "fake_heap.hpp"
#include "sights.hpp"

namespace {

using namespace kavo_test;

using Sights = std::vector<MultiResectInput>;

// Sights with distances all round the origin, with errors of a few seconds and millimetres.
Sights AllRound(int count) {
  Sights sights;
  for (int i = 0; i < count; ++i) {
    const IntAngle azimuth = ANGLE_FULL_CIRCLE / count * i;
    const double horizDist = 100.0 + i % 7;
    const double measured = horizDist + 0.002;
    sights.push_back({PointAt(Pt(0, 0), azimuth, horizDist), azimuth + 16 * (i % 3),
                      ANGLE_QUARTER_CIRCLE, measured, measured, 0.0, 0.0});
  }
  return sights;
}

struct Answer {
  std::int32_t status = STATUS_OK;
  MultiResectResult result = Untouched<MultiResectResult>();
  std::vector<MultiResectResidual> residuals;
};

Answer Resect(const Sights& sights) {
  Answer answer;
  answer.residuals.assign(sights.size(), Untouched<MultiResectResidual>());
  answer.status = KavoSTNMultiResect(static_cast<std::int16_t>(sights.size()), sights.data(),
                                     &answer.result, answer.residuals.data());
  return answer;
}

// The working records first; then the adjustment, which loses row handles without elements (meant
// so): observations, two parts of weights, x0, A, l, dx, v, Qxx, and the temporaries of every step.
TEST(MultiResectionMemory, IsGivenBackWhateverRequestIsRefused) {
  const HeapGuard guard;
  const Sights sights = AllRound(5);
  const std::string letters = RefuseEachRequest([&] {
    const bool refusesRecords = Heap().refuse == Heap().requests + 1;
    const Answer answer = Resect(sights);
    if (answer.status == STATUS_OK) {
      return kavo::kEngineOk;
    }
    EXPECT_EQ(refusesRecords ? ERR_NO_MEMORY : ERR_REFUSED, answer.status);
    EXPECT_TRUE(IsUntouched(answer.result));
    EXPECT_TRUE(std::all_of(answer.residuals.begin(), answer.residuals.end(),
                            IsUntouched<MultiResectResidual>));
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
    const Answer answer = Resect(AllRound(count));
    ASSERT_EQ(STATUS_OK, answer.status);
    EXPECT_LT(std::hypot(answer.result.station.north, answer.result.station.east), 0.001);
    EXPECT_LE(Heap().peakBytes, 400U * static_cast<std::size_t>(count));
    RecordProperty("bytesPerSightOf" + std::to_string(count),
                   static_cast<int>(Heap().peakBytes / static_cast<std::size_t>(count)));
  }
}

}  // namespace
