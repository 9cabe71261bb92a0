#include "plan/paper_room.hpp"

#include <algorithm>
#include <cmath>

namespace kavo_app {
namespace {

constexpr double kCell = 6.0;    // side of a cell of the grid, millimetres
constexpr double kSample = 1.0;  // how finely lines are followed, millimetres
constexpr int kMostMisses = 3;   // of a cell

// Around a symbol, millimetres. A text that ends closer to another point's symbol reads as that
// point's; above and below it a line has room of its own.
constexpr double kOwnGap = 0.2;
constexpr double kSideGap = 1.0;
constexpr double kLineGap = 0.4;

// Spots along a line, both ends among them.
std::vector<PaperSpot> SpotsAlong(PaperSpot from, PaperSpot to) {
  const double dLeft = to.fromLeft - from.fromLeft;
  const double dTop = to.fromTop - from.fromTop;
  const int count = static_cast<int>(std::hypot(dLeft, dTop) / kSample) + 1;
  std::vector<PaperSpot> spots;
  for (int i = 0; i <= count; ++i) {
    spots.push_back({from.fromLeft + dLeft * i / count, from.fromTop + dTop * i / count});
  }
  return spots;
}

}  // namespace

PaperRoom::PaperRoom(const PaperBox& frame)
    : frame_(frame),
      columns_(static_cast<std::size_t>((frame.right - frame.left) / kCell) + 1),
      rows_(static_cast<std::size_t>((frame.bottom - frame.top) / kCell) + 1),
      cells_(columns_ * rows_) {}

// Calls the visitor with the places of the cells that a box touches, until it says true.
template <class Visitor>
bool PaperRoom::AnyNear(const PaperBox& box, Visitor visitor) const {
  const auto cell = [](double from, double to, std::size_t count) {
    return static_cast<std::size_t>(
        std::clamp((to - from) / kCell, 0.0, static_cast<double>(count - 1)));
  };
  const auto lastRow = cell(frame_.top, box.bottom, rows_);
  const auto lastColumn = cell(frame_.left, box.right, columns_);
  for (auto row = cell(frame_.top, box.top, rows_); row <= lastRow; ++row) {
    for (auto column = cell(frame_.left, box.left, columns_); column <= lastColumn; ++column) {
      if (visitor(row * columns_ + column)) {
        return true;
      }
    }
  }
  return false;
}

// Calls the visitor with the cells that a box touches.
template <class Visitor>
void PaperRoom::ForNear(const PaperBox& box, Visitor visitor) {
  AnyNear(box, [&](std::size_t place) {
    visitor(cells_[place]);
    return false;
  });
}

void PaperRoom::Block(const PaperBox& box) {
  ForNear(box, [&](Cell& cell) { cell.blocked.push_back(box); });
}

void PaperRoom::BlockSymbol(PaperSpot at, double halfSize) {
  Block(Around(at, halfSize + kOwnGap));
  const double across = halfSize + kSideGap;
  const double down = halfSize + kLineGap;
  const Symbol symbol{
      at, {at.fromLeft - across, at.fromTop - down, at.fromLeft + across, at.fromTop + down}};
  ForNear(symbol.clear, [&](Cell& cell) { cell.symbols.push_back(symbol); });
}

void PaperRoom::Avoid(PaperSpot from, PaperSpot to) {
  const auto part = PartIn(frame_, from, to);
  if (!part) {
    return;
  }
  for (const auto& spot : SpotsAlong(part->first, part->second)) {
    const auto box = Around(spot, kSample / 2.0);
    ForNear(box, [&](Cell& cell) { cell.avoided.push_back(box); });
  }
}

void PaperRoom::AddLeader(PaperSpot from, PaperSpot to) {
  Avoid(from, to);
  leaders_.push_back({from, to});
}

bool PaperRoom::IsTaken(const PaperBox& box, PaperSpot anchor) const {
  const auto overlaps = [&box](const PaperBox& other) { return other.Overlaps(box); };
  const auto isAnothers = [&](const Symbol& symbol) {
    const bool own = symbol.at.fromLeft == anchor.fromLeft && symbol.at.fromTop == anchor.fromTop;
    return !own && symbol.clear.Overlaps(box);
  };
  return AnyNear(box, [&](std::size_t place) {
    return std::ranges::any_of(cells_[place].blocked, overlaps) ||
           std::ranges::any_of(cells_[place].symbols, isAnothers);
  });
}

std::optional<double> PaperRoom::CostOf(const PaperBox& box, PaperSpot anchor) const {
  if (!frame_.Holds(box) || IsTaken(box, anchor)) {
    return std::nullopt;
  }
  const auto overlaps = [&box](const PaperBox& other) { return other.Overlaps(box); };
  std::ptrdiff_t crossed = 0;
  AnyNear(box, [&](std::size_t place) {
    crossed += std::ranges::count_if(cells_[place].avoided, overlaps);
    return false;
  });
  return kSample * static_cast<double>(crossed);
}

void PaperRoom::AddMiss(PaperSpot spot) {
  ForNear(Around(spot, 0.0), [](Cell& cell) { ++cell.misses; });
}

bool PaperRoom::IsFull(PaperSpot spot) const {
  return AnyNear(Around(spot, 0.0),
                 [&](std::size_t place) { return cells_[place].misses >= kMostMisses; });
}

bool PaperRoom::HasWayFor(PaperSpot from, PaperSpot to) const {
  const auto crosses = [&](const Leader& other) { return Cross(from, to, other.from, other.to); };
  const auto stops = [&](PaperSpot spot) { return IsBlocked(spot, from); };
  return std::ranges::none_of(leaders_, crosses) &&
         std::ranges::none_of(SpotsAlong(from, to), stops);
}

bool PaperRoom::IsBlocked(PaperSpot spot, PaperSpot from) const {
  return AnyNear(Around(spot, 0.0), [&](std::size_t place) {
    return std::ranges::any_of(cells_[place].blocked, [&](const PaperBox& blocked) {
      return blocked.Holds(spot) && !blocked.Holds(from);
    });
  });
}

}  // namespace kavo_app
