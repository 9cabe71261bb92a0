#include "plan/label_placer.hpp"

#include <array>
#include <cmath>

namespace kavo_app {
namespace {

constexpr double kCell = 6.0;      // side of a cell of the grid, millimetres
constexpr double kSample = 1.0;    // how finely lines are followed, millimetres
constexpr double kGap = 0.5;       // between symbol and label, millimetres
constexpr double kLeaderAt = 2.0;  // farther from its symbol a label needs a leader, millimetres
constexpr std::array kRings = {0.0, 1.5, 3.5, 6.0, 9.0, 13.0, 18.0, 24.0};

// Where a label can lie from its point, the best first: sides of -1, 0 and 1.
struct Side {
  int right;
  int down;
};
constexpr Side kOnIt{0, 0};
constexpr std::array kSides = {Side{1, -1}, Side{1, 0},  Side{1, 1},  Side{-1, -1},
                               Side{-1, 0}, Side{-1, 1}, Side{0, -1}, Side{0, 1}};

PaperBox BoxOf(const Label& label, double away, Side side) {
  double width = 0.0;
  for (const auto& line : label.lines) {
    width = std::max(width, TextWidth(line, kLabelSize));
  }
  const double height = kLabelLeading * static_cast<double>(label.lines.size());
  const double slant = side.right != 0 && side.down != 0 ? 0.8 : 1.0;
  const double off = (label.clearance + kGap + away) * slant;
  const double left = label.anchor.fromLeft + side.right * off + (side.right - 1) * width / 2.0;
  const double top = label.anchor.fromTop + side.down * off + (side.down - 1) * height / 2.0;
  return {left, top, left + width, top + height};
}

// Spots along a line, both ends among them.
template <class Visitor>
void Follow(PaperSpot from, PaperSpot to, Visitor visitor) {
  const double dLeft = to.fromLeft - from.fromLeft;
  const double dTop = to.fromTop - from.fromTop;
  const int count = static_cast<int>(std::hypot(dLeft, dTop) / kSample) + 1;
  for (int i = 0; i <= count; ++i) {
    visitor(PaperSpot{from.fromLeft + dLeft * i / count, from.fromTop + dTop * i / count});
  }
}

}  // namespace

LabelPlacer::LabelPlacer(const PaperBox& frame)
    : frame_(frame),
      columns_(static_cast<std::size_t>((frame.right - frame.left) / kCell) + 1),
      rows_(static_cast<std::size_t>((frame.bottom - frame.top) / kCell) + 1),
      cells_(columns_ * rows_) {}

// Calls the visitor with the cells that a box touches, until it says true.
template <class Visitor>
bool LabelPlacer::AnyNear(const PaperBox& box, Visitor visitor) const {
  const auto cell = [](double from, double to, std::size_t count) {
    return static_cast<std::size_t>(
        std::clamp((to - from) / kCell, 0.0, static_cast<double>(count - 1)));
  };
  for (auto row = cell(frame_.top, box.top, rows_); row <= cell(frame_.top, box.bottom, rows_);
       ++row) {
    for (auto column = cell(frame_.left, box.left, columns_);
         column <= cell(frame_.left, box.right, columns_); ++column) {
      if (visitor(row * columns_ + column)) {
        return true;
      }
    }
  }
  return false;
}

void LabelPlacer::Add(const Obstacle& obstacle) {
  AnyNear(obstacle.box, [&](std::size_t cell) {
    cells_[cell].push_back(obstacle);
    return false;
  });
}

void LabelPlacer::Block(const PaperBox& box) { Add({box, true}); }

void LabelPlacer::Avoid(PaperSpot from, PaperSpot to) {
  Follow(from, to, [this](PaperSpot spot) { Add({Around(spot, kSample / 2.0), false}); });
}

std::optional<double> LabelPlacer::CostOf(const PaperBox& box) const {
  double cost = 0.0;
  const bool taken = !frame_.Holds(box) || AnyNear(box, [&](std::size_t cell) {
    return std::ranges::any_of(cells_[cell], [&](const Obstacle& obstacle) {
      cost += obstacle.box.Overlaps(box) ? 1.0 : 0.0;
      return obstacle.hard && obstacle.box.Overlaps(box);
    });
  });
  return taken ? std::nullopt : std::optional(cost);
}

// A leader may leave its own symbol, and others that lie on the same spot, but cross none.
bool LabelPlacer::LeaderIsFree(const Label& label, const PaperBox& box) const {
  bool isFree = true;
  Follow(label.anchor, box.Nearest(label.anchor), [&](PaperSpot spot) {
    isFree =
        isFree && !AnyNear(Around(spot, 0.0), [&](std::size_t cell) {
          return std::ranges::any_of(cells_[cell], [&](const Obstacle& obstacle) {
            return obstacle.hard && obstacle.box.Holds(spot) && !obstacle.box.Holds(label.anchor);
          });
        });
  });
  return isFree;
}

std::optional<PlacedLabel> LabelPlacer::Place(const Label& label) {
  constexpr double kAwayCost = 1.5;  // what a millimetre away is worth in millimetres of line
  std::optional<PlacedLabel> best;
  double bestCost = HUGE_VAL;
  const auto consider = [&](double away, Side side) {
    const auto box = BoxOf(label, away, side);
    const auto crossed = CostOf(box);
    const bool led = away > kLeaderAt;
    if (crossed && *crossed + kAwayCost * away < bestCost && (!led || LeaderIsFree(label, box))) {
      bestCost = *crossed + kAwayCost * away;
      best = PlacedLabel{box, label.lines, led ? std::optional(label.anchor) : std::nullopt};
    }
  };
  if (label.mayCover) {
    consider(0.0, kOnIt);
  }
  for (const double away : kRings) {
    for (const auto& side : kSides) {
      consider(away, side);
    }
  }
  if (best) {
    Block(best->box);
    if (best->leaderFrom) {
      Avoid(*best->leaderFrom, best->box.Nearest(*best->leaderFrom));
    }
  }
  return best;
}

}  // namespace kavo_app
