// Finds room for the labels of a drawing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plan/paper_room.hpp"

namespace kavo_app {

struct Label {
  PaperSpot anchor;                 ///< What it belongs to.
  double clearance;                 ///< Half the size of the symbol there, millimetres.
  std::vector<std::string> lines;   ///< One below the other.
  std::string code{};               ///< Behind the first line where there is room; may be empty.
  std::vector<PaperSpot> area{};    ///< What it labels, when that is an area: its closed boundary.
  std::vector<PaperSpot> others{};  ///< Where it may stand as well as at its anchor.
};

/// Which end of its lines is next to what a label belongs to.
enum class Align { kStart, kMiddle, kEnd };

struct PlacedLabel {
  PaperSpot anchor;
  PaperBox box;
  std::vector<std::string> lines;
  std::string code;  ///< Empty also when there was no room for it.
  Align align;
  bool isLed = false;  ///< Set when it lies so far off that a line must lead there.
};

inline constexpr double kLabelSize = 2.4;     ///< Of the font, millimetres.
inline constexpr double kLabelLeading = 2.9;  ///< From line to line, millimetres.
inline constexpr double kCodeSize = 2.0;      ///< Of a code's font, millimetres.

/// Puts labels beside their points, or farther off with a leader, so that none lies on a symbol or
/// on another label. The label of an area goes inside it, or else beside it.
class LabelPlacer {
 public:
  /// @param frame  what every label stays in.
  explicit LabelPlacer(const PaperBox& frame) : room_(frame) {}

  /// Keeps all labels off a box.
  void Block(const PaperBox& box) { room_.Block(box); }
  /// Keeps labels off a symbol, and those of others a little farther.
  void BlockSymbol(PaperSpot at, double halfSize) { room_.BlockSymbol(at, halfSize); }
  /// Lets labels cross the line only where there is no better room.
  void Avoid(PaperSpot from, PaperSpot to) { room_.Avoid(from, to); }
  /// The place of a label, which blocks it for the next ones; none when there is no room.
  std::optional<PlacedLabel> Place(Label label);
  /// Adds a code to a label that was placed without one, if there is room.
  void AddCode(PlacedLabel& label, const std::string& code);

 private:
  /// The best box within so many rings around the anchor.
  std::optional<PlacedLabel> Beside(const Label& label, std::size_t rings) const;
  /// Close to its anchor, or to another place where it may stand.
  std::optional<PlacedLabel> Close(Label label) const;
  std::optional<PlacedLabel> Inside(const Label& label) const;
  void Take(const PlacedLabel& label);

  PaperRoom room_;
};

}  // namespace kavo_app
