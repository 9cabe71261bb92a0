#include "plan/crowds.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <numeric>
#include <utility>

namespace kavo_app {
namespace {

// Squares so small that all spots in one are near each other.
using Cell = std::pair<std::int64_t, std::int64_t>;
using Cells = std::map<Cell, std::vector<Spot>>;

Cells CellsOf(const std::vector<Spot>& spots, double near) {
  const double side = near * 0.99 / std::numbers::sqrt2;
  Cells cells;
  for (const auto& spot : spots) {
    const auto right = std::floor((spot.right - spots.front().right) / side);
    const auto up = std::floor((spot.up - spots.front().up) / side);
    cells[{static_cast<std::int64_t>(right), static_cast<std::int64_t>(up)}].push_back(spot);
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
void JoinCells(const Cells& cells, const std::map<Cell, std::size_t>& numbers, double near,
               Groups& groups) {
  for (const auto& [cell, spots] : cells) {
    const auto number = numbers.at(cell);
    for (int i = 0; i < 5 * 5; ++i) {
      const auto other = cells.find({cell.first + i / 5 - 2, cell.second + i % 5 - 2});
      if (other == cells.end()) {
        continue;
      }
      const auto otherNumber = numbers.at(other->first);
      if (groups.Of(number) != groups.Of(otherNumber) && AnyNear(spots, other->second, near)) {
        groups.Join(number, otherNumber);
      }
    }
  }
}

}  // namespace

std::vector<Crowd> CrowdsOf(const std::vector<Spot>& spots, double near) {
  const auto cells = CellsOf(spots, near);
  std::map<Cell, std::size_t> numbers;
  for (const auto& [cell, inside] : cells) {
    numbers.emplace(cell, numbers.size());
  }
  Groups groups(numbers.size());
  JoinCells(cells, numbers, near, groups);
  std::map<std::size_t, Crowd> crowds;
  for (const auto& [cell, inside] : cells) {
    auto& crowd = crowds[groups.Of(numbers.at(cell))];
    std::ranges::for_each(inside, [&crowd](Spot spot) { crowd.extent.Include(spot); });
    crowd.points += inside.size();
  }
  std::vector<Crowd> list;
  std::ranges::transform(crowds, std::back_inserter(list), [](const auto& c) { return c.second; });
  return list;
}

}  // namespace kavo_app
