// From metres of a scene to millimetres on the sheet.
#pragma once

#include "plan/paper.hpp"
#include "plan/view.hpp"

namespace kavo_app {

class Projection {
 public:
  /// Chooses the sheet, landscape or portrait, on which the window is larger, and the largest round
  /// scale at which it fits the frame there.
  /// @param window  what is to be shown; may be empty.
  explicit Projection(const Extent& window);

  PaperSpot On(Spot spot) const {
    return {middle_.fromLeft + (spot.right - centre_.right) * perMetre_,
            middle_.fromTop - (spot.up - centre_.up) * perMetre_};
  }
  const Sheet& Paper() const { return *sheet_; }
  /// True when a place lies in the frame.
  bool Shows(Spot spot) const { return sheet_->frame.Holds(On(spot)); }
  /// The part of the scene that the frame shows.
  Extent Shown() const;
  /// Metres that so many millimetres on the sheet show.
  double Metres(double millimetres) const { return millimetres / perMetre_; }
  double Millimetres(double metres) const { return metres * perMetre_; }
  /// The n of the scale 1 : n.
  double Denominator() const { return denominator_; }

 private:
  const Sheet* sheet_;
  double denominator_;
  double perMetre_;  // millimetres on the sheet
  Spot centre_;
  PaperSpot middle_;
};

/// True when a place is shown, and nothing there is left to an inset's own sheet.
bool IsLabelledOn(const View& view, const Projection& projection, Spot spot);

/// The size of the largest scene that fits a landscape sheet at a scale 1 : n, metres.
Spot LargestAt(double denominator);

/// How residuals and standard deviations are enlarged.
class Enlargement {
 public:
  explicit Enlargement(const Scene& scene);

  /// False when there is nothing large enough to be shown.
  bool Visible() const { return perMetre_ > 0.0; }
  /// The end of a vector that starts at a spot of the sheet.
  PaperSpot End(PaperSpot from, Spot size) const {
    return {from.fromLeft + size.right * perMetre_, from.fromTop - size.up * perMetre_};
  }
  /// Millimetres, as a measure of the vectors, of a round length that makes a good sample.
  double Sample() const;
  /// How long that is on the sheet.
  double SampleLength() const { return Sample() * perMetre_ / 1000.0; }

 private:
  double perMetre_ = 0.0;  // millimetres on the sheet
};

}  // namespace kavo_app
