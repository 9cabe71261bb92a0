// How far an output may stray from its expectation on a machine with another mathematics library.
//
// An output is one of two kinds. An exact one comes from integers, + - * / and square roots alone:
// the same bits on every machine. A library one goes through a sine, cosine, tangent, arctangent or
// hypotenuse, which no two mathematics libraries round alike: the same bits on the reference
// machine, x86-64 with the GNU C library, and close to them elsewhere.
#pragma once

#include <cstdint>
#include <string_view>

#include "kavostdlib.h"

namespace kavo_test {

#if defined(__x86_64__) && defined(__GLIBC__)
inline constexpr bool kIsReferenceMachine = true;
#else
inline constexpr bool kIsReferenceMachine = false;
#endif

/// What was seen of the outputs of a run.
struct Deviations {
  int exactOutputs = 0;
  int libraryOutputs = 0;
  int otherBits = 0;      ///< library outputs that differ from their expectation
  int beyondFewUlps = 0;  ///< those of them that differ by more than 2 units in the last place
  int turned = 0;         ///< those that differ by much more: an angle was rounded the other way
  double worstUlps = 0.0;
  double worstTurn = 0.0;  ///< in units of angle, at the end of the row's largest length
  int worstUnits = 0;      ///< of angles among the outputs
  int otherRefusals = 0;   ///< adjustments that were refused with the other code
};

/// The outputs of an export that are library ones.
struct LibraryOutputs {
  std::string_view name;
  std::string_view outputs;  ///< fields by their name, other parameters by their number
  enum Condition : std::uint8_t {
    kAlways,
    kByDirection,   ///< exact when all lines are given by two points
    kThroughAngle,  ///< an angle is rounded to a unit on the way to its numbers
  } condition = kAlways;
  bool isAdjusted = false;  ///< which of the adjustment's two refusals it returns is not exact
};

class Yardstick {
 public:
  /// A row begins: numbers of the rows before it do not count.
  void BeginRow() { largestInput_ = largestOutput_ = 0.0; }

  void BeginCall(std::string_view name);

  /// A line among the inputs is given by a point and a direction.
  void NoteDirection() { byDirection_ = true; }

  /// A number that the row gives or expects. Deviations are measured in the last place of the
  /// largest one: where kilometres cancel, a result of millimetres has the last bits of the
  /// kilometres. Where results are larger than all that is given, as where a sight grazes a plane,
  /// deviations grow by as much more.
  void NoteInput(double value);
  void NoteOutput(double value);

  /// Whether `got` will do for `want` as the output of this name, such as "parameter 5.north";
  /// `same` says that it is the same to the bit.
  bool Accepts(std::string_view what, double want, double got, bool same);
  bool Accepts(std::string_view what, IntAngle want, IntAngle got, bool same);
  template <class T>
  bool Accepts(std::string_view /*what*/, T /*want*/, T /*got*/, bool same) {
    ++seen_.exactOutputs;
    return same;
  }

  [[nodiscard]] const Deviations& Seen() const { return seen_; }

  /// At most one library output in a thousand may differ by more than 2 units in the last place.
  [[nodiscard]] bool StraysSeldom() const {
    return (seen_.beyondFewUlps + seen_.turned) * 1000 <= seen_.libraryOutputs;
  }

 private:
  [[nodiscard]] bool IsLibraryOutput(std::string_view what) const;
  bool Count(bool isLibraryOutput, bool same);

  Deviations seen_;
  const LibraryOutputs* outputs_ = nullptr;
  bool byDirection_ = false;
  double largestInput_ = 0.0;  // of the row so far
  double largestOutput_ = 0.0;
};

}  // namespace kavo_test
