#include "service/outline.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace kavo_app {
namespace {

// What lies no farther from a side than this lies on it, metres: a corner that was computed onto a
// side crosses it by a rounding.
constexpr double kOnSide = 1e-3;

using Corners = std::pair<std::size_t, std::size_t>;

bool SamePlace(const CoordPt& one, const CoordPt& other) {
  return one.north == other.north && one.east == other.east;
}

// A corner that is there twice, if any: the numbers of both, the smaller first.
std::optional<Corners> RepeatedCorner(const std::vector<CoordPt>& corners) {
  std::vector<std::size_t> order(corners.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(
      order, {}, [&](std::size_t i) { return std::tuple(corners[i].north, corners[i].east, i); });
  const auto twice = std::ranges::adjacent_find(order, [&](std::size_t one, std::size_t other) {
    return SamePlace(corners[one], corners[other]);
  });
  if (twice == order.end()) {
    return std::nullopt;
  }
  return Corners(twice[0], twice[1]);
}

bool Before(const CoordPt& one, const CoordPt& other) {
  return std::tie(one.north, one.east) < std::tie(other.north, other.east);
}

// A side of an outline, turned so that it leads north, or east where it does not.
struct Side {
  std::size_t corner;  // that it starts at in the outline
  CoordPt from;
  CoordPt to;
  double length;
};

// The sides that a line moving north meets, from left to right. Two that cross are neighbours there
// before they do (the sweep of Shamos and Hoey), so that few have to be compared.
class SideSweep {
 public:
  explicit SideSweep(const std::vector<CoordPt>& corners) : corners_(corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const auto [from, to] = std::minmax(corners[i], corners[After(i)], Before);
      sides_.push_back({i, from, to, std::hypot(to.north - from.north, to.east - from.east)});
    }
    std::ranges::stable_sort(sides_, Before, &Side::from);
  }

  // The corners at which two sides start that cross, if any do; the smaller first.
  std::optional<Corners> Crossing() const {
    Row row(LeftToRight{this});
    std::vector<Row::iterator> places(sides_.size());
    for (const auto& [at, begins, side] : Events()) {
      Row::iterator right;
      std::optional<Corners> found;
      if (begins) {
        places[side] = row.insert(side).first;
        found = CrossingLeftOf(places[side], row);
        right = std::next(places[side]);
      } else {
        right = row.erase(places[side]);
      }
      if (found || (found = CrossingLeftOf(right, row))) {
        return found;
      }
    }
    return std::nullopt;
  }

 private:
  struct LeftToRight {
    const SideSweep* sweep;
    bool operator()(std::size_t one, std::size_t other) const { return sweep->IsLeft(one, other); }
  };
  using Row = std::set<std::size_t, LeftToRight>;

  // Where a side begins or ends.
  struct Event {
    CoordPt at;
    bool begins;
    std::size_t side;
  };

  // From south to north; at a corner one side ends before the next begins.
  std::vector<Event> Events() const {
    std::vector<Event> events;
    for (std::size_t i = 0; i < sides_.size(); ++i) {
      events.push_back({sides_[i].from, true, i});
      events.push_back({sides_[i].to, false, i});
    }
    std::ranges::sort(events, [](const Event& one, const Event& other) {
      return std::tie(one.at.north, one.at.east, one.begins) <
             std::tie(other.at.north, other.at.east, other.begins);
    });
    return events;
  }

  // Whether a side of the row crosses the one to its left.
  std::optional<Corners> CrossingLeftOf(Row::const_iterator place, const Row& row) const {
    if (place == row.end() || place == row.begin()) {
      return std::nullopt;
    }
    const Side& one = sides_[*std::prev(place)];
    const Side& other = sides_[*place];
    return Cross(one, other) ? std::optional<Corners>(std::minmax({one.corner, other.corner}))
                             : std::nullopt;
  }

  std::size_t After(std::size_t corner) const { return (corner + 1) % corners_.size(); }

  // On which side of a side's line a point lies: 1 to the right, -1 to the left, 0 on it.
  static int WhereIs(const CoordPt& point, const Side& side) {
    const double across = (side.to.north - side.from.north) * (point.east - side.from.east) -
                          (side.to.east - side.from.east) * (point.north - side.from.north);
    const double bound = kOnSide * side.length;
    return across > bound ? 1 : (across < -bound ? -1 : 0);
  }

  // Told from where the later of two sides begins, or else from where it leads.
  bool IsLeft(std::size_t one, std::size_t other) const {
    if (one >= other) {
      return one != other && !IsLeft(other, one);
    }
    const int begin = WhereIs(sides_[other].from, sides_[one]);
    return begin != 0 ? begin > 0 : WhereIs(sides_[other].to, sides_[one]) >= 0;
  }

  // Each has its ends on different sides of the other, or the outline passes through one at a
  // corner.
  bool Cross(const Side& one, const Side& other) const {
    const int ends = WhereIs(other.from, one) * WhereIs(other.to, one);
    const int otherEnds = WhereIs(one.from, other) * WhereIs(one.to, other);
    if (ends != 0 && otherEnds != 0) {
      return ends < 0 && otherEnds < 0;
    }
    return PassesThrough(other.corner, one) || PassesThrough(After(other.corner), one) ||
           PassesThrough(one.corner, other) || PassesThrough(After(one.corner), other);
  }

  // Whether a corner lies on a side, between its ends, and its neighbours on either hand of it.
  bool PassesThrough(std::size_t corner, const Side& side) const {
    const CoordPt& at = corners_[corner];
    const CoordPt& before = corners_[(corner == 0 ? corners_.size() : corner) - 1];
    const double along = (side.to.north - side.from.north) * (at.north - side.from.north) +
                         (side.to.east - side.from.east) * (at.east - side.from.east);
    return WhereIs(at, side) == 0 && along > kOnSide * side.length &&
           along < (side.length - kOnSide) * side.length &&
           WhereIs(before, side) * WhereIs(corners_[After(corner)], side) < 0;
  }

  const std::vector<CoordPt>& corners_;
  std::vector<Side> sides_;  // by where they begin
};

}  // namespace

std::string OutlineDoubt(const std::vector<CoordPt>& corners) {
  auto outline = corners;
  if (outline.size() > 1 && SamePlace(outline.front(), outline.back())) {
    outline.pop_back();
  }
  if (const auto twice = RepeatedCorner(outline)) {
    return fmt::format("corners {} and {} are one point: check that each is the one that is meant",
                       twice->first + 1, twice->second + 1);
  }
  if (const auto crossing = SideSweep(outline).Crossing()) {
    const auto [one, other] = *crossing;
    return fmt::format(
        "the side from corner {} to {} and that from corner {} to {} cross: this is not the area "
        "of one piece of land",
        one + 1, (one + 1) % outline.size() + 1, other + 1, (other + 1) % outline.size() + 1);
  }
  return {};
}

}  // namespace kavo_app
