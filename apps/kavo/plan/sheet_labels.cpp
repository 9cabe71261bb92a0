#include "plan/sheet_labels.hpp"

#include <algorithm>

#include "plan/sheet_style.hpp"

namespace kavo_app {

bool SheetLabels::IsLabelledHere(Spot spot) const {
  return projection_.Shows(spot) && std::ranges::none_of(scene_.insets, [spot](const Inset& inset) {
           return inset.extent.Holds(spot);
         });
}

void SheetLabels::AddTick(PaperSpot at, double halfSize, std::string text) {
  ticks_.push_back({at, halfSize, {std::move(text)}});
}

void SheetLabels::AddInsetName(PaperSpot at, std::string name) {
  insetNames_.push_back({at, 0.0, {std::move(name)}});
}

Label SheetLabels::LabelOf(const ScenePoint& point) const {
  constexpr double kWidestCode = 24.0;  // millimetres
  Label label{projection_.On(point.at), HalfSize(point.role), point.details};
  if (!point.name.empty()) {
    label.lines.insert(label.lines.begin(), point.name);
  }
  if (!point.code.empty() && !point.name.empty()) {
    label.code = WrappedText(point.code, kCodeSize, kWidestCode, 1).front();
  }
  return label;
}

Label SheetLabels::LabelOf(const Caption& caption) const {
  Label label{projection_.On(caption.at), 0.0, {caption.text}};
  std::ranges::transform(caption.ring, std::back_inserter(label.area),
                         [this](Spot spot) { return projection_.On(spot); });
  return label;
}

// What weighs more is named first. A foot has no name of its own.
std::size_t SheetLabels::DrawNames(SvgWriter& svg) {
  std::size_t missing = 0;
  for (auto role = kRoles.rbegin(); role != kRoles.rend() && *role != Role::kFoot; ++role) {
    for (const auto& point : scene_.points) {
      const bool named = !(point.name.empty() && point.details.empty());
      if (point.role == *role && named && IsLabelledHere(point.at)) {
        missing += DrawLabel("label", LabelOf(point), svg) ? 0U : 1U;
      }
    }
  }
  return missing;
}

std::size_t SheetLabels::DrawCaptions(SvgWriter& svg) {
  std::size_t missing = 0;
  for (const auto& caption : scene_.captions) {
    if (IsLabelledHere(caption.at)) {
      missing += DrawLabel("caption", LabelOf(caption), svg) ? 0U : 1U;
    }
  }
  return missing;
}

std::size_t SheetLabels::Draw(SvgWriter& svg) {
  svg.Open("labels");
  std::size_t missing = 0;
  for (const auto& name : insetNames_) {
    missing += DrawLabel("caption", name, svg) ? 0U : 1U;
  }
  missing += DrawNames(svg);
  missing += DrawCaptions(svg);
  for (const auto& tick : ticks_) {
    DrawLabel("tick", tick, svg);  // chainages may go without
  }
  svg.Close();
  return missing;
}

bool SheetLabels::DrawLabel(std::string_view className, Label label, SvgWriter& svg) {
  const auto placed = placer_.Place(std::move(label));
  if (!placed) {
    return false;
  }
  if (placed->leaderFrom) {
    svg.Line("leader", *placed->leaderFrom, placed->box.Nearest(*placed->leaderFrom));
  }
  constexpr double kBase = 0.8 * kLabelLeading;
  PaperSpot at{placed->box.left, placed->box.top + kBase};
  for (const auto& line : placed->lines) {
    const bool first = &line == &placed->lines.front();
    svg.Text(className, at, line, {}, first ? placed->code : std::string_view());
    at.fromTop += kLabelLeading;
  }
  return true;
}

}  // namespace kavo_app
