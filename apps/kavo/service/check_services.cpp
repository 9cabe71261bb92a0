// The checks that a careful surveyor makes. A check that is not passed still shows its differences.
#include <array>
#include <cmath>
#include <cstdlib>

#include "base/geometry.hpp"
#include "base/limit.hpp"
#include "base/plain_text.hpp"
#include "service/doubts.hpp"
#include "service/faces.hpp"
#include "service/service_families.hpp"
#include "service/service_rows.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

// kavo's own status beside those of the exports.
constexpr std::int32_t kOutOfTolerance = 1;
constexpr StatusRow kWithin{KAVO_STATUS(STATUS_OK), true, "within tolerance"};
constexpr StatusRow kOutside{kOutOfTolerance, "OUT_OF_TOLERANCE", true, "OUT OF TOLERANCE", false};

// Collects what is out of tolerance; a difference that cannot be formed is not judged.
class Judge {
 public:
  void TakeLength(std::string_view name, const Value& difference, double tolerance) {
    const auto* number = std::get_if<double>(&difference);
    if (number != nullptr && !WithinLimit(*number, tolerance)) {
      Blame(name);
    }
  }
  void TakeAngle(std::string_view name, IntAngle difference, IntAngle tolerance) {
    if (std::abs(difference) > tolerance) {
      Blame(name);
    }
  }

  std::int32_t Status() const { return blamed_.empty() ? STATUS_OK : kOutOfTolerance; }
  /// Names what is out of tolerance.
  std::string Note() const { return blamed_.empty() ? "" : "too large: " + blamed_; }

 private:
  void Blame(std::string_view name) {
    blamed_ += (blamed_.empty() ? "" : ", ") + std::string(name);
  }

  std::string blamed_;
};

constexpr Field kElevTolerance{"elevTolerance", Kind::kLength,
                               "largest height difference; as tolerance when absent",
                               Need::kOptional, kNotNegative};
constexpr const char* kNoElevations =
    "a point has no elevation to check: give it, or leave elevTolerance out";
constexpr Field kDiffElev{"dElev", Kind::kLength,
                          "measured less known elevation; none without both"};

// --- check

constexpr std::array kCheckIn = {
    Field{"measured", Kind::kPoint, "the measured point"},
    Field{"known", Kind::kPoint, "where it is known to be"},
    Field{"tolerance", Kind::kLength, "largest distance between them in plan", Need::kRequired,
          kNotNegative},
    kElevTolerance,
};
constexpr std::array kCheckOut = {
    Field{"dNorth", Kind::kLength, "measured less known north"},
    Field{"dEast", Kind::kLength, "measured less known east"},
    Field{"horizDist", Kind::kLength, "distance between them in plan"},
    kDiffElev,
};
constexpr std::array kCheckStatus = {kWithin, kOutside, kPointInvalid};

Answer Check(const Inputs& in) {
  const CoordPt& measured = in.Point("measured");
  const CoordPt& known = in.Point("known");
  RdmResult apart{};
  const auto status = KavoRDMCalcByCoord(&known, &measured, &apart);
  if (status != STATUS_OK && status != ERR_NO_DIRECTION) {
    return {status, {{}, {}, {}, {}}};
  }
  const bool elevs = HasElev(measured) && HasElev(known);
  const Value dElev = elevs ? Value{apart.dElev} : Value{};
  Judge judge;
  judge.TakeLength("horizDist", apart.horizDist, in.Number("tolerance"));
  judge.TakeLength("dElev", dElev, in.Number("elevTolerance", in.Number("tolerance")));
  Answer answer{judge.Status(),
                {measured.north - known.north, measured.east - known.east, apart.horizDist, dElev},
                judge.Note()};
  if (in.Has("elevTolerance") && !elevs) {
    answer.trouble = kNoElevations;
  }
  return answer;
}

// --- backsight

constexpr std::array kBacksightIn = {
    Field{"station", Kind::kPoint, "the instrument's station"},
    kOrient,
    kInstrumentHeight,
    Field{"point", Kind::kPoint, "the known point that is sighted"},
    kHa,
    kVa,
    kFace,
    Field{"slopeDist", Kind::kLength, "slope distance, if measured", Need::kOneAtMost, kAboveZero},
    Field{"horizDist", Kind::kLength, "horizontal distance, if measured", Need::kOneAtMost,
          kAboveZero},
    kTargetHeight,
    kHa2,
    kVa2,
    Field{"angle-tolerance", Kind::kAngle, "largest difference of direction", Need::kRequired,
          kNotNegative},
    Field{"tolerance", Kind::kLength, "largest difference of distance", Need::kOptional,
          kNotNegative},
    kElevTolerance,
};
// What is measured is checked, and what is to be checked is measured.
constexpr std::array kBacksightRules = {
    Rule{"slopeDist", "tolerance"},
    Rule{"horizDist", "tolerance"},
    Rule{"elevTolerance", "va"},
    Rule{"elevTolerance", "slopeDist", "horizDist"},
    kPairNeedsHa2,
    kPairNeedsVa,
};
constexpr std::array kBacksightOut = {
    Field{"dDirection", Kind::kAngle, "measured less computed direction"},
    Field{"across", Kind::kLength, "what that makes at the point; positive to the right"},
    Field{"dDist", Kind::kLength, "measured less computed horizontal distance; none without one"},
    kDiffElev,
};
constexpr std::array kBacksightStatus = {
    kWithin,
    kOutside,
    StatusRow{KAVO_STATUS(ERR_NO_DIRECTION), false,
              "the station and the point coincide: give another point"},
    kPointInvalid,
};

Answer Backsight(const Inputs& in) {
  const CoordPt& station = in.Point("station");
  const CoordPt& point = in.Point("point");
  AngDistRec known{};
  const auto status = KavoCogoCoordToAngDist(&station, &point, &known);
  if (status != STATUS_OK) {
    return {status, {{}, {}, {}, {}}};
  }
  const auto [sight, trouble, faces] = PointingOf(in);
  const bool distance = in.Has("slopeDist") || in.Has("horizDist");
  const bool height = distance && sight.hasHeight && HasElev(station) && HasElev(point);
  const IntAngle turn = Folded(sight.ha + in.Angle("orient", 0) - known.azimuth);
  const double rise = sight.heightDiff + in.Number("ih", 0.0) - sight.targetHeight;
  const Value dDist = distance ? Value{sight.horizDist - known.horizDist} : Value{};
  const Value dElev = height ? Value{rise - known.dElev} : Value{};
  const double tolerance = in.Number("tolerance", 0.0);
  Judge judge;
  judge.TakeAngle("dDirection", turn, in.Angle("angle-tolerance"));
  judge.TakeLength("dDist", dDist, tolerance);
  judge.TakeLength("dElev", dElev, in.Number("elevTolerance", tolerance));
  const double across = known.horizDist * std::sin(Radians(turn));
  return {judge.Status(),
          {turn, across, dDist, dElev},
          Joined(judge.Note(), faces),
          trouble.empty() && in.Has("elevTolerance") && !height ? kNoElevations : trouble};
}

// --- face-check

constexpr std::array kFacesIn = {
    Field{"sights", Kind::kSights, "sights on both faces: two rows for each point"},
    Field{"angle-tolerance", Kind::kAngle, "largest collimation and index error of any sight",
          Need::kRequired, kNotNegative},
    Field{"spreadTolerance", Kind::kAngle, "largest spread of each; not checked when absent",
          Need::kOptional, kNotNegative},
};
constexpr std::array kFacesOut = {
    Field{"collimation", Kind::kAngle, "mean error of the line of sight, face 1 less true"},
    Field{"collimationSpread", Kind::kAngle, "its largest less its smallest value"},
    Field{"index", Kind::kAngle, "mean error of zenith readings, face 1 less true"},
    Field{"indexSpread", Kind::kAngle, "its largest less its smallest value"},
};
constexpr std::array kFacesStatus = {
    kWithin,
    kOutside,
    StatusRow{KAVO_STATUS(ERR_REFUSED), false,
              "a sight has one face only: give two rows for each point"},
};

Answer FaceCheck(const Inputs& in) {
  const auto& sights = in.Sights("sights");
  const auto summary = SummaryOfFaces(sights);
  if (sights.empty() || summary.pairs != sights.size()) {
    return {ERR_REFUSED, {{}, {}, {}, {}}};
  }
  Judge judge;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    const auto& errors = *sights[i].errors;
    const auto name = SightName(sights, i);
    judge.TakeAngle(name + " collimation", errors.collimation, in.Angle("angle-tolerance"));
    judge.TakeAngle(name + " index", errors.index.value_or(0), in.Angle("angle-tolerance"));
  }
  if (in.Has("spreadTolerance")) {
    judge.TakeAngle("collimationSpread", summary.collimationSpread, in.Angle("spreadTolerance"));
    judge.TakeAngle("indexSpread", summary.indexSpread.value_or(0), in.Angle("spreadTolerance"));
  }
  const auto orNone = [](std::optional<IntAngle> angle) { return angle ? Value{*angle} : Value{}; };
  return {judge.Status(),
          {summary.collimation, summary.collimationSpread, orNone(summary.index),
           orNone(summary.indexSpread)},
          judge.Note()};
}

constexpr std::array kServices = {
    Service{"check", "KavoRDMCalcByCoord", "measured point against a known one", kCheckIn,
            kCheckOut, kCheckStatus, Check},
    Service{"backsight", "KavoCogoCoordToAngDist",
            "sight to a known point from an oriented station", kBacksightIn, kBacksightOut,
            kBacksightStatus, Backsight, kTakenAsMeasured, kKeepsDigits, kBacksightRules,
            DoubtOfPointing},
    Service{"face-check", "kavo", "the instrument's errors from sights on both faces", kFacesIn,
            kFacesOut, kFacesStatus, FaceCheck},
};

}  // namespace

std::span<const Service> CheckServices() { return kServices; }

}  // namespace kavo_app
