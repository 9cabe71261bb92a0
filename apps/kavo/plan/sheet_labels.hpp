// The texts on a drawing: where there is room for which.
#pragma once

#include "plan/label_placer.hpp"
#include "plan/projection.hpp"
#include "plan/svg_writer.hpp"

namespace kavo_app {

/// Collects what must be labelled and what labels must keep off, and then draws the labels.
class SheetLabels {
 public:
  /// @param view, projection  what is drawn, and how; both must outlive this.
  SheetLabels(const View& view, const Projection& projection)
      : view_(view), projection_(projection), placer_(projection.Paper().frame) {}

  /// What is drawn, for labels to keep off or, for lines, to cross only where they must.
  void Block(const PaperBox& box) { placer_.Block(box); }
  void BlockSymbol(PaperSpot at, double halfSize) { placer_.BlockSymbol(at, halfSize); }
  void Avoid(PaperSpot from, PaperSpot to) { placer_.Avoid(from, to); }

  /// True when what lies there is named on this sheet, and not on that of an inset.
  bool IsLabelledHere(Spot spot) const { return IsLabelledOn(view_, projection_, spot); }

  /// The value of a chainage at its tick, where there is room when all else is labelled.
  void AddTick(PaperSpot at, double halfSize, std::string text);

  /// The name of an inset, inside it or at its corner; no dot may lie under it.
  void PlaceInsetName(const PaperBox& inset, const std::string& name, bool inside);
  bool IsUnderName(const PaperBox& box) const;

  /// Draws all labels that there is room for.
  /// @return how many of points, lines and areas are left out.
  std::size_t Draw(SvgWriter& svg);

 private:
  struct Name {
    PlacedLabel label;
    std::string code;  // that is to be added, if there is room
  };
  Label LabelOf(const ScenePoint& point) const;
  Label LabelOf(const Caption& caption) const;
  bool PlaceName(const ScenePoint& point, bool withCode);
  /// Each of these returns how many are left out.
  std::size_t PlaceNames();
  std::size_t TryNames(bool withCodes);
  std::size_t DrawCaptions(SvgWriter& svg);

  const View& view_;
  const Projection& projection_;
  LabelPlacer placer_;
  std::vector<PlacedLabel> insetNames_;
  std::vector<Name> names_;
  std::vector<Label> ticks_;
};

}  // namespace kavo_app
