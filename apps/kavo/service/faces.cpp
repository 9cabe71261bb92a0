#include "service/faces.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "base/geometry.hpp"
#include "base/limit.hpp"
#include "base/number_text.hpp"

namespace kavo_app {
namespace {

// Far above what any instrument in use is off, and far below the step to another target.
constexpr IntAngle kGrossAngle = ANGLE_FULL_CIRCLE / 360 / 2;  // half a degree
constexpr double kGrossDist = 0.1;                             // metres

IntAngle Half(IntAngle angle) { return static_cast<IntAngle>(std::lround(0.5 * angle)); }

// The direction on face 1, without what only a pair can tell.
IntAngle Direction(const Reading& reading) {
  return Wrapped(reading.ha) + (reading.face2 ? ANGLE_HALF_CIRCLE : 0);
}

IntAngle Zenith(const Reading& reading) {
  const IntAngle va = Wrapped(reading.va.value_or(ANGLE_QUARTER_CIRCLE));
  return IsFace2(va) ? ANGLE_FULL_CIRCLE - va : va;
}

// Mean of what was measured on one face or on both; 0 stands for not measured.
double MeanDist(double one, double other) {
  return one == 0.0 || other == 0.0 ? one + other : 0.5 * (one + other);
}

// Half of what the faces are apart. The sine takes the direction's error to the line of sight's.
void MeanFaces(Sight& sight) {
  if (sight.readings[0].face2) {
    std::swap(sight.readings[0], sight.readings[1]);
  }
  const Reading& face1 = sight.readings[0];
  const Reading& face2 = sight.readings[1];
  const IntAngle apart = Folded(Direction(face1) - Direction(face2));
  const IntAngle index = Half(Zenith(face1) - Zenith(face2));
  sight.ha = Wrapped(Direction(face1) - Half(apart));
  sight.va = Zenith(face1) - index;
  const double collimation = 0.5 * apart * std::sin(Radians(sight.va));
  sight.errors = FaceErrors{static_cast<IntAngle>(std::lround(collimation)),
                            face1.va ? std::optional(index) : std::nullopt};
  sight.slopeDist = MeanDist(face1.slopeDist, face2.slopeDist);
  sight.horizDist = MeanDist(face1.horizDist, face2.horizDist);
}

void TakeSingle(Sight& sight) {
  const Reading& reading = sight.readings.front();
  sight.face2 = reading.face2;
  sight.ha = Wrapped(Direction(reading));
  sight.va = Zenith(reading);
  sight.slopeDist = reading.slopeDist;
  sight.horizDist = reading.horizDist;
}

// Mean of the height differences that were measured with horizontal distances, if any was.
std::optional<double> MeasuredHeight(const std::vector<Reading>& readings) {
  double sum = 0.0;
  int count = 0;
  for (const auto& reading : readings) {
    sum += reading.heightDiff.value_or(0.0);
    count += reading.heightDiff ? 1 : 0;
  }
  return count > 0 ? std::optional(sum / count) : std::nullopt;
}

IntAngle Mean(const std::vector<IntAngle>& errors) {
  double sum = 0.0;
  for (const auto error : errors) {
    sum += error;
  }
  return static_cast<IntAngle>(std::lround(sum / static_cast<double>(errors.size())));
}

IntAngle Spread(const std::vector<IntAngle>& errors) {
  const auto [least, most] = std::ranges::minmax(errors);
  return most - least;
}

std::string NoteOnFaces(const Sight& sight, AngleUnit unit) {
  if (!sight.errors) {
    return sight.face2 ? "face 2" : "";
  }
  const auto collimation = fmt::format("both faces meaned: collimation {}",
                                       ErrorWithUnit(sight.errors->collimation, unit));
  return sight.errors->index
             ? fmt::format("{}, index {}", collimation, ErrorWithUnit(sight.errors->index, unit))
             : collimation;
}

std::optional<IntAngle> AngleIfGiven(const Inputs& in, std::string_view name) {
  return in.Has(name) ? std::optional(in.Angle(name)) : std::nullopt;
}

// What is wrong with a pointing. The zenith readings tell their faces; nothing else may say
// otherwise.
std::string PointingTrouble(const Inputs& in, const std::vector<Reading>& readings) {
  const Reading& first = readings.front();
  if (in.Has("face") && in.Number("face") != (first.face2 ? 2.0 : 1.0)) {
    return "va is a reading of the other face: leave face out, or correct one";
  }
  if (readings.size() == 1) {
    return {};
  }
  const Reading& second = readings.back();
  if (second.va && IsFace2(*second.va) != second.face2) {
    return "both readings are of one face";
  }
  return FaceTrouble(first, second);
}

bool FarApart(double one, double other) {
  return one != 0.0 && other != 0.0 && !WithinLimit(one - other, kGrossDist);
}

}  // namespace

bool IsFace2(IntAngle va) { return Wrapped(va) > ANGLE_HALF_CIRCLE; }

void ReduceReadings(Sight& sight) {
  if (sight.readings.size() > 1) {
    MeanFaces(sight);
  } else {
    TakeSingle(sight);
  }
  // A vertical sight with a horizontal distance tells no height.
  const bool vertical = sight.va % ANGLE_HALF_CIRCLE == 0;
  const bool zenith =
      sight.readings.front().va.has_value() && (sight.slopeDist != 0.0 || !vertical);
  const auto measured = MeasuredHeight(sight.readings);
  sight.hasHeight = zenith || measured;
  const double sine = std::sin(Radians(sight.va));
  const double cosine = std::cos(Radians(sight.va));
  if (sight.slopeDist != 0.0) {
    sight.horizDist = sight.slopeDist * sine;
    sight.heightDiff = sight.slopeDist * cosine;
  } else {
    sight.heightDiff =
        measured || !zenith ? measured.value_or(0.0) : sight.horizDist / sine * cosine;
    sight.slopeDist = std::hypot(sight.horizDist, sight.heightDiff);
  }
}

std::string FaceTrouble(const Reading& one, const Reading& other) {
  if (one.va.has_value() != other.va.has_value()) {
    return "only one face has a zenith reading: give both or none";
  }
  if (std::abs(Folded(Direction(one) - Direction(other))) > kGrossAngle ||
      std::abs(Zenith(one) - Zenith(other)) > kGrossAngle) {
    return "the two faces are more than half a degree apart: they are not one sight";
  }
  if ((one.slopeDist != 0.0 && other.horizDist != 0.0) ||
      (one.horizDist != 0.0 && other.slopeDist != 0.0)) {
    return "one face has a slope distance and the other a horizontal one: give one kind";
  }
  if (FarApart(one.slopeDist, other.slopeDist) || FarApart(one.horizDist, other.horizDist)) {
    return "the two distances are more than 0.1 m apart: they are not one sight";
  }
  return {};
}

Pointing PointingOf(const Inputs& in) {
  const auto va = AngleIfGiven(in, "va");
  const bool face2 = va ? IsFace2(*va) : in.Number("face", 1.0) == 2.0;
  Pointing out;
  Sight& sight = out.sight;
  sight.targetHeight = in.Number("th", 0.0);
  sight.readings.push_back(
      {in.Angle("ha"), va, face2, in.Number("slopeDist", 0.0), in.Number("horizDist", 0.0), {}});
  if (in.Has("ha2")) {
    sight.readings.push_back({in.Angle("ha2"), AngleIfGiven(in, "va2"), !face2, 0.0, 0.0, {}});
  }
  out.trouble = PointingTrouble(in, sight.readings);
  ReduceReadings(sight);
  out.note = NoteOnFaces(sight, in.Notation());
  return out;
}

FaceSummary SummaryOfFaces(const std::vector<Sight>& sights) {
  std::vector<IntAngle> collimations;
  std::vector<IntAngle> indices;
  for (const auto& sight : sights) {
    if (sight.errors) {
      collimations.push_back(sight.errors->collimation);
      if (sight.errors->index) {
        indices.push_back(*sight.errors->index);
      }
    }
  }
  FaceSummary summary;
  summary.pairs = collimations.size();
  if (!collimations.empty()) {
    summary.collimation = Mean(collimations);
    summary.collimationSpread = Spread(collimations);
  }
  if (!indices.empty()) {
    summary.index = Mean(indices);
    summary.indexSpread = Spread(indices);
  }
  return summary;
}

}  // namespace kavo_app
