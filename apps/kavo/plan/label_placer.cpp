#include "plan/label_placer.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "scene/inner_spots.hpp"

namespace kavo_app {
namespace {

constexpr double kGap = 0.5;       // between symbol and label, millimetres
constexpr double kLeaderAt = 2.0;  // farther from its symbol a label needs a leader, millimetres
constexpr double kAwayCost = 1.5;  // what a millimetre away is worth in millimetres of line
constexpr std::array kRings = {0.0, 1.5, 3.5, 6.0, 9.0, 13.0, 18.0, 24.0, 32.0, 42.0, 55.0};
constexpr std::size_t kBeside = 2;  // of these are so near that no leader is needed

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

// Places within an area on paper, the innermost first.
std::vector<PaperSpot> SpotsInside(const std::vector<PaperSpot>& area) {
  std::vector<Spot> ring;
  std::ranges::transform(area, std::back_inserter(ring), [](PaperSpot spot) {
    return Spot{spot.fromLeft, -spot.fromTop};
  });
  std::vector<PaperSpot> spots;
  std::ranges::transform(InnerSpots(ring), std::back_inserter(spots), [](Spot spot) {
    return PaperSpot{spot.right, -spot.up};
  });
  return spots;
}

}  // namespace

// The label of an area that lies on its boundary would be anyone's.
std::optional<PlacedLabel> LabelPlacer::Beside(const Label& label, std::size_t rings) const {
  const auto size = SizeOf(label);
  std::optional<PlacedLabel> best;
  double bestCost = HUGE_VAL;
  for (std::size_t ring = 0; ring < rings && kAwayCost * kRings[ring] < bestCost; ++ring) {
    const bool led = kRings[ring] > kLeaderAt || !label.area.empty();
    for (std::size_t side = 0; side < (led ? kSides.size() : kNearSides); ++side) {
      const auto box = BoxBeside(label, size, kRings[ring], kSides[side]);
      const auto crossed = room_.CostOf(box, label.anchor);
      if (crossed && *crossed + kAwayCost * kRings[ring] < bestCost &&
          !(led && !room_.HasWayFor(label.anchor, box.Nearest(label.anchor))) &&
          !Crosses(label.area, box)) {
        bestCost = *crossed + kAwayCost * kRings[ring];
        best = {label.anchor, box, label.lines, label.code, AlignOf(kSides[side]), led};
      }
    }
  }
  return best;
}

std::optional<PlacedLabel> LabelPlacer::Close(Label label) const {
  auto placed = Beside(label, kBeside);
  for (std::size_t i = 0; i < label.others.size() && !placed; ++i) {
    label.anchor = label.others[i];
    placed = Beside(label, kBeside);
  }
  return placed;
}

// Nearer the middle is better, but for what it would cover there.
std::optional<PlacedLabel> LabelPlacer::Inside(const Label& label) const {
  constexpr double kNodeCost = 0.05;  // of each place nearer the middle, millimetres of line
  const auto size = SizeOf(label);
  std::optional<PlacedLabel> best;
  double bestCost = HUGE_VAL;
  double cost = 0.0;
  for (const auto& spot : SpotsInside(label.area)) {
    if (cost >= bestCost) {
      break;
    }
    const auto box = BoxAt(spot, size);
    const auto crossed = room_.CostOf(box, label.anchor);
    if (crossed && *crossed + cost < bestCost && !Crosses(label.area, box)) {
      bestCost = *crossed + cost;
      best = {label.anchor, box, label.lines, {}, Align::kMiddle};
    }
    cost += kNodeCost;
  }
  return best;
}

void LabelPlacer::Take(const PlacedLabel& label) {
  room_.Block(label.box);
  if (label.isLed) {
    room_.AddLeader(label.anchor, label.box.Nearest(label.anchor));
  }
}

std::optional<PlacedLabel> LabelPlacer::Place(Label label) {
  if (room_.IsFull(label.anchor)) {
    return std::nullopt;
  }
  std::optional<PlacedLabel> placed;
  if (!label.area.empty()) {
    placed = Inside(label);
  } else if (!label.code.empty() || !label.others.empty()) {
    placed = Close(label);
    label.code.clear();
  }
  if (!placed) {
    placed = Beside(label, kRings.size());
  }
  if (placed) {
    Take(*placed);
  } else {
    room_.AddMiss(label.anchor);
  }
  return placed;
}

// Where the name is shorter than a line below it, within the label; else beyond it, but not over
// lines.
void LabelPlacer::AddCode(PlacedLabel& label, const std::string& code) {
  if (code.empty() || !label.code.empty()) {
    return;
  }
  const auto& box = label.box;
  const double needed = TextWidth(label.lines.front(), kLabelSize) + kCodeGap +
                        TextWidth(code, kCodeSize) - (box.right - box.left);
  if (needed > 0.0) {
    const bool toLeft = label.align == Align::kEnd;
    const PaperBox more{toLeft ? box.left - needed : box.right, box.top,
                        toLeft ? box.left : box.right + needed, box.top + kLabelLeading};
    if (room_.CostOf(more, label.anchor) != 0.0) {
      return;
    }
    room_.Block(more);
  }
  if (label.align == Align::kMiddle) {
    label.align = Align::kStart;
  }
  label.code = code;
}

}  // namespace kavo_app
