// The sheet of paper: places in millimetres from its upper left corner.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
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

/// A4, lying.
inline constexpr double kSheetWidth = 297.0;
inline constexpr double kSheetHeight = 210.0;
/// Where the drawing goes; below it stand title, legend and scale.
inline constexpr PaperBox kFrame{17.0, 10.0, 287.0, 170.0};

/// The width that a text takes at most, whatever sans-serif font shows it.
/// @param size  of the font, millimetres.
double TextWidth(std::string_view text, double size);

/// The text in lines of at most a width; what does not fit in the last one is cut off with dots.
std::vector<std::string> WrappedText(std::string_view text, double size, double width,
                                     std::size_t mostLines);

/// The smallest of 1, 2, 2.5 and 5 times a power of ten that is not below a number above 0.
double RoundUp(double number);

}  // namespace kavo_app
