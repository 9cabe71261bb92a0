#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "scenes.hpp"

namespace {

using namespace kavo_test;

double Area(const std::vector<CoordPt>& points) {
  return KavoCogoCalcArea(points.data(), static_cast<std::int16_t>(points.size()));
}

// The most points that a count can hold: up the west side in metres, and back along the east.
TEST(Area, CountsInASignedSixteenBitNumber) {
  std::vector<CoordPt> strip;
  for (int i = 0; i <= 16383; ++i) {
    strip.push_back(Pt(i, 0));
  }
  for (int i = 16382; i >= 0; --i) {
    strip.push_back(Pt(i, 2));
  }
  ASSERT_EQ(32767U, strip.size());
  EXPECT_EQ(16382.0 * 2 + 1, Area(strip));
}

// A polygon that its middle can see whole, and its area as the sum of the triangles from there.
struct Star {
  std::vector<CoordPt> points;
  long double area;
};

Star RandomStar(Scenes& scenes, int count) {
  const long double fullTurn = 2 * std::acos(-1.0L);
  std::vector<long double> azimuths;
  std::vector<long double> radii;
  for (int i = 0; i < count; ++i) {
    azimuths.push_back((i + scenes.Between(0.1, 0.9)) * fullTurn / count);
    radii.push_back(scenes.Between(10, 500));
  }
  Star star{};
  for (std::size_t i = 0; i < azimuths.size(); ++i) {
    const std::size_t next = (i + 1) % azimuths.size();
    star.points.push_back(Pt(static_cast<double>(radii[i] * std::cos(azimuths[i])),
                             static_cast<double>(radii[i] * std::sin(azimuths[i]))));
    star.area += radii[i] * radii[next] * std::sin(azimuths[next] - azimuths[i]) / 2;
  }
  return star;
}

TEST(Area, IsTheSumOfTrianglesWhereverAndHoweverItIsWalked) {
  Scenes scenes;
  for (int i = 0; i < 500; ++i) {
    const int count = 4 + i % 50;
    Star star = RandomStar(scenes, count);
    const auto area = static_cast<double>(star.area);
    ASSERT_NEAR(area, Area(star.points), 1e-8);
    std::rotate(star.points.begin(), star.points.begin() + count / 2, star.points.end());
    ASSERT_NEAR(area, Area(star.points), 1e-8);
    std::reverse(star.points.begin(), star.points.end());
    ASSERT_NEAR(area, Area(star.points), 1e-8);
    const Motion motion = scenes.AnyMotion();
    std::transform(star.points.begin(), star.points.end(), star.points.begin(), motion);
    ASSERT_NEAR(area, Area(star.points), 1e-7);
  }
}

// Round and round at 1,000 km in whole steps of 1/64 m: every cross product is exact and of one
// sign, and their sum outgrows a double's digits.
TEST(Area, KeepsTheDigitsOfALongSum) {
  constexpr double kStepsPerMetre = 64;
  constexpr double kReach = 1e6 * kStepsPerMetre;
  constexpr int kPoints = 2000;
  std::vector<std::pair<std::int64_t, std::int64_t>> steps;
  std::vector<CoordPt> points;
  for (int i = 0; i < kPoints; ++i) {
    const auto& [north, east] = steps.emplace_back(std::llround(kReach * std::cos(2 * i)),
                                                   std::llround(kReach * std::sin(2 * i)));
    points.push_back(Pt(static_cast<double>(north) / kStepsPerMetre,
                        static_cast<double>(east) / kStepsPerMetre));
  }
  std::int64_t exact = 0;
  double plain = 0;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const std::size_t next = (i + 1) % kPoints;
    exact += steps[i].first * steps[next].second - steps[next].first * steps[i].second;
    plain += points[i].north * points[next].east - points[next].north * points[i].east;
  }
  const double area = static_cast<double>(exact) / (2 * kStepsPerMetre * kStepsPerMetre);
  EXPECT_EQ(Text(area), Text(Area(points)));
  EXPECT_GT(std::fabs(area - plain / 2), 0.5);
}

}  // namespace
