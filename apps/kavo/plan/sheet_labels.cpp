#include "plan/sheet_labels.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "plan/sheet_style.hpp"

namespace kavo_app {
namespace {

// The base line's end that a text is drawn from, and how SVG calls that.
struct Start {
  double fromLeft;
  std::string_view attributes;
};

Start StartOf(const PlacedLabel& label) {
  switch (label.align) {
    case Align::kStart:
      return {label.box.left, ""};
    case Align::kEnd:
      return {label.box.right, "text-anchor=\"end\""};
    case Align::kMiddle:
      break;
  }
  return {(label.box.left + label.box.right) / 2.0, "text-anchor=\"middle\""};
}

void DrawLabel(std::string_view className, const PlacedLabel& label, SvgWriter& svg) {
  if (label.isLed) {
    svg.Line("leader", label.anchor, label.box.Nearest(label.anchor));
  }
  constexpr double kBase = 0.8 * kLabelLeading;
  const auto start = StartOf(label);
  double base = label.box.top + kBase;
  for (const auto& line : label.lines) {
    const bool first = &line == &label.lines.front();
    svg.Text(className, {start.fromLeft, base}, line, start.attributes,
             first ? label.code : std::string_view());
    base += kLabelLeading;
  }
}

}  // namespace

void SheetLabels::AddTick(PaperSpot at, double halfSize, std::string text) {
  ticks_.push_back({at, halfSize, {std::move(text)}});
}

void SheetLabels::PlaceInsetName(const PaperBox& inset, const std::string& name, bool inside) {
  Label label{{inset.left, inset.top}, 0.0, {name}};
  if (inside) {
    label.area = {{inset.left, inset.top},
                  {inset.right, inset.top},
                  {inset.right, inset.bottom},
                  {inset.left, inset.bottom},
                  {inset.left, inset.top}};
  }
  if (const auto placed = placer_.Place(std::move(label))) {
    insetNames_.push_back(*placed);
  }
}

bool SheetLabels::IsUnderName(const PaperBox& box) const {
  return std::ranges::any_of(insetNames_,
                             [&box](const PlacedLabel& name) { return name.box.Overlaps(box); });
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
  for (const auto& other : caption.others) {
    if (IsLabelledHere(other)) {
      label.others.push_back(projection_.On(other));
    }
  }
  return label;
}

bool SheetLabels::PlaceName(const ScenePoint& point, bool withCode) {
  auto label = LabelOf(point);
  auto code = withCode ? std::string() : std::exchange(label.code, {});
  auto placed = placer_.Place(std::move(label));
  if (placed) {
    names_.push_back({std::move(*placed), std::move(code)});
  }
  return placed.has_value();
}

// What weighs more is named first.
std::size_t SheetLabels::TryNames(bool withCodes) {
  std::size_t missing = 0;
  for (const auto role : kRoles) {
    for (const auto& point : view_.scene->points) {
      if (point.role == role && point.HasLabel() && IsLabelledHere(point.at)) {
        missing += PlaceName(point, withCodes) ? 0U : 1U;
      }
    }
  }
  for (auto& name : names_) {
    placer_.AddCode(name.label, name.code);
  }
  return missing;
}

// Each name with its code as long as that takes no room from another name.
std::size_t SheetLabels::PlaceNames() {
  const auto before = placer_;
  const auto missing = TryNames(true);
  const bool coded =
      std::ranges::any_of(names_, [](const Name& name) { return !name.label.code.empty(); });
  if (missing == 0 || !coded) {
    return missing;
  }
  placer_ = before;
  names_.clear();
  return TryNames(false);
}

std::size_t SheetLabels::DrawCaptions(SvgWriter& svg) {
  std::size_t missing = 0;
  for (const auto& caption : view_.scene->captions) {
    if (!IsLabelledHere(caption.at)) {
      continue;
    }
    const auto placed = placer_.Place(LabelOf(caption));
    if (placed) {
      DrawLabel("caption", *placed, svg);
    }
    missing += placed ? 0U : 1U;
  }
  return missing;
}

std::size_t SheetLabels::Draw(SvgWriter& svg) {
  svg.Open("labels");
  std::size_t missing = view_.insets.size() - insetNames_.size() + PlaceNames();
  for (const auto& name : insetNames_) {
    DrawLabel("caption", name, svg);
  }
  for (const auto& name : names_) {
    DrawLabel("label", name.label, svg);
  }
  missing += DrawCaptions(svg);
  for (const auto& tick : ticks_) {
    if (const auto placed = placer_.Place(tick)) {  // chainages may go without
      DrawLabel("tick", *placed, svg);
    }
  }
  svg.Close();
  return missing;
}

}  // namespace kavo_app
