#include "plan/label_placer.hpp"

#include <array>
#include <cmath>

#include "plan/area_label.hpp"

namespace kavo_app {
namespace {

constexpr double kCell = 6.0;      // side of a cell of the grid, millimetres
constexpr double kSample = 1.0;    // how finely lines are followed, millimetres
constexpr double kGap = 0.5;       // between symbol and label, millimetres
constexpr double kLeaderAt = 2.0;  // farther from its symbol a label needs a leader, millimetres
constexpr double kAwayCost = 1.5;  // what a millimetre away is worth in millimetres of line
constexpr std::array kRings = {0.0, 1.5, 3.5, 6.0, 9.0, 13.0, 18.0, 24.0, 32.0, 42.0, 55.0};
constexpr std::size_t kBeside = 2;  // of these are so near that a code is not in the way

// Where a label can lie from its point, the best first: from -1 to 1. The second half is tried
// where a leader tells what the label belongs to.
struct Side {
  double right;
  double down;
};
constexpr std::array kSides = {
    Side{1, -1},   Side{1, 0},   Side{1, 1},   Side{-1, -1},  Side{-1, 0},  Side{-1, 1},
    Side{0, -1},   Side{0, 1},   Side{1, -.5}, Side{1, .5},   Side{.5, -1}, Side{.5, 1},
    Side{-1, -.5}, Side{-1, .5}, Side{-.5, 1}, Side{-.5, -1},
};
constexpr std::size_t kNearSides = kSides.size() / 2;

Align AlignOf(Side side) {
  return side.right > 0.0 ? Align::kStart : side.right < 0.0 ? Align::kEnd : Align::kMiddle;
}

struct PaperSize {
  double width;
  double height;
};

PaperBox BoxAt(PaperSpot centre, PaperSize size) {
  return {centre.fromLeft - size.width / 2.0, centre.fromTop - size.height / 2.0,
          centre.fromLeft + size.width / 2.0, centre.fromTop + size.height / 2.0};
}

PaperSize SizeOf(const Label& label) {
  double width = 0.0;
  for (const auto& line : label.lines) {
    width = std::max(width, TextWidth(line, kLabelSize));
  }
  const double behind = label.code.empty() ? 0.0 : kCodeGap + TextWidth(label.code, kCodeSize);
  return {std::max(width, TextWidth(label.lines.front(), kLabelSize) + behind),
          kLabelLeading * static_cast<double>(label.lines.size())};
}

PaperBox BoxBeside(const Label& label, PaperSize size, double away, Side side) {
  const double slant = side.right != 0.0 && side.down != 0.0 ? 0.8 : 1.0;
  const double off = (label.clearance + kGap + away) * slant;
  return BoxAt({label.anchor.fromLeft + side.right * (off + size.width / 2.0),
                label.anchor.fromTop + side.down * (off + size.height / 2.0)},
               size);
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

void LabelPlacer::Block(const PaperBox& box) {
  AnyNear(box, [&](std::size_t cell) {
    cells_[cell].blocked.push_back(box);
    return false;
  });
}

void LabelPlacer::Avoid(PaperSpot from, PaperSpot to) {
  const auto part = PartIn(frame_, from, to);
  if (!part) {
    return;
  }
  Follow(part->first, part->second, [this](PaperSpot spot) {
    const auto box = Around(spot, kSample / 2.0);
    AnyNear(box, [&](std::size_t cell) {
      cells_[cell].avoided.push_back(box);
      return false;
    });
  });
}

std::optional<double> LabelPlacer::CostOf(const PaperBox& box) const {
  const auto overlaps = [&box](const PaperBox& other) { return other.Overlaps(box); };
  const bool taken = !frame_.Holds(box) || AnyNear(box, [&](std::size_t cell) {
    return std::ranges::any_of(cells_[cell].blocked, overlaps);
  });
  if (taken) {
    return std::nullopt;
  }
  std::ptrdiff_t crossed = 0;
  AnyNear(box, [&](std::size_t cell) {
    crossed += std::ranges::count_if(cells_[cell].avoided, overlaps);
    return false;
  });
  return kSample * static_cast<double>(crossed);
}

// A leader may leave its own symbol, and others that lie on the same spot, but cross none, and no
// other leader.
bool LabelPlacer::LeaderIsFree(const Label& label, const PaperBox& box) const {
  const auto end = box.Nearest(label.anchor);
  bool isFree = std::ranges::none_of(leaders_, [&](const Leader& other) {
    return Cross(label.anchor, end, other.from, other.to);
  });
  const auto stops = [&](PaperSpot spot) {
    return AnyNear(Around(spot, 0.0), [&](std::size_t cell) {
      return std::ranges::any_of(cells_[cell].blocked, [&](const PaperBox& blocked) {
        return blocked.Holds(spot) && !blocked.Holds(label.anchor);
      });
    });
  };
  Follow(label.anchor, end, [&](PaperSpot spot) { isFree = isFree && !stops(spot); });
  return isFree;
}

// The label of an area that lies on its boundary would be anyone's.
std::optional<PlacedLabel> LabelPlacer::Beside(const Label& label, std::size_t rings) const {
  const auto size = SizeOf(label);
  std::optional<PlacedLabel> best;
  double bestCost = HUGE_VAL;
  for (std::size_t ring = 0; ring < rings && kAwayCost * kRings[ring] < bestCost; ++ring) {
    const bool led = kRings[ring] > kLeaderAt || !label.area.empty();
    for (std::size_t side = 0; side < (led ? kSides.size() : kNearSides); ++side) {
      const auto box = BoxBeside(label, size, kRings[ring], kSides[side]);
      const auto crossed = CostOf(box);
      if (crossed && *crossed + kAwayCost * kRings[ring] < bestCost &&
          !(led && !LeaderIsFree(label, box)) && !Crosses(label.area, box)) {
        bestCost = *crossed + kAwayCost * kRings[ring];
        best = {box, label.lines, label.code, AlignOf(kSides[side]),
                led ? std::optional(label.anchor) : std::nullopt};
      }
    }
  }
  return best;
}

// Nearer the middle is better, but for what it would cover there.
std::optional<PlacedLabel> LabelPlacer::Inside(const Label& label) const {
  constexpr double kNodeCost = 0.05;  // of each place nearer the middle, millimetres of line
  const auto size = SizeOf(label);
  std::optional<PlacedLabel> best;
  double bestCost = HUGE_VAL;
  double cost = 0.0;
  for (const auto& spot : InnerSpots(label.area)) {
    if (cost >= bestCost) {
      break;
    }
    const auto box = BoxAt(spot, size);
    const auto crossed = CostOf(box);
    if (crossed && *crossed + cost < bestCost && !Crosses(label.area, box)) {
      bestCost = *crossed + cost;
      best = {box, label.lines, {}, Align::kMiddle, std::nullopt};
    }
    cost += kNodeCost;
  }
  return best;
}

void LabelPlacer::Take(const PlacedLabel& label) {
  Block(label.box);
  if (label.leaderFrom) {
    const auto end = label.box.Nearest(*label.leaderFrom);
    Avoid(*label.leaderFrom, end);
    leaders_.push_back({*label.leaderFrom, end});
  }
}

std::optional<PlacedLabel> LabelPlacer::Place(Label label) {
  std::optional<PlacedLabel> placed;
  if (!label.area.empty()) {
    placed = Inside(label);
  } else if (!label.code.empty()) {
    placed = Beside(label, kBeside);
    label.code.clear();
  }
  if (!placed) {
    placed = Beside(label, kRings.size());
  }
  if (placed) {
    Take(*placed);
  }
  return placed;
}

// Not over lines, and not where a leader leads to the name.
void LabelPlacer::AddCode(PlacedLabel& label, const std::string& code) {
  if (code.empty() || label.leaderFrom || label.align == Align::kMiddle) {
    return;
  }
  const auto& box = label.box;
  const double width = kCodeGap + TextWidth(code, kCodeSize);
  const double bottom = box.top + kLabelLeading;
  const bool atEnd = label.align == Align::kStart;
  const PaperBox more{atEnd ? box.right : box.left - width, box.top,
                      atEnd ? box.right + width : box.left, bottom};
  if (CostOf(more) == 0.0) {
    Block(more);
    label.code = code;
  }
}

}  // namespace kavo_app
