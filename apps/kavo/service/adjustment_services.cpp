// The services that set up a station by least squares.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/geometry.hpp"
#include "base/plain_text.hpp"
#include "service/doubts.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

// --- multi-point resection

constexpr std::array kResectIn = {
    Field{"sights", Kind::kSights, "sights to known points, any number, with or without distances"},
    kAxisHeight,
};
constexpr Field kSdNorth{"sdNorth", Kind::kLength,
                         "standard deviation of the north; none without redundancy"};
constexpr Field kSdEast{"sdEast", Kind::kLength,
                        "standard deviation of the east; none without redundancy"};
constexpr std::array kResectOut = {
    kSetUpStation,
    kSetUpOrient,
    kSdNorth,
    kSdEast,
    Field{"elevSpread", Kind::kLength, "largest less smallest elevation from the sights"},
    Field{"residuals", Kind::kResiduals, "what each sight is off: adjusted less measured"},
};
constexpr StatusRow kNotDetermined{
    KAVO_STATUS(ERR_REFUSED), false,
    "the sights do not determine the station: too few, in one line, or with a wrong reading"};
constexpr StatusRow kNoMemory{KAVO_STATUS(ERR_NO_MEMORY), false,
                              "there is not enough memory for the sights"};
constexpr StatusRow kNoConvergence{KAVO_STATUS(ERR_INDETERMINATE), false,
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
  return std::ranges::all_of(sights, [](const Sight& sight) { return HasPosition(sight.point); });
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
          {OrNothing(out.station), AdjustedOrient(out.orient), CheckWhere(redundant, out.sdNorth),
           CheckWhere(redundant, out.sdEast), CheckWhere(HasElev(out.station), out.elevSpread),
           ResidualsOf(sights, out.station, residuals)},
          Joined(RedundancyNote(observations), FaceNote(sights))};
}

// With redundancy the residuals and standard deviations tell what is wrong; without it nothing
// does.
std::string ResectDoubt(const Inputs& in, const Outputs& out) {
  const bool redundant = CountObservations(in.Sights("sights")) > kUnknowns;
  return Joined(DoubtOfResiduals(in, out), redundant ? "" : DoubtOfPlace(Resect, in, out));
}

// --- known line

constexpr std::array kKnownLineIn = {
    Field{"sights", Kind::kSights,
          "sights with distances, the first to the known point; the second may lack its point "
          "when the line's azimuth is given",
          Need::kRequired, kTwoSights},
    Field{"lineAzimuth", Kind::kAzimuth,
          "azimuth from the first point to the second; from their coordinates when absent",
          Need::kOptional},
    kAxisHeight,
};
constexpr std::array kKnownLineOut = {
    kSetUpStation,
    kSetUpOrient,
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
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the two points, or the sights to them, coincide"},
    kPointInvalid,
};

Answer KnownLine(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  const bool fromPoints = !in.Has("lineAzimuth");
  if (!HasPosition(sights[0].point)) {
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
  // The export compares the targets' heights with the points'.
  const double elevMisclosure = out.elevSpread - (sights[1].targetHeight - sights[0].targetHeight);
  return {status,
          {OrNothing(out.station), AdjustedOrient(out.orient),
           CheckWhere(fromPoints, residuals[0].distResid),
           CheckWhere(fromPoints && elevs, elevMisclosure)},
          FaceNote(sights)};
}

constexpr std::array kServices = {
    Service{"resect", "KavoSTNMultiResect", "station by least squares from any number of points",
            kResectIn, kResectOut, kResectStatus, Resect, kHeedsCorrections | kTakenAsMeasured,
            kKeepsDigits, kNoRules, ResectDoubt},
    Service{"known-line", "KavoSTNKnownLine", "station from a known point and a known line",
            kKnownLineIn, kKnownLineOut, kKnownLineStatus, KnownLine, kTakenAsMeasured,
            kKeepsDigits, kNoRules, DoubtOfKnownLine},
};

}  // namespace

std::span<const Service> AdjustmentServices() { return kServices; }

}  // namespace kavo_app
