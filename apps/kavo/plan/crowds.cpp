#include "plan/crowds.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <numbers>
#include <numeric>
#include <utility>

namespace kavo_app {
namespace {

// A square so small that all spots in it are near each other.
using Place = std::pair<std::int64_t, std::int64_t>;
struct Cell {
  std::size_t number = 0;
  std::vector<Spot> spots;
};
using Cells = std::map<Place, Cell>;

Cells CellsOf(const std::vector<Spot>& spots, double near) {
  const double side = near * 0.99 / std::numbers::sqrt2;
  Cells cells;
  for (const auto& spot : spots) {
    const auto right = std::floor((spot.right - spots.front().right) / side);
    const auto up = std::floor((spot.up - spots.front().up) / side);
    const Place place{static_cast<std::int64_t>(right), static_cast<std::int64_t>(up)};
    const auto number = cells.size();
    cells.try_emplace(place, Cell{number, {}}).first->second.spots.push_back(spot);
  }
  return cells;
}

bool AnyNear(const std::vector<Spot>& some, const std::vector<Spot>& others, double near) {
  return std::ranges::any_of(some, [&](Spot a) {
    return std::ranges::any_of(
        others, [&](Spot b) { return std::hypot(a.right - b.right, a.up - b.up) < near; });
  });
}

// Groups that are joined one by one: each element leads to another of its group, the last to
// itself.
class Groups {
 public:
  explicit Groups(std::size_t size) : next_(size) {
    std::iota(next_.begin(), next_.end(), std::size_t{0});
  }
  std::size_t Of(std::size_t i) {
    while (next_[i] != i) {
      i = next_[i] = next_[next_[i]];
    }
    return i;
  }
  void Join(std::size_t i, std::size_t j) { next_[Of(i)] = Of(j); }

 private:
  std::vector<std::size_t> next_;
};

// Joins the cells that have spots near each other; beyond two cells there are none.
Groups GroupsOf(const Cells& cells, double near) {
  constexpr int kAround = 5;
  Groups groups(cells.size());
  for (const auto& [place, cell] : cells) {
    for (int i = 0; i < kAround * kAround; ++i) {
      const int row = i / kAround;
      const auto found = cells.find({place.first + i % kAround - 2, place.second + row - 2});
      if (found == cells.end()) {
        continue;
      }
      const auto& other = found->second;
      if (groups.Of(cell.number) != groups.Of(other.number) &&
          AnyNear(cell.spots, other.spots, near)) {
        groups.Join(cell.number, other.number);
      }
    }
  }
  return groups;
}

}  // namespace

std::vector<Crowd> CrowdsOf(const std::vector<Spot>& spots, double near) {
  const auto cells = CellsOf(spots, near);
  auto groups = GroupsOf(cells, near);
  std::map<std::size_t, Crowd> crowds;
  for (const auto& [place, cell] : cells) {
    auto& crowd = crowds[groups.Of(cell.number)];
    std::ranges::for_each(cell.spots, [&crowd](Spot spot) { crowd.extent.Include(spot); });
    crowd.points += cell.spots.size();
  }
  std::vector<Crowd> list;
  std::ranges::transform(crowds, std::back_inserter(list), [](const auto& c) { return c.second; });
  return list;
}

}  // namespace kavo_app
