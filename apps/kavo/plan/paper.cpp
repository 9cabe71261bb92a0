#include "plan/paper.hpp"

#include <array>
#include <cmath>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

constexpr std::string_view kDots = "…";
constexpr std::array kRoundSteps = {1.0, 2.0, 2.5, 5.0};
constexpr double kRounding = 1e-9;

// In the height of the font; after the widest of the usual fonts.
double CharacterWidth(char first) {
  constexpr std::string_view kNarrow = " .,:;'!|ilIjftr()-/[]";
  constexpr std::string_view kWide = "mwMW%@+=<>~#";
  if (static_cast<unsigned char>(first) >= 0x80 || kWide.find(first) != kWide.npos) {
    return 1.0;
  }
  if (kNarrow.find(first) != kNarrow.npos) {
    return 0.42;
  }
  return first >= 'A' && first <= 'Z' ? 0.8 : 0.64;
}

// The longest start of a text, in whole characters, that a width holds.
std::size_t FittingBytes(std::string_view text, double size, double width) {
  std::size_t end = 0;
  for (std::size_t i = 1; i <= text.size(); ++i) {
    if ((i == text.size() || !ContinuesSequence(text[i])) &&
        TextWidth(text.substr(0, i), size) <= width) {
      end = i;
    }
  }
  return end;
}

// Of a line that starts so far inside an edge and comes so much farther in, cuts off what lies
// outside; begin and end are parts of its length.
void CutOff(double inside, double gain, double& begin, double& end) {
  if (gain > 0.0) {
    begin = std::max(begin, -inside / gain);
  } else if (gain < 0.0) {
    end = std::min(end, -inside / gain);
  } else if (inside < 0.0) {
    end = -1.0;
  }
}

// What a closed boundary becomes when the area is cut along an edge, outside of which `inside` is
// negative.
template <class Inside>
std::vector<PaperSpot> CutAt(const std::vector<PaperSpot>& ring, Inside inside) {
  std::vector<PaperSpot> cut;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const auto& from = ring[i - 1];
    const auto& to = ring[i];
    const double before = inside(from);
    const double after = inside(to);
    if (before >= 0.0) {
      cut.push_back(from);
    }
    if ((before < 0.0) != (after < 0.0)) {
      const double part = before / (before - after);
      cut.push_back({from.fromLeft + part * (to.fromLeft - from.fromLeft),
                     from.fromTop + part * (to.fromTop - from.fromTop)});
    }
  }
  if (!cut.empty()) {
    cut.push_back(cut.front());
  }
  return cut;
}

}  // namespace

bool Cross(PaperSpot from1, PaperSpot to1, PaperSpot from2, PaperSpot to2) {
  const auto side = [](PaperSpot from, PaperSpot to, PaperSpot spot) {
    return (to.fromLeft - from.fromLeft) * (spot.fromTop - from.fromTop) >
           (to.fromTop - from.fromTop) * (spot.fromLeft - from.fromLeft);
  };
  return side(from1, to1, from2) != side(from1, to1, to2) &&
         side(from2, to2, from1) != side(from2, to2, to1);
}

std::optional<std::pair<PaperSpot, PaperSpot>> PartIn(const PaperBox& box, PaperSpot from,
                                                      PaperSpot to) {
  const double right = to.fromLeft - from.fromLeft;
  const double down = to.fromTop - from.fromTop;
  double begin = 0.0;
  double end = 1.0;
  CutOff(from.fromLeft - box.left, right, begin, end);
  CutOff(box.right - from.fromLeft, -right, begin, end);
  CutOff(from.fromTop - box.top, down, begin, end);
  CutOff(box.bottom - from.fromTop, -down, begin, end);
  if (begin > end) {
    return std::nullopt;
  }
  return std::pair{PaperSpot{from.fromLeft + begin * right, from.fromTop + begin * down},
                   PaperSpot{from.fromLeft + end * right, from.fromTop + end * down}};
}

std::vector<std::vector<PaperSpot>> PiecesIn(const PaperBox& box,
                                             const std::vector<PaperSpot>& line) {
  constexpr double kSame = 1e-3;  // millimetres
  std::vector<std::vector<PaperSpot>> pieces;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const auto part = PartIn(box, line[i - 1], line[i]);
    if (!part) {
      continue;
    }
    const auto& [from, to] = *part;
    if (pieces.empty() || std::hypot(pieces.back().back().fromLeft - from.fromLeft,
                                     pieces.back().back().fromTop - from.fromTop) > kSame) {
      pieces.push_back({from});
    }
    pieces.back().push_back(to);
  }
  return pieces;
}

std::vector<PaperSpot> AreaIn(const PaperBox& box, std::vector<PaperSpot> ring) {
  ring = CutAt(ring, [&box](PaperSpot spot) { return spot.fromLeft - box.left; });
  ring = CutAt(ring, [&box](PaperSpot spot) { return box.right - spot.fromLeft; });
  ring = CutAt(ring, [&box](PaperSpot spot) { return spot.fromTop - box.top; });
  return CutAt(ring, [&box](PaperSpot spot) { return box.bottom - spot.fromTop; });
}

bool Crosses(const std::vector<PaperSpot>& line, const PaperBox& box) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (PartIn(box, line[i - 1], line[i])) {
      return true;
    }
  }
  return false;
}

double TextWidth(std::string_view text, double size) {
  double width = 0.0;
  for (const char byte : text) {
    width += !ContinuesSequence(byte) ? CharacterWidth(byte) : 0.0;
  }
  return width * size;
}

std::vector<std::string> WrappedText(std::string_view text, double size, double width,
                                     std::size_t mostLines) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    if (TextWidth(text, size) <= width) {
      lines.emplace_back(text);
      break;
    }
    if (lines.size() + 1 == mostLines) {
      const auto end = FittingBytes(text, size, width - size);
      lines.push_back(std::string(text.substr(0, end)) + std::string(kDots));
      break;
    }
    const auto fitting = FittingBytes(text, size, width);
    const auto space = text.substr(0, fitting + 1).rfind(' ');
    const bool atSpace = space != text.npos && space > 0;
    lines.emplace_back(text.substr(0, atSpace ? space : std::max<std::size_t>(fitting, 1)));
    text.remove_prefix(lines.back().size() + (atSpace ? 1 : 0));
  }
  return lines;
}

double RoundUp(double number) {
  const double power = std::pow(10.0, std::floor(std::log10(number)));
  for (const double step : kRoundSteps) {
    if (step * power >= number * (1.0 - kRounding)) {
      return step * power;
    }
  }
  return 10.0 * power;
}

double RoundDown(double number) {
  const double power = std::pow(10.0, std::floor(std::log10(number)));
  double round = power;
  for (const double step : kRoundSteps) {
    round = step * power <= number * (1.0 + kRounding) ? step * power : round;
  }
  return round;
}

}  // namespace kavo_app
