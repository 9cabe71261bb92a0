// Remote elevation and distance, slope staking, two-point target, offset measurements.
#include <cmath>

#include "draw.hpp"
#include "judge.hpp"
#include "scenes.hpp"

namespace kavo_fuzz {
namespace {

constexpr double kLeastSize = 1.0;

// Which bases are set, as far as the statuses told.
struct Bases {
  bool remote;
  bool slope;
};
Bases bases;

// Every input begins without a base.
void RemoveBases() {
  const AngDistRec vertical{};
  bases.remote = Ask<KavoREMSetBase>(vertical) == STATUS_OK;
  bases.slope = Ask<KavoBRSetSlope>(0.0, 0.0, 0.0, 0.0) != ERR_REFUSED;
  Hold(!bases.remote && !bases.slope, "RemoveBases", "refuses a vertical sight and no slope");
}

void SetRemote(Draw& draw) {
  const auto [set, base] = Try<KavoREMSetBase>(draw);
  bases.remote = set == STATUS_OK;
  if (bases.remote && draw.IsCalm()) {
    CoordPt out;
    const auto status = Ask<KavoREMCalc>(base.azimuth, base.zenith, out);
    Hold(status == STATUS_OK && out.elev == 0.0 && out.north == 0.0, "KavoREMCalc",
         "finds the base itself at no height and no offset", base, out);
  }
}

void Remote(Draw& draw) {
  const auto [status, ha, zenith, out] = Try<KavoREMCalc>(draw);
  Hold(bases.remote == (status != ERR_NO_BASE), "KavoREMCalc", "knows whether there is a base",
       status);
  if (draw.IsCalm() && zenith > 0 && zenith < ANGLE_HALF_CIRCLE) {
    CoordPt same;
    Ask<KavoREMCalc>(InCircle(ha + ANGLE_HALF_CIRCLE), ANGLE_FULL_CIRCLE - zenith, same);
    Hold(status == ERR_SIGHT_VERTICAL || (out.north == same.north && out.elev == same.elev),
         "KavoREMCalc", "gives the same on face 2", ha, zenith, out, same);
  }
}

void RemoteDistance(Draw& draw) {
  const auto [status, first, second, there] = Try<KavoRDMCalcByCoord>(draw);
  if (!draw.IsCalm() || status != STATUS_OK) {
    return;
  }
  RdmResult back;
  Ask<KavoRDMCalcByCoord>(second, first, back);
  Hold(there.slopeDist == back.slopeDist && there.horizDist == back.horizDist &&
           there.dElev == -back.dElev &&
           Near(ANGLE_HALF_CIRCLE, InCircle(there.azimuth - back.azimuth), 1),
       "KavoRDMCalcByCoord", "is the same on the way back", first, second, there, back);
  AngDistRec polar;
  Ask<KavoCogoCoordToAngDist>(first, second, polar);
  Hold(polar.azimuth == there.azimuth && polar.slopeDist == there.slopeDist &&
           polar.horizDist == there.horizDist && polar.dElev == there.dElev,
       "KavoRDMCalcByCoord", "agrees with the inverse", first, second, there, polar);
}

void SetSlope(Draw& draw) {
  const auto [status, elev1, offset1, elev2, offset2] = Try<KavoBRSetSlope>(draw);
  bases.slope = status != ERR_REFUSED;
  if (bases.slope && draw.IsCalm() && offset1 != 0.0) {
    SlopeStakeResult out;
    Ask<KavoBRCalc>(Pt(0, 0), Pt(0, std::fabs(offset1), elev1, kFull), out);
    Hold((status == WARN_SLOPE_VERTICAL || out.vertDiff == 0.0) &&
             (status == WARN_SLOPE_LEVEL || out.horizDiff == 0.0),
         "KavoBRCalc", "finds the slope's first point on the slope", elev1, offset1, elev2, offset2,
         out);
  }
}

void Stake(Draw& draw) {
  const auto [status, reference, point, out] = Try<KavoBRCalc>(draw);
  Hold(bases.slope == (status != ERR_NO_BASE), "KavoBRCalc", "knows whether there is a slope",
       status);
  Hold(!draw.IsCalm() || status == ERR_NO_BASE || status == ERR_NO_DIRECTION ||
           Near(Distance(reference, point), out.horizDist, 1e-9),
       "KavoBRCalc", "measures the distance", reference, point, out);
}

double DistanceInSpace(const CoordPt& a, const CoordPt& b) {
  return std::hypot(b.north - a.north, b.east - a.east, b.elev - a.elev);
}

void Target(Draw& draw) {
  const auto [status, first, second, nominal, target, separation, out] =
      Try<KavoCalc2PtTarget>(draw);
  if (draw.IsCalm() && status == STATUS_OK) {
    const double apart = DistanceInSpace(first, second);
    const double beyond = nominal == 0.0 ? target : target * apart / nominal;
    Hold(Near(apart, separation, 1e-9) &&
             Near(beyond, DistanceInSpace(second, out), 1e-9 * (1e3 + beyond)) &&
             Near(apart + beyond, DistanceInSpace(first, out), 1e-9 * (1e3 + beyond)),
         "KavoCalc2PtTarget", "goes on from the second point", first, second, nominal, target, out);
  }
}

// An offset measurement hands its point to the host and reports what comes back.
void HoldReported(std::string_view who, const AngleDistObs& obs, const CoordPt& point,
                  double hookValue) {
  const FakeHost& host = Host();
  const bool face2 = host.face == 1;
  Hold(SameBytes(hookValue, host.askedHookValue) && SameBytes(host.reply.dist, obs.dist) &&
           (face2 || (obs.ha == host.reply.ha && obs.va == host.reply.va)) &&
           SameBytes(host.reply.north, point.north) && SameBytes(host.reply.east, point.east) &&
           SameBytes(host.reply.elev, point.elev),
       who, "reports the host's answer", obs, point);
}

CoordPt Asked() { return Pt(Host().askedNorth, Host().askedEast, Host().askedElev, kFull); }

void Corner3(Draw& draw) {
  const auto [status, a, b, p, unused, obs, point, hookValue] = Try<KavoCalcOfsCorner3Pt>(draw);
  if (status != STATUS_OK) {
    return;
  }
  HoldReported("KavoCalcOfsCorner3Pt", obs, point, hookValue);
  Hold(!draw.IsCalm() || Distance(a, b) < kLeastSize ||
           (Near(0, Offset(a, b, Asked()), 1e-8) &&
            Near(Along(a, b, p), Along(a, b, Asked()), 1e-8) && Asked().elev == p.elev),
       "KavoCalcOfsCorner3Pt", "is the foot on the wall", a, b, p, Asked());
}

void Corner4(Draw& draw) {
  const auto [status, a1, b1, a2, b2, unused, obs, point, hookValue] =
      Try<KavoCalcOfsCorner4Pt>(draw);
  if (status != STATUS_OK) {
    return;
  }
  HoldReported("KavoCalcOfsCorner4Pt", obs, point, hookValue);
  const double across = Offset(a1, b1, b2) - Offset(a1, b1, a2);
  Hold(!draw.IsCalm() || Distance(a1, b1) < kLeastSize || Distance(a2, b2) < kLeastSize ||
           std::fabs(across) < 0.1 * Distance(a2, b2) ||
           (Near(0, Offset(a1, b1, Asked()), 1e-6) && Near(0, Offset(a2, b2, Asked()), 1e-6) &&
            Asked().elev == b2.elev),
       "KavoCalcOfsCorner4Pt", "lies on both walls", a1, b1, a2, b2, Asked());
}

void InclinedLine(Draw& draw) {
  const auto [status, a, b, ha, va, station, height, obs, point, hookValue] =
      Try<KavoCalcOfsLineHA>(draw);
  if (status != STATUS_OK && status != ERR_REFUSED) {
    return;
  }
  HoldReported("KavoCalcOfsLineHA", obs, point, hookValue);
  const CoordPt asked = Asked();
  CoordPt pierced;
  double along = 0.0;
  double above = 0.0;
  const auto again = Ask<KavoREFCalc2PtPlane>(ha, va, station, height, pierced, along, above);
  const bool isGrid = (a.north == b.north || std::fabs(a.north - b.north) > kLeastSize) &&
                      (a.east == b.east || std::fabs(a.east - b.east) > kLeastSize);
  if (draw.IsCalm() && along != VALUE_INVALID && std::fabs(along) < 1e4 && isGrid &&
      Distance(a, b) >= kLeastSize) {
    const double grade = (b.elev - a.elev) / Distance(a, b);
    Hold(again == STATUS_OK && Distance(pierced, asked) < 1e-6 &&
             Near(a.elev + grade * along, asked.elev, 1e-6 * (1 + std::fabs(grade))),
         "KavoCalcOfsLineHA", "lies on the line where the sight pierces its plane", a, b, ha,
         station, pierced, asked);
  }
}

void RoundObject(Draw& draw) {
  const auto [status, surface, hookValue, ha2, va2, ha3, va3, station, unused, obs, point, radius] =
      Try<KavoCalcOfsCircle>(draw);
  if (status != STATUS_OK) {
    return;
  }
  HoldReported("KavoCalcOfsCircle", obs, point, hookValue);
  const CoordPt centre = Asked();
  // Edges well apart; a direction and its opposite are one line.
  if (draw.IsCalmAndShipped() && CrossWell(ha2, ha3, 10 * kDegree)) {
    const double reach = 1e-9 * (1e3 + std::fabs(surface.dist)) + 1e-9 * std::fabs(radius);
    for (const IntAngle edge : {ha2, ha3}) {
      Hold(Near(std::fabs(radius), std::fabs(Offset(station, PointAt(station, edge, 1.0), centre)),
                1e3 * reach),
           "KavoCalcOfsCircle", "touches both edges", surface, ha2, va2, ha3, va3, station, centre,
           radius);
    }
  }
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  RemoveBases();
  Run(draw, {SetRemote, Remote, RemoteDistance, SetSlope, Stake, Target, Corner3, Corner4,
             InclinedLine, RoundObject});
  return 0;
}
