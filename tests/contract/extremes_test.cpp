// Every export over cross products of extreme numbers. What a formula makes of them is not stated
// here; what the header promises of any call is, and the sanitizers watch for the rest.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "points.hpp"

namespace {

using namespace kavo_test;
using Limits = std::numeric_limits<double>;
using Reals = std::initializer_list<double>;
using Flags = std::initializer_list<std::uint16_t>;

constexpr Reals kReals = {0.0,
                          -0.0,
                          Limits::denorm_min(),
                          -1.0,
                          1e308,
                          Limits::infinity(),
                          -Limits::infinity(),
                          Limits::quiet_NaN()};
constexpr Reals kFew = {0.0, -1.0, 1e308, -Limits::infinity(), Limits::quiet_NaN()};
constexpr Flags kAllFlags = {0, COORD_HAS_NE, COORD_HAS_ELEV, kFull, 0xFFFC, 0xFFFF};
constexpr std::initializer_list<IntAngle> kAngles = {
    INT32_MIN, INT32_MIN + 1,        -ANGLE_FULL_CIRCLE - 1, -ANGLE_FULL_CIRCLE,    -1,
    0,         ANGLE_QUARTER_CIRCLE, ANGLE_FULL_CIRCLE,      ANGLE_FULL_CIRCLE + 1, ANGLE_INVALID,
    INT32_MAX};

std::vector<CoordPt> Points(Reals planes, Reals elevs, Flags flags) {
  std::vector<CoordPt> points;
  for (const double north : planes) {
    for (const double east : planes) {
      for (const double elev : elevs) {
        for (const std::uint16_t flag : flags) {
          points.push_back(Pt(north, east, elev, flag));
        }
      }
    }
  }
  return points;
}

// The second point of a bearing holds what nobody may look at.
std::vector<LineDef> Lines(Flags flags) {
  const auto points = Points(kFew, {1e308}, flags);
  std::vector<LineDef> lines;
  for (const CoordPt& p1 : points) {
    for (const CoordPt& p2 : points) {
      lines.push_back(TwoPoints(p1, p2));
    }
    for (const IntAngle direction : kAngles) {
      lines.push_back(Bearing(p1, direction));
      lines.back().p2 = Pt(Limits::quiet_NaN(), 1, 2, 0xFFFF);
    }
  }
  return lines;
}

template <class Record>
bool SameBits(const Record& a, const Record& b) {
  using Bytes = std::array<std::byte, sizeof(Record)>;
  return std::bit_cast<Bytes>(a) == std::bit_cast<Bytes>(b);
}

template <class Record>
bool IsUntouched(const Record& record) {
  return SameBits(record, Untouched<Record>());
}

/// Calls twice on untouched outputs. False, and the test has failed, when the calls differ, an
/// input was written to, or status and outputs break the promise.
template <class Out, class Call, class Promise, class... Given>
bool Keeps(Call call, Promise promise, const Given&... given) {
  const std::tuple<Given...> before(given...);
  auto out = Untouched<Out>();
  auto again = Untouched<Out>();
  const std::int32_t status = call(given..., out);
  const bool repeats = status == call(given..., again) && SameBits(out, again);
  const bool keepsInputs =
      std::apply([&](const auto&... earlier) { return (SameBits(earlier, given) && ...); }, before);
  const bool keepsPromise = promise(status, out, given...);
  if (repeats && keepsInputs && keepsPromise) {
    return true;
  }
  std::ostringstream inputs;
  ((inputs << "\n  " << Text(given)), ...);
  ADD_FAILURE() << (repeats ? "" : "two calls differ; ") << (keepsInputs ? "" : "inputs changed; ")
                << (keepsPromise ? "" : "promise broken; ") << "status " << status
                << ", given: " << inputs.str();
  return false;
}

template <class Visit>
bool Product(Visit visit) {
  return visit();
}

/// Visits every choice of one from each list, until a visit gives false.
template <class Visit, class List, class... Lists>
bool Product(Visit visit, const List& list, const Lists&... lists) {
  for (const auto& one : list) {
    if (!Product([&](const auto&... rest) { return visit(one, rest...); }, lists...)) {
      return false;
    }
  }
  return true;
}

/// The call keeps its promise for every choice of one input from each list.
template <class Out, class Call, class Promise, class... Lists>
void ForAll(Call call, Promise promise, const Lists&... lists) {
  Product([&](const auto&... given) { return Keeps<Out>(call, promise, given...); }, lists...);
}

using Pair = std::array<CoordPt, 2>;

bool HasNE(const CoordPt& p) { return (p.flags & COORD_HAS_NE) != 0; }
bool HasElev(const CoordPt& p) { return (p.flags & COORD_HAS_ELEV) != 0; }
bool SamePlace(const CoordPt& a, const CoordPt& b) {
  return a.north == b.north && a.east == b.east;
}
bool ByPoints(const LineDef& line) { return line.mode == LINE_MODE_TWO_POINTS; }

bool IsPoint(const CoordPt& p, bool withElev) {
  return SameBits(p, withElev ? Written(p.north, p.east, p.elev, kFull) : Written(p.north, p.east));
}

bool ArePlanPoints(const Pair& p) { return IsPoint(p[0], false) && IsPoint(p[1], false); }
bool NeitherFound(const Pair& p) { return SameBits(p, Pair{NotFound(), NotFound()}); }

/// The refusal that a line earns before anything is computed, or STATUS_OK.
std::int32_t Refusal(const LineDef& line) {
  if (!HasNE(line.p1) || (ByPoints(line) && !HasNE(line.p2))) {
    return ERR_POINT_INVALID;
  }
  return ByPoints(line) && SamePlace(line.p1, line.p2) ? ERR_NO_DIRECTION : STATUS_OK;
}

TEST(Extremes, Inverse) {
  ForAll<AngDistRec>(
      [](const CoordPt& station, const CoordPt& point, AngDistRec& out) {
        return KavoCogoCoordToAngDist(&station, &point, &out);
      },
      [](std::int32_t status, const AngDistRec& out, const CoordPt& station, const CoordPt& point) {
        if (!HasNE(station) || !HasNE(point)) {
          return status == ERR_POINT_INVALID && IsUntouched(out);
        }
        const bool azimuth = out.azimuth >= 0 && out.azimuth < ANGLE_FULL_CIRCLE;
        const bool zenith = out.zenith >= 0 && out.zenith <= ANGLE_HALF_CIRCLE;
        return status == (azimuth && zenith ? STATUS_OK : ERR_NO_DIRECTION) &&
               (azimuth || out.azimuth == ANGLE_INVALID) &&
               (zenith || out.zenith == ANGLE_INVALID) && !(out.horizDist < 0) &&
               !(out.slopeDist < 0) &&
               (HasElev(station) || (SameBits(out.slopeDist, out.horizDist) && out.dElev == 0));
      },
      Points(kReals, kFew, kAllFlags), Points(kFew, kFew, {0, COORD_HAS_NE, kFull}));
}

TEST(Extremes, Forward) {
  std::vector<AngDistRec> polars;
  Product(
      [&](IntAngle azimuth, double horizDist, double dElev) {
        polars.push_back({azimuth, INT32_MIN, Limits::quiet_NaN(), horizDist, dElev});
        return true;
      },
      kAngles, kReals, kReals);
  ForAll<CoordPt>(
      [](const CoordPt& station, const AngDistRec& polar, CoordPt& out) {
        return KavoCogoAngDistToCoord(&station, &polar, &out);
      },
      [](std::int32_t status, const CoordPt& out, const CoordPt& station, const AngDistRec&) {
        return HasNE(station) ? status == STATUS_OK && IsPoint(out, HasElev(station))
                              : status == ERR_POINT_INVALID && IsUntouched(out);
      },
      Points(kFew, {1e308}, kAllFlags), polars);
}

TEST(Extremes, Grade) {
  ForAll<SlopeRec>(
      [](double horizDist, double dElev, SlopeRec& out) {
        KavoCogoCalcSlopeByDist(horizDist, dElev, &out);
        return STATUS_OK;
      },
      [](std::int32_t, const SlopeRec& out, double horizDist, double dElev) {
        const bool finite = std::isfinite(horizDist) && std::isfinite(dElev);
        return (horizDist != 0 || out.percent == SLOPE_VERTICAL) &&
               (dElev != 0 || out.ratio == SLOPE_VERTICAL) &&
               !(finite && (std::isnan(out.percent) || std::isnan(out.ratio)));
      },
      kReals, kReals);
}

TEST(Extremes, CrossLine) {
  const auto lines = Lines({COORD_HAS_NE});
  ForAll<CoordPt>(
      [](const LineDef& line1, const LineDef& line2, CoordPt& out) {
        return KavoCogoCalcCrossLine(&line1, &line2, &out);
      },
      [](std::int32_t status, const CoordPt& out, const LineDef& line1, const LineDef& line2) {
        const std::int32_t first = Refusal(line1);
        const std::int32_t refusal = first != STATUS_OK ? first : Refusal(line2);
        if (refusal == STATUS_OK && status == STATUS_OK) {
          return IsPoint(out, false);
        }
        return status == (refusal != STATUS_OK ? refusal : ERR_PARALLEL) &&
               SameBits(out, NotFound());
      },
      lines, lines);
}

TEST(Extremes, CrossLineCircle) {
  ForAll<Pair>(
      [](const LineDef& line, const CoordPt& centre, double radius, Pair& out) {
        return KavoCogoCalcCrossLineCircle(&line, &centre, radius, out.data());
      },
      [](std::int32_t status, const Pair& out, const LineDef& line, const CoordPt&, double radius) {
        if (radius < 0) {
          return status == ERR_REFUSED && IsUntouched(out);
        }
        if (const std::int32_t refusal = Refusal(line); refusal != STATUS_OK) {
          return status == refusal && NeitherFound(out);
        }
        const bool missed = SameBits(out[0], out[1]) && out[0].east == VALUE_INVALID;
        return ArePlanPoints(out) && (status == 2 || (status == 1 && SamePlace(out[0], out[1])) ||
                                      (status == 0 && missed));
      },
      Lines({0, COORD_HAS_NE}), Points(kFew, {1e308}, {0}), kReals);
}

TEST(Extremes, CrossCircle) {
  const auto centres = Points(kReals, {1e308}, {0});
  ForAll<Pair>(
      [](const CoordPt& centre1, double radius1, const CoordPt& centre2, double radius2,
         Pair& out) {
        return KavoCogoCalcCrossCircle(&centre1, radius1, &centre2, radius2, out.data());
      },
      [](std::int32_t status, const Pair& out, const CoordPt& centre1, double radius1,
         const CoordPt& centre2, double radius2) {
        const bool concentric = SamePlace(centre1, centre2);
        if (!(radius1 > 0 && radius2 > 0) || (concentric && radius1 == radius2)) {
          return status == ERR_REFUSED && IsUntouched(out);
        }
        if (status == 0) {
          return concentric ? IsUntouched(out) : NeitherFound(out);
        }
        return !concentric && status == (SamePlace(out[0], out[1]) ? 1 : 2) && ArePlanPoints(out);
      },
      centres, kReals, centres, kReals);
}

TEST(Extremes, PtLine) {
  ForAll<CoordPt>(
      [](const LineDef& line, const CoordPt& point, CoordPt& foot) {
        return KavoCogoCalcPtLine(&line, &point, &foot);
      },
      [](std::int32_t status, const CoordPt& foot, const LineDef& line, const CoordPt&) {
        const bool withElev = HasElev(line.p1) || (ByPoints(line) && HasElev(line.p2));
        return status == Refusal(line) &&
               (status == STATUS_OK ? IsPoint(foot, withElev) : SameBits(foot, NotFound()));
      },
      Lines({0, COORD_HAS_NE, kFull}), Points(kFew, {1e308}, {0}));
}

TEST(Extremes, OffsetToCoord) {
  const auto points = Points(kFew, {1e308}, {0, COORD_HAS_NE, kFull});
  ForAll<CoordPt>(
      [](const CoordPt& a, const CoordPt& b, double along, double offset, CoordPt& out) {
        return KavoCogoOffsetToCoord(&a, &b, along, offset, &out);
      },
      [](std::int32_t status, const CoordPt& out, const CoordPt& a, const CoordPt& b, double,
         double) {
        return status == Refusal(TwoPoints(a, b)) &&
               (status == STATUS_OK ? IsPoint(out, HasElev(a) || HasElev(b)) : IsUntouched(out));
      },
      points, points, kReals, kReals);
}

TEST(Extremes, TransLine) {
  ForAll<LineDef>(
      [](const LineDef& line, IntAngle rotation, double offset, LineDef& out) {
        return KavoCogoCalcTransLine(&line, rotation, offset, &out);
      },
      [](std::int32_t status, const LineDef& out, const LineDef& line, IntAngle, double) {
        if (const std::int32_t refusal = Refusal(line); refusal != STATUS_OK) {
          return status == refusal && IsUntouched(out);
        }
        auto written = Untouched<LineDef>();
        written.p1 = Written(out.p1.north, out.p1.east, out.p1.elev, out.p1.flags);
        written.p2 = Written(out.p2.north, out.p2.east, out.p2.elev, out.p2.flags);
        written.direction = out.direction;
        written.mode = line.mode;
        return status == STATUS_OK && SameBits(out, written) &&
               (out.direction > ANGLE_FULL_CIRCLE || out.direction == line.direction);
      },
      Lines({0, COORD_HAS_NE, kFull}), kAngles, kReals);
}

TEST(Extremes, Area) {
  const auto points = Points(kReals, {1e308}, {COORD_HAS_NE});
  ForAll<double>(
      [](const CoordPt& first, const CoordPt& second, const CoordPt& third, double& out) {
        const CoordPt corners[] = {first, second, Pt(1, 2, 3, 0xFFFE), third};
        out = KavoCogoCalcArea(corners, 4);
        return STATUS_OK;
      },
      [](std::int32_t, double area, const CoordPt&, const CoordPt&, const CoordPt&) {
        return area >= 0 || std::isnan(area);
      },
      points, points, points);
}

}  // namespace
