// The services that set up a station in closed form.
#include <array>
#include <cmath>

#include "base/geometry.hpp"
#include "service/doubts.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

// --- benchmark

constexpr std::array kBenchmarkIn = {
    Field{"elev", Kind::kLength, "elevation of the benchmark"},
    Field{"vertDiff", Kind::kLength, "height difference from the instrument to the target"},
    kAxisHeight,
    kTargetHeight,
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

constexpr Limit kThree{[](double count) { return count == 3.0; }, "exactly three sights"};
constexpr std::array kResect3In = {
    Field{"sights", Kind::kSights, "sights to known points", Need::kRequired, kThree},
    kAxisHeight,
};
constexpr std::array kResect3Out = {kSetUpStation, kSetUpOrient};
constexpr std::array kResect3Status = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_SAME_DIRECTION), false,
              "two sights have one direction: sight points in three directions"},
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false,
              "the station lies on the circle through the points: choose other points"},
    kPointInvalid,
};

StnAngleObs AngleObs(const Sight& sight, const Inputs& in) {
  return {sight.point, sight.ha, sight.va, HeightTerm(sight, in)};
}

Answer Resect3(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  const auto obs0 = AngleObs(sights[0], in);
  const auto obs1 = AngleObs(sights[1], in);
  const auto obs2 = AngleObs(sights[2], in);
  StnSetupResult out{};
  const auto status = KavoSTN3PtResect(&obs0, &obs1, &obs2, &out);
  return {status, {OrNothing(out.station), Wrapped(out.orient)}, FaceNote(sights)};
}

std::string Resect3Doubt(const Inputs& in, const Outputs& out) {
  return DoubtOfPlace(Resect3, in, out);
}

// --- two-point resection

constexpr std::array kResect2In = {
    Field{"sights", Kind::kSights, "sights to known points, one or both with a distance",
          Need::kRequired, kTwoSights},
    kAxisHeight,
};
constexpr std::array kResect2Out = {
    kSetUpStation,
    kSetUpOrient,
    Field{"distCheck", Kind::kLength, "known less measured distance between the points"},
    Field{"distResid1", Kind::kLength, "measured less computed distance to the first point"},
    Field{"distResid2", Kind::kLength, "the same to the second point"},
    Field{"elevDiff", Kind::kLength, "elevation from the first sight less that from the second"},
};
constexpr std::array kResect2Status = {
    kComputed,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false, "the points, or the sights to them, coincide"},
    StatusRow{KAVO_STATUS(ERR_NO_DISTANCE), false, "no sight has a distance: measure one or both"},
    StatusRow{KAVO_STATUS(ERR_INDETERMINATE), false,
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

Answer Resect2(const Inputs& in) {
  const auto& sights = in.Sights("sights");
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

constexpr std::array kServices = {
    Service{"benchmark", "KavoSTNSeaLevelCalcByBM", "station elevation from a benchmark",
            kBenchmarkIn, kBenchmarkOut, kBenchmarkStatus, Benchmark, kTakenAsMeasured},
    Service{"resect-3", "KavoSTN3PtResect", "station from directions to three points", kResect3In,
            kResect3Out, kResect3Status, Resect3, kHeedsCorrections, kKeepsDigits, kNoRules,
            Resect3Doubt},
    Service{"resect-2", "KavoSTN2PtResect", "station from two points and a distance or two",
            kResect2In, kResect2Out, kResect2Status, Resect2, kTakenAsMeasured, kKeepsDigits,
            kNoRules, DoubtOfResect2},
};

}  // namespace

std::span<const Service> StationServices() { return kServices; }

}  // namespace kavo_app
