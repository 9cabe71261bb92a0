// The sheet of paper: places in millimetres from its upper left corner.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavo_app {

struct PaperSpot {
  double fromLeft;
  double fromTop;
};

struct PaperBox {
  double left;
  double top;
  double right;
  double bottom;

  bool Overlaps(const PaperBox& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  bool Holds(PaperSpot spot) const {
    return left <= spot.fromLeft && spot.fromLeft <= right && top <= spot.fromTop &&
           spot.fromTop <= bottom;
  }
  bool Holds(const PaperBox& other) const {
    return left <= other.left && other.right <= right && top <= other.top && other.bottom <= bottom;
  }
  /// The place in the box that is nearest to a spot.
  PaperSpot Nearest(PaperSpot spot) const {
    return {std::clamp(spot.fromLeft, left, right), std::clamp(spot.fromTop, top, bottom)};
  }
};

/// The box of a given half size around a spot.
constexpr PaperBox Around(PaperSpot spot, double half) {
  return {spot.fromLeft - half, spot.fromTop - half, spot.fromLeft + half, spot.fromTop + half};
}

/// A sheet of A4, and what stands where on it; all millimetres.
struct Sheet {
  double width;
  double height;
  PaperBox frame;          ///< Where the drawing goes.
  double blockTop;         ///< Title and scale stand below here;
  double titleWidth;       ///< the title takes so much
  double titleBottom;      ///< and ends here.
  PaperSpot legend;        ///< The legend stands in columns from here
  std::size_t legendRows;  ///< of so many rows.
};

inline constexpr Sheet kLandscape{
    297.0, 210.0, {17.0, 10.0, 287.0, 170.0}, 180.0, 108.0, 207.0, {130.0, 180.5}, 7};
inline constexpr Sheet kPortrait{
    210.0, 297.0, {17.0, 10.0, 200.0, 241.0}, 251.0, 125.0, 272.0, {17.0, 275.5}, 5};

/// True when two straight lines cross.
bool Cross(PaperSpot from1, PaperSpot to1, PaperSpot from2, PaperSpot to2);

/// The part of a straight line that lies in a box, if any does.
std::optional<std::pair<PaperSpot, PaperSpot>> PartIn(const PaperBox& box, PaperSpot from,
                                                      PaperSpot to);

/// The pieces of a line through the spots that lie in a box.
std::vector<std::vector<PaperSpot>> PiecesIn(const PaperBox& box,
                                             const std::vector<PaperSpot>& line);

/// The part of an area that lies in a box, as a closed boundary; empty when there is none.
/// @param ring  its boundary, closed.
std::vector<PaperSpot> AreaIn(const PaperBox& box, std::vector<PaperSpot> ring);

/// True when a line through the spots runs through a box, or lies in it.
bool Crosses(const std::vector<PaperSpot>& line, const PaperBox& box);

/// Between a text and the code behind it, millimetres.
inline constexpr double kCodeGap = 0.8;

/// The width that a text takes at most, whatever sans-serif font shows it.
/// @param size  of the font, millimetres.
double TextWidth(std::string_view text, double size);

/// The text in lines of at most a width; what does not fit in the last one is cut off with dots.
std::vector<std::string> WrappedText(std::string_view text, double size, double width,
                                     std::size_t mostLines);

/// Of the round numbers, 1, 2, 2.5 and 5 times a power of ten, the smallest that is not below a
/// number above 0, and the largest that is not above it.
double RoundUp(double number);
double RoundDown(double number);

}  // namespace kavo_app
