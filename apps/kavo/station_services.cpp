#include "station_services.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry.hpp"

namespace kavo_app {
namespace {

constexpr Field kInstrumentHeight{"ih", Kind::kLength,
                                  "instrument height; 0 when absent, for the axis's elevation",
                                  Need::kOptional};
constexpr Field kStation{"station", Kind::kPoint, "the station"};
constexpr Field kOrient{"orient", Kind::kAzimuth, "azimuth of the circle's zero"};

// Added to a point's elevation, it leads to the station's ground mark.
double HeightTerm(const Sight& sight, const Inputs& in) {
  return sight.targetHeight - in.Number("ih", 0.0);
}

// kavo reduces face-2 readings itself: the adjustment takes face 1 alone.
std::string FaceNote(const std::vector<Sight>& sights) {
  std::string names;
  for (const auto& sight : sights) {
    if (sight.face2) {
      names += (names.empty() ? "" : ", ") + sight.name;
    }
  }
  return names.empty() ? "" : "readings of face 2 were reduced to face 1: " + names;
}

std::string Joined(const std::string& first, const std::string& second) {
  return first + (first.empty() || second.empty() ? "" : "; ") + second;
}

// --- benchmark

constexpr std::array kBenchmarkIn = {
    Field{"elev", Kind::kLength, "elevation of the benchmark"},
    Field{"vertDiff", Kind::kLength, "height difference from the instrument to the target"},
    kInstrumentHeight,
    Field{"th", Kind::kLength, "target height; 0 when absent", Need::kOptional},
};
constexpr std::array kBenchmarkOut = {
    Field{"elev", Kind::kLength, "elevation of the station"},
};
constexpr std::array kBenchmarkStatus = {kComputed};

Answer Benchmark(const Inputs& in) {
  return {STATUS_OK,
          {KavoSTNSeaLevelCalcByBM(in.Number("elev"), in.Number("th", 0.0) - in.Number("ih", 0.0),
                                   in.Number("vertDiff"))}};
}

// --- three-point resection

constexpr StatusRow kNotThree{ERR_REFUSED, false, "this takes exactly three sights"};
constexpr StatusRow kNotTwo{ERR_REFUSED, false, "this takes exactly two sights"};

constexpr std::array kResect3In = {
    Field{"sights", Kind::kSights, "three sights to known points"},
    kInstrumentHeight,
};
constexpr std::array kResect3Out = {kStation, kOrient};
constexpr std::array kResect3Status = {
    kComputed,
    kNotThree,
    StatusRow{ERR_SAME_DIRECTION, false,
              "two sights have one direction: sight points in three directions"},
    StatusRow{ERR_INDETERMINATE, false,
              "the station lies on the circle through the points: choose other points"},
    kPointInvalid,
};

StnAngleObs AngleObs(const Sight& sight, const Inputs& in) {
  return {sight.point, sight.ha, sight.va, HeightTerm(sight, in)};
}

Answer Resect3(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  if (sights.size() != 3) {
    return {ERR_REFUSED, {{}, {}}};
  }
  const auto obs0 = AngleObs(sights[0], in);
  const auto obs1 = AngleObs(sights[1], in);
  const auto obs2 = AngleObs(sights[2], in);
  StnSetupResult out{};
  const auto status = KavoSTN3PtResect(&obs0, &obs1, &obs2, &out);
  return {status, {OrNothing(out.station), Wrapped(out.orient)}, FaceNote(sights)};
}

// --- two-point resection

constexpr std::array kResect2In = {
    Field{"sights", Kind::kSights, "two sights to known points, one or both with a distance"},
    kInstrumentHeight,
};
constexpr std::array kResect2Out = {
    kStation,
    kOrient,
    Field{"distCheck", Kind::kLength, "known less measured distance between the points"},
    Field{"distResid1", Kind::kLength, "measured less computed distance to the first point"},
    Field{"distResid2", Kind::kLength, "the same to the second point"},
    Field{"elevDiff", Kind::kLength, "elevation from the first sight less that from the second"},
};
constexpr std::array kResect2Status = {
    kComputed,
    kNotTwo,
    StatusRow{ERR_NO_DIRECTION, false, "the points, or the sights to them, coincide"},
    StatusRow{ERR_NO_DISTANCE, false, "no sight has a distance: measure one or both"},
    StatusRow{ERR_INDETERMINATE, false,
              "the one distance is longer than that between the points: measure the other too"},
    kPointInvalid,
};

StnDistObs DistObs(const Sight& sight, const Inputs& in) {
  StnDistObs obs{};
  obs.point = sight.point;
  obs.local.north = sight.horizDist * std::cos(Radians(sight.ha));
  obs.local.east = sight.horizDist * std::sin(Radians(sight.ha));
  obs.ha = sight.ha;
  obs.va = sight.va;
  obs.hd = sight.horizDist;
  obs.vd = sight.heightDiff;
  obs.heightTerm = HeightTerm(sight, in);
  return obs;
}

// A check that could not be formed is no number.
Value CheckWhere(bool formed, double check) { return formed ? Value{check} : Value{}; }

Answer Resect2(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  if (sights.size() != 2) {
    return {ERR_REFUSED, {{}, {}, {}, {}, {}, {}}};
  }
  const auto obsA = DistObs(sights[0], in);
  const auto obsB = DistObs(sights[1], in);
  StnSetupResult out{};
  const auto status = KavoSTN2PtResect(&obsA, &obsB, &out);
  const bool distA = obsA.hd != 0.0;
  const bool distB = obsB.hd != 0.0;
  const bool elevs = distA && distB && HasElev(obsA.point) && HasElev(obsB.point);
  return {status,
          {OrNothing(out.station), Wrapped(out.orient), CheckWhere(distA && distB, out.distCheck),
           CheckWhere(distA, out.distResid1), CheckWhere(distB, out.distResid2),
           CheckWhere(elevs, out.elevDiff)},
          FaceNote(sights)};
}

// --- multi-point resection

constexpr std::array kResectIn = {
    Field{"sights", Kind::kSights, "sights to known points, any number, with or without distances"},
    kInstrumentHeight,
};
constexpr Field kSdNorth{"sdNorth", Kind::kLength,
                         "standard deviation of the north; none without redundancy"};
constexpr Field kSdEast{"sdEast", Kind::kLength,
                        "standard deviation of the east; none without redundancy"};
constexpr std::array kResectOut = {
    kStation,
    kOrient,
    kSdNorth,
    kSdEast,
    Field{"elevSpread", Kind::kLength, "largest less smallest elevation from the sights"},
    Field{"residuals", Kind::kResiduals, "what each sight is off: adjusted less measured"},
};
constexpr StatusRow kNotDetermined{
    ERR_REFUSED, false,
    "the sights do not determine the station: too few, in one line, or with a wrong reading"};
constexpr StatusRow kNoMemory{ERR_NO_MEMORY, false, "there is not enough memory for the sights"};
constexpr StatusRow kNoConvergence{ERR_INDETERMINATE, false,
                                   "the adjustment does not settle: check the points and readings"};
constexpr std::array kResectStatus = {
    kComputed, kNotDetermined, kNoMemory, kNoConvergence, kPointInvalid,
};
constexpr int kUnknowns = 3;

MultiResectInput MultiInput(const Sight& sight, const Inputs& in) {
  return {sight.point,          sight.ha,        sight.va,
          sight.slopeDist,      sight.horizDist, sight.heightDiff,
          HeightTerm(sight, in)};
}

bool AllHavePositions(const std::vector<Sight>& sights) {
  return std::ranges::all_of(
      sights, [](const Sight& sight) { return (sight.point.flags & COORD_HAS_NE) != 0; });
}

int CountObservations(const std::vector<Sight>& sights) {
  int count = 0;
  for (const auto& sight : sights) {
    count += sight.slopeDist != 0.0 ? 2 : 1;
  }
  return count;
}

std::string RedundancyNote(int observations) {
  const auto counted = fmt::format("{} observations, {} unknowns", observations, kUnknowns);
  return observations > kUnknowns
             ? counted
             : counted +
                   ": no redundancy, so nothing checks the station and standard deviations "
                   "mean nothing";
}

// The export withholds the distance's residual where the point has no elevation, although the
// distance counts; it is the same difference.
std::optional<double> DistResidual(const Sight& sight, const CoordPt& station,
                                   const MultiResectResidual& residual) {
  if (sight.slopeDist == 0.0) {
    return std::nullopt;
  }
  if (HasElev(sight.point)) {
    return residual.distResid;
  }
  return std::hypot(sight.point.north - station.north, sight.point.east - station.east) -
         sight.horizDist;
}

std::vector<SightResidual> ResidualsOf(const std::vector<Sight>& sights, const CoordPt& station,
                                       const std::vector<MultiResectResidual>& residuals) {
  std::vector<SightResidual> out;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    const bool withElev = sights[i].slopeDist != 0.0 && HasElev(sights[i].point);
    out.push_back({sights[i].name, residuals[i].hzResid,
                   DistResidual(sights[i], station, residuals[i]),
                   withElev ? std::optional(station.elev + residuals[i].elevResid) : std::nullopt});
  }
  return out;
}

Answer Resect(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  if (!AllHavePositions(sights)) {
    return {ERR_POINT_INVALID, {{}, {}, {}, {}, {}, {}}};
  }
  std::vector<MultiResectInput> inputs;
  inputs.reserve(sights.size());
  for (const auto& sight : sights) {
    inputs.push_back(MultiInput(sight, in));
  }
  std::vector<MultiResectResidual> residuals(sights.size());
  MultiResectResult out{};
  const auto status = KavoSTNMultiResect(static_cast<std::int16_t>(inputs.size()), inputs.data(),
                                         &out, residuals.data());
  const int observations = CountObservations(sights);
  const bool redundant = observations > kUnknowns;
  return {status,
          {OrNothing(out.station), Wrapped(out.orient), CheckWhere(redundant, out.sdNorth),
           CheckWhere(redundant, out.sdEast), CheckWhere(HasElev(out.station), out.elevSpread),
           ResidualsOf(sights, out.station, residuals)},
          Joined(RedundancyNote(observations), FaceNote(sights))};
}

// --- known line

constexpr std::array kKnownLineIn = {
    Field{"sights", Kind::kSights,
          "two sights with distances, the first to the known point; the second may lack its point "
          "when the line's azimuth is given"},
    Field{"lineAzimuth", Kind::kAzimuth,
          "azimuth from the first point to the second; from their coordinates when absent",
          Need::kOptional},
    kInstrumentHeight,
};
constexpr std::array kKnownLineOut = {
    kStation,
    kOrient,
    Field{"distMisclosure", Kind::kLength,
          "measured less known distance between the points; none with a given azimuth"},
    Field{"elevMisclosure", Kind::kLength,
          "measured less known height difference of the points; none likewise"},
};
constexpr std::array kKnownLineStatus = {
    kComputed,
    kNotDetermined,
    kNoMemory,
    kNoConvergence,
    StatusRow{ERR_NO_DIRECTION, false, "the two points, or the sights to them, coincide"},
    kPointInvalid,
};

Answer KnownLine(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  if (sights.size() != 2) {
    return {ERR_REFUSED, {{}, {}, {}, {}}};
  }
  const bool fromPoints = !in.Has("lineAzimuth");
  if ((sights[0].point.flags & COORD_HAS_NE) == 0) {
    return {ERR_POINT_INVALID, {{}, {}, {}, {}}};
  }
  const auto sight1 = MultiInput(sights[0], in);
  const auto sight2 = MultiInput(sights[1], in);
  MultiResectResidual residuals[2]{};
  MultiResectResult out{};
  const auto status =
      KavoSTNKnownLine(&sight1, &sight2, fromPoints ? AZIMUTH_FROM_POINTS : in.Angle("lineAzimuth"),
                       &out, residuals);
  if (!HasElev(sight1.point)) {
    out.station.flags = COORD_HAS_NE;
  }
  const bool elevs = HasElev(sight1.point) && HasElev(sight2.point);
  return {
      status,
      {OrNothing(out.station), Wrapped(out.orient), CheckWhere(fromPoints, residuals[0].distResid),
       CheckWhere(fromPoints && elevs, out.elevSpread)},
      FaceNote(sights)};
}

constexpr std::array kServices = {
    Service{"benchmark", "KavoSTNSeaLevelCalcByBM", "station elevation from a benchmark",
            kBenchmarkIn, kBenchmarkOut, kBenchmarkStatus, Benchmark},
    Service{"resect-3", "KavoSTN3PtResect", "station from directions to three points", kResect3In,
            kResect3Out, kResect3Status, Resect3},
    Service{"resect-2", "KavoSTN2PtResect", "station from two points and a distance or two",
            kResect2In, kResect2Out, kResect2Status, Resect2},
    Service{"resect", "KavoSTNMultiResect", "station by least squares from any number of points",
            kResectIn, kResectOut, kResectStatus, Resect},
    Service{"known-line", "KavoSTNKnownLine", "station from a known point and a known line",
            kKnownLineIn, kKnownLineOut, kKnownLineStatus, KnownLine},
};

}  // namespace

std::span<const Service> StationServices() { return kServices; }

}  // namespace kavo_app
