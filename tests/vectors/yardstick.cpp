#include "yardstick.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace kavo_test {
namespace {

// Every export has a row or is exact throughout. Returned values are exact but for one choice,
// below: any other status that changes from machine to machine is a fault.
constexpr LibraryOutputs kLibraryOutputs[] = {
    {"KavoCogoCoordToAngDist", "azimuth zenith"},
    {"KavoCogoAngDistToCoord", "north east"},
    {"KavoCogoCalcCrossLine", "north east", LibraryOutputs::kByDirection},
    {"KavoCogoCalcCrossLineCircle", "north east", LibraryOutputs::kByDirection},
    {"KavoCogoCalcPtLine", "north east", LibraryOutputs::kByDirection},
    {"KavoCogoOffsetToCoord", "north east elev"},
    {"KavoCogoCalcTransLine", "north east elev direction", LibraryOutputs::kThroughAngle},
    {"KavoREMCalc", "north elev"},
    {"KavoRDMCalcByCoord", "azimuth"},
    {"KavoCalcOfsCircle", "11"},
    {"KavoREFCalc", "along offset north east elev dElev"},
    {"KavoREFGetArcParams", "endDir radius arcLength centralAngle", LibraryOutputs::kThroughAngle},
    {"KavoREFCalcArc", "along offset dElev", LibraryOutputs::kThroughAngle},
    {"KavoREFCalc2PtPlane", "north east elev 6 7"},
    {"KavoREFCalc3PtPlane", "north east elev 6 7"},
    {"KavoSTN3PtResect", "north east elev orient"},
    {"KavoSTN2PtResect", "north east orient distCheck distResid1 distResid2"},
    {"KavoSTNMultiResect",
     "north east elev orient sdNorth sdEast elevSpread hzResid distResid elevResid",
     LibraryOutputs::kAlways, true},
    {"KavoSTNKnownLine", "north east orient sdNorth sdEast elevSpread hzResid distResid elevResid",
     LibraryOutputs::kThroughAngle, true},
};

// What a library output may differ by, off the reference machine. Hardly any differs by more than
// kFewUlps: those where a row's numbers do not show how much geometry adds on the way, as in a weak
// network or with a remote point 2" from the zenith.
constexpr double kMostUlps = 32.0;
constexpr double kFewUlps = 2.0;
constexpr int kMostUnits = 1;

constexpr double kRadPerUnit = 3.14159265358979 / ANGLE_HALF_CIRCLE;

double Ulp(double value) {
  return std::nextafter(value, std::numeric_limits<double>::infinity()) - value;
}

// The larger magnitude of the two; one that stands for no number is none.
double Larger(double largest, double value) {
  return std::isfinite(value) && value != VALUE_INVALID ? std::max(largest, std::fabs(value))
                                                        : largest;
}

// Sights that contradict one another may drive the adjustment wherever the last bits decide: that
// it is refused is certain, which of its two refusals it gets is not.
bool AreRefusalsOfAnAdjustment(std::string_view what, IntAngle one, IntAngle other) {
  const auto isRefusal = [](IntAngle s) { return s == ERR_REFUSED || s == ERR_INDETERMINATE; };
  return (what == "status" || what == "result") && isRefusal(one) && isRefusal(other);
}

bool HasWord(std::string_view words, std::string_view word) {
  while (!words.empty()) {
    const std::string_view first = words.substr(0, words.find(' '));
    if (first == word) {
      return true;
    }
    words.remove_prefix(std::min(first.size() + 1, words.size()));
  }
  return false;
}

}  // namespace

void Yardstick::BeginCall(std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(kLibraryOutputs), std::end(kLibraryOutputs),
                   [&](const LibraryOutputs& outputs) { return outputs.name == name; });
  outputs_ = found != std::end(kLibraryOutputs) ? found : nullptr;
  byDirection_ = false;
}

void Yardstick::NoteInput(double value) { largestInput_ = Larger(largestInput_, value); }

void Yardstick::NoteOutput(double value) { largestOutput_ = Larger(largestOutput_, value); }

bool Yardstick::IsLibraryOutput(std::string_view what) const {
  return outputs_ != nullptr &&
         (outputs_->condition != LibraryOutputs::kByDirection || byDirection_) &&
         HasWord(outputs_->outputs, what.substr(what.find_last_of(". ") + 1));
}

// True when the output must be the same to the bit, or is.
bool Yardstick::Count(bool isLibraryOutput, bool same) {
  ++(isLibraryOutput ? seen_.libraryOutputs : seen_.exactOutputs);
  seen_.otherBits += isLibraryOutput && !same ? 1 : 0;
  return same || !isLibraryOutput || kIsReferenceMachine;
}

bool Yardstick::Accepts(std::string_view what, double want, double got, bool same) {
  NoteOutput(want);
  if (Count(IsLibraryOutput(what), same)) {
    return same;
  }
  const double deviation = std::fabs(got - want);
  if (!std::isfinite(deviation) || want == VALUE_INVALID || got == VALUE_INVALID) {
    return false;
  }
  const double largest = std::max(largestInput_, largestOutput_);
  const double ulps = deviation / Ulp(largest) * std::min(1.0, largestInput_ / largestOutput_);
  if (ulps > kMostUlps && outputs_->condition == LibraryOutputs::kThroughAngle) {
    const double turn = deviation / (largest * kRadPerUnit);
    ++seen_.turned;
    seen_.worstTurn = std::max(seen_.worstTurn, turn);
    return turn <= kMostUnits;
  }
  seen_.beyondFewUlps += ulps > kFewUlps ? 1 : 0;
  seen_.worstUlps = std::max(seen_.worstUlps, ulps);
  return ulps <= kMostUlps;
}

bool Yardstick::Accepts(std::string_view what, IntAngle want, IntAngle got, bool same) {
  if (!same && !kIsReferenceMachine && outputs_ != nullptr && outputs_->isAdjusted &&
      AreRefusalsOfAnAdjustment(what, want, got)) {
    ++seen_.otherRefusals;
    return true;
  }
  if (Count(IsLibraryOutput(what), same)) {
    return same;
  }
  if (want == ANGLE_INVALID || got == ANGLE_INVALID) {
    return false;
  }
  const auto units = static_cast<int>(std::llabs(std::int64_t{got} - want));
  seen_.worstUnits = std::max(seen_.worstUnits, units);
  return units <= kMostUnits;
}

}  // namespace kavo_test
