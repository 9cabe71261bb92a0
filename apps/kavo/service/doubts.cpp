#include "service/doubts.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "base/geometry.hpp"
#include "base/plain_text.hpp"
#include "service/faces.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

// What measurements are uncertain by, as the adjustment weights them.
constexpr IntAngle kArcSecond = 16;
constexpr IntAngle kDirectionSd = 2 * kArcSecond;
constexpr double kDistSd = 2e-3;  // metres, and
constexpr double kDistSdPerMetre = 2e-6;

// Chance hardly ever makes five times that; what is beyond was misread or is another point.
constexpr double kGross = 5.0;

// A target stands over its point no better, which near the station makes many arc-seconds.
constexpr double kCentring = 2e-3;  // metres

// Far above what sights and heights taken with a tape are off, far below another target's height.
constexpr double kElevsApart = 0.05;  // metres
// And per square metre of distance: curvature and refraction, which are not always corrected.
constexpr double kEarthPerSquare = 7e-8;  // 1 / metres

// A station in a good place moves about as far as the directions do at the points.
constexpr double kMovesFar = 10.0;

// The errors of one instrument stay the same from sight to sight but for its accuracy; and beyond
// some minutes it is off to the workshop.
constexpr IntAngle kErrorsApart = 30 * kArcSecond;
constexpr IntAngle kErrorLarge = 5 * 60 * kArcSecond;

std::string LengthText(double metres) {
  const double size = std::fabs(metres);
  return size < 1.0 ? fmt::format("{:.0f} mm", 1e3 * size) : fmt::format("{:.3f} m", size);
}

// Keeps what is beyond its limit by most. What is not a number is beyond none.
class Worst {
 public:
  /// @param text  gives what to say of it.
  template <class Text>
  void Take(double amount, double limit, Text text) {
    if (const double times = std::fabs(amount) / limit; times > times_) {
      times_ = times;
      told_ = text();
    }
  }
  const std::string& Told() const { return told_; }

 private:
  double times_ = 1.0;
  std::string told_;
};

double PlanDist(const CoordPt& from, const CoordPt& to) {
  return std::hypot(to.north - from.north, to.east - from.east);
}

double Farthest(const std::vector<Sight>& sights, const CoordPt& station) {
  double farthest = 0.0;
  for (const auto& sight : sights) {
    if (HasPosition(sight.point)) {
      farthest = std::max(farthest, PlanDist(station, sight.point));
    }
  }
  return farthest;
}

// What a distance is uncertain by, metres.
double DistSd(double dist) { return std::hypot(kDistSd, kDistSdPerMetre * dist); }

// What a sighted point is uncertain by, along the sight and across it, metres.
double PointSd(const Sight& sight) {
  return std::hypot(DistSd(sight.horizDist), Radians(kDirectionSd) * sight.horizDist);
}

std::string OffText(const std::string& name, std::string_view what, const std::string& amount) {
  return fmt::format("{}: {} {} off; check its point and reading", name, what, amount);
}

// @param name  of the output that tells how far the elevations from the sights are apart.
std::string DoubtOfElevs(const Inputs& in, const Outputs& out, std::string_view name) {
  if (!out.Has(name)) {
    return {};
  }
  const double dist = Farthest(in.Sights("sights"), out.Point("station"));
  const double apart = out.Number(name);
  return std::fabs(apart) > kElevsApart + kEarthPerSquare * dist * dist
             ? fmt::format(
                   "the elevations from the sights are {} apart: check th, the zenith "
                   "readings and the points' elevations",
                   LengthText(apart))
             : "";
}

// Of two sights: how far the distance between their points, measured, is off the known one.
// @param grown  how many times that is what the points are uncertain by.
void TakeBetween(Worst& worst, const std::vector<Sight>& sights, double apart, double grown = 1.0) {
  worst.Take(apart, grown * kGross * std::hypot(PointSd(sights[0]), PointSd(sights[1])), [&] {
    return fmt::format("the distance between {} and {} is {} off: check their points and readings",
                       SightName(sights, 0), SightName(sights, 1), LengthText(apart));
  });
}

// One error of the instrument, from one of the sights.
struct FaceError {
  std::size_t sight;
  IntAngle error;
};

// The error that is farthest from their mean; of two the larger.
FaceError Outlier(const std::vector<FaceError>& errors) {
  double mean = 0.0;
  for (const auto& [sight, error] : errors) {
    mean += error / static_cast<double>(errors.size());
  }
  return *std::ranges::max_element(errors, {}, [mean](const FaceError& one) {
    return std::pair(std::lround(std::fabs(one.error - mean)), std::abs(one.error));
  });
}

std::string DoubtOfErrors(const std::vector<Sight>& sights, const std::vector<FaceError>& errors,
                          std::string_view name) {
  if (errors.empty()) {
    return {};
  }
  const auto [least, most] = std::ranges::minmax(errors, {}, &FaceError::error);
  const bool apart = most.error - least.error > kErrorsApart;
  const auto [sight, error] = apart                                          ? Outlier(errors)
                              : std::abs(least.error) > std::abs(most.error) ? least
                                                                             : most;
  if (!apart && std::abs(error) <= kErrorLarge) {
    return {};
  }
  return fmt::format("{} {:.1f}\" {}: check the readings of {}", name, ArcSeconds(error),
                     apart ? "unlike that of the other sights" : "is more than 5 minutes",
                     SightName(sights, sight));
}

// How far the station moves when one direction changes, metres; infinity when that leaves none.
double MovedBy(Answer (*setUp)(const Inputs& in), const Inputs& in, std::size_t sight,
               const CoordPt& station) {
  std::vector<Value> values = in.Values();
  for (auto& value : values) {
    if (auto* sights = std::get_if<std::vector<Sight>>(&value)) {
      (*sights)[sight].ha = Wrapped((*sights)[sight].ha + kDirectionSd);
    }
  }
  const Answer moved = setUp(Inputs(in.Fields(), std::move(values), in.Notation()));
  const auto* place = std::get_if<CoordPt>(&moved.outputs.front());
  return moved.status == STATUS_OK && place != nullptr ? PlanDist(station, *place) : HUGE_VAL;
}

}  // namespace

std::string DoubtOfResiduals(const Inputs& in, const Outputs& out) {
  const auto& sights = in.Sights("sights");
  const auto& residuals = out.Residuals("residuals");
  Worst worst;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    const IntAngle direction = residuals[i].direction;
    const double dist = PlanDist(out.Point("station"), sights[i].point);
    worst.Take(Radians(direction), std::max(kGross * Radians(kDirectionSd), kCentring / dist), [&] {
      return OffText(SightName(sights, i), "direction",
                     fmt::format("{:.0f}\"", std::fabs(ArcSeconds(direction))));
    });
    const double length = residuals[i].dist.value_or(0.0);
    worst.Take(length, kGross * DistSd(sights[i].horizDist),
               [&] { return OffText(SightName(sights, i), "distance", LengthText(length)); });
  }
  return Joined(worst.Told(), DoubtOfElevs(in, out, "elevSpread"));
}

std::string DoubtOfResect2(const Inputs& in, const Outputs& out) {
  const auto& sights = in.Sights("sights");
  Worst worst;
  if (out.Has("distCheck")) {
    TakeBetween(worst, sights, out.Number("distCheck"));
  }
  // A station far from points close together turns about them, and its distances change with it.
  const double grown = std::max(
      1.0, Farthest(sights, out.Point("station")) / PlanDist(sights[0].point, sights[1].point));
  for (const auto* name : {"distResid1", "distResid2"}) {
    if (out.Has(name)) {
      TakeBetween(worst, sights, out.Number(name), grown);
    }
  }
  return Joined(worst.Told(), DoubtOfElevs(in, out, "elevDiff"));
}

std::string DoubtOfKnownLine(const Inputs& in, const Outputs& out) {
  Worst worst;
  if (out.Has("distMisclosure")) {
    TakeBetween(worst, in.Sights("sights"), out.Number("distMisclosure"));
  }
  return Joined(worst.Told(), DoubtOfElevs(in, out, "elevMisclosure"));
}

std::string DoubtOfFaces(const std::vector<Sight>& sights) {
  std::vector<FaceError> collimations;
  std::vector<FaceError> indices;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    if (const auto& errors = sights[i].errors) {
      collimations.push_back({i, errors->collimation});
      if (errors->index) {
        indices.push_back({i, *errors->index});
      }
    }
  }
  return Joined(DoubtOfErrors(sights, collimations, "collimation"),
                DoubtOfErrors(sights, indices, "index"));
}

std::string DoubtOfPointing(const Inputs& in, const Outputs& /*out*/) {
  Sight sight = PointingOf(in).sight;
  sight.name = "both faces";
  return DoubtOfFaces({sight});
}

std::string DoubtOfPlace(Answer (*setUp)(const Inputs& in), const Inputs& in, const Outputs& out) {
  const auto& sights = in.Sights("sights");
  const CoordPt& station = out.Point("station");
  const double limit = kMovesFar * Radians(kDirectionSd) * Farthest(sights, station);
  Worst worst;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    const double moved = MovedBy(setUp, in, i, station);
    worst.Take(moved, limit, [&] {
      return fmt::format(
          "a change of 2\" in the direction to {} {}: the sights determine it badly, as they do "
          "near the circle through the points; sight another point",
          SightName(sights, i),
          std::isfinite(moved) ? "moves the station by " + LengthText(moved) : "leaves no station");
    });
  }
  return worst.Told();
}

}  // namespace kavo_app
