#include "base/angle_text.hpp"

#include <gtest/gtest.h>

#include <future>

namespace {

using namespace kavo_app;

constexpr AngleUnit kAllUnits[] = {AngleUnit::kDms, AngleUnit::kGon, AngleUnit::kDegrees,
                                   AngleUnit::kRaw};

// Every angle of a circle, less under the sanitizers, which make it slow.
#ifdef __SANITIZE_ADDRESS__
constexpr IntAngle kStep = 101;
#else
constexpr IntAngle kStep = 1;
#endif

// The angles in [first, last) whose text does not read back or shows 60 minutes or seconds.
int CountLost(AngleUnit unit, IntAngle first, IntAngle last) {
  int lost = 0;
  for (IntAngle angle = first; angle < last; angle += kStep) {
    const auto text = AngleText(angle, unit);
    const bool sixty = unit == AngleUnit::kDms && text.find("-60") != text.npos;
    lost += ReadAngle(text, unit).angle == angle && !sixty ? 0 : 1;
  }
  return lost;
}

TEST(AngleText, EveryAngleReadsBack) {
  for (const auto unit : kAllUnits) {
    auto firstHalf = std::async(std::launch::async, CountLost, unit, 0, ANGLE_HALF_CIRCLE);
    EXPECT_EQ(0, CountLost(unit, ANGLE_HALF_CIRCLE, ANGLE_FULL_CIRCLE + 1)) << UnitText(unit);
    EXPECT_EQ(0, firstHalf.get()) << UnitText(unit);
  }
}

TEST(AngleText, NegativeAnglesReadBack) {
  for (const auto unit : kAllUnits) {
    for (IntAngle angle = -ANGLE_FULL_CIRCLE; angle < 0; angle += 101) {
      const auto text = AngleText(angle, unit);
      ASSERT_EQ(angle, ReadAngle(text, unit).angle) << text;
    }
  }
}

TEST(AngleText, NeverRoundsUpToSixty) {
  EXPECT_EQ("59-59-59.9375", AngleText(60 * 57600 - 1, AngleUnit::kDms));
  EXPECT_EQ("-0-00-00.0625", AngleText(-1, AngleUnit::kDms));
  EXPECT_EQ("360-00-00.0", AngleText(ANGLE_FULL_CIRCLE, AngleUnit::kDms));
  EXPECT_EQ("399.99998", AngleText(ANGLE_FULL_CIRCLE - 1, AngleUnit::kGon));
}

TEST(ReadAngle, TakesWhatANotationAllows) {
  const struct {
    std::string_view text;
    AngleUnit unit;
    std::optional<IntAngle> angle;
  } rows[] = {
      {"12-34-56.78", AngleUnit::kDms, 12 * 57600 + 34 * 960 + 56 * 16 + 12},
      {"-0-30-00", AngleUnit::kDms, -30 * 960},
      {"+1-00-00", AngleUnit::kDms, 57600},
      {"360-00-00", AngleUnit::kDms, ANGLE_FULL_CIRCLE},
      {"12\u00B034'56.78\"", AngleUnit::kDms, 12 * 57600 + 34 * 960 + 56 * 16 + 12},
      {"-0\u00B030'00\"", AngleUnit::kDms, -30 * 960},
      {"12\u00B034'56", AngleUnit::kDms, {}},
      {"12\u00B034\"", AngleUnit::kDms, {}},
      {"12\u00B0'\"", AngleUnit::kDms, {}},
      {"12\u00B060'00\"", AngleUnit::kDms, {}},
      {"12-34'56\"", AngleUnit::kDms, {}},
      {"12-60-00", AngleUnit::kDms, {}},
      {"12-00-60", AngleUnit::kDms, {}},
      {"12-30", AngleUnit::kDms, {}},
      {"12--30-00", AngleUnit::kDms, {}},
      {"12.5-30-00", AngleUnit::kDms, {}},
      {"12-30-00x", AngleUnit::kDms, {}},
      {"12-30-1e1", AngleUnit::kDms, {}},
      {"--12-30-00", AngleUnit::kDms, {}},
      {"360-00-00.1", AngleUnit::kDms, {}},
      {"", AngleUnit::kDms, {}},
      {"100", AngleUnit::kGon, ANGLE_QUARTER_CIRCLE},
      {"-0.5", AngleUnit::kDegrees, -30 * 960},
      {"+0.5", AngleUnit::kDegrees, 30 * 960},
      {"400.1", AngleUnit::kGon, {}},
      {"nan", AngleUnit::kDegrees, {}},
      {"1.5", AngleUnit::kRaw, {}},
      {"99999999999999999999", AngleUnit::kRaw, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const auto reading = ReadAngle(row.text, row.unit);
    EXPECT_EQ(row.angle, reading.angle);
    EXPECT_EQ(row.angle.has_value(), reading.complaint.empty());
  }
}

TEST(ReadAngle, TakesPlainNumbersForAllButDms) {
  EXPECT_EQ(ANGLE_HALF_CIRCLE, ReadAngle(200.0, AngleUnit::kGon).angle);
  EXPECT_EQ(-57600, ReadAngle(-1.0, AngleUnit::kDegrees).angle);
  EXPECT_FALSE(ReadAngle(1.5, AngleUnit::kRaw).angle);
  EXPECT_FALSE(ReadAngle(12.0, AngleUnit::kDms).angle);
}

}  // namespace
