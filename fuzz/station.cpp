// Station set-up: benchmark, resections, known line.
#include <cmath>

#include "draw.hpp"
#include "fake_heap.hpp"
#include "judge.hpp"

namespace kavo_fuzz {
namespace {

constexpr double kRounding = 1e-8;

void Benchmark(Draw& draw) {
  const auto [elev, bmElev, heightTerm, vertDiff] = Try<KavoSTNSeaLevelCalcByBM>(draw);
  Hold(Text(elev) == Text(bmElev + heightTerm - vertDiff), "KavoSTNSeaLevelCalcByBM",
       "adds and subtracts in this order", bmElev, heightTerm, vertDiff, elev);
}

// Readings within the circle give an orientation within half a circle either way.
void HoldOrient(const Draw& draw, std::string_view who, std::int32_t status,
                const StnSetupResult& out) {
  Hold(!draw.IsCalm() || status != STATUS_OK ||
           (out.orient >= -ANGLE_HALF_CIRCLE && out.orient < ANGLE_HALF_CIRCLE),
       who, "orients within half a circle", out);
}

void ThreePoints(Draw& draw) {
  const auto [status, obs0, obs1, obs2, out] = Try<KavoSTN3PtResect>(draw);
  HoldOrient(draw, "KavoSTN3PtResect", status, out);
}

void TwoPoints(Draw& draw) {
  const auto [status, obsA, obsB, out] = Try<KavoSTN2PtResect>(draw);
  HoldOrient(draw, "KavoSTN2PtResect", status, out);
}

// The heap of the calls in a scope, at the end of which it has everything back.
class Memory {
 public:
  explicit Memory(int refuse = 0) {
    ReclaimHeap();
    Heap().refuse = refuse;
  }
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;
  ~Memory() { Hold(ReclaimHeap() <= mostLost_, "heap", "gets everything back"); }

  // One block a call is lost by design where the memory or the numbers end within the adjustment.
  void Allow(std::int32_t status, int calls) { mostLost_ = status == ERR_REFUSED ? calls : 0; }

 private:
  int mostLost_ = 0;
};

void ManyPoints(Draw& draw) {
  Memory memory;
  std::vector<MultiResectInput> sights(static_cast<std::size_t>(draw.Below(7)));
  std::ranges::generate(sights, [&] { return draw.Rec<MultiResectInput>(); });
  const auto count = static_cast<std::int16_t>(sights.empty() ? -draw.Byte() : sights.size());
  MultiResectResult out;
  std::vector<MultiResectResidual> residuals(sights.size());
  memory.Allow(Ask<KavoSTNMultiResect>(count, sights, out, residuals), 2);
}

void LineOfPoints(Draw& draw) {
  Memory memory;
  const auto sight1 = draw.Rec<MultiResectInput>();
  const auto sight2 = draw.Rec<MultiResectInput>();
  const IntAngle azimuth = draw.Below(2) == 0 ? AZIMUTH_FROM_POINTS : draw.Angle();
  MultiResectResult out;
  std::array<MultiResectResidual, 2> accuracy;
  const auto status = Ask<KavoSTNKnownLine>(sight1, sight2, azimuth, out, accuracy);
  memory.Allow(status, 2);
  Hold(status != STATUS_OK || (sight1.point.flags & COORD_HAS_ELEV) != 0 ||
           out.station.elev == NO_ELEVATION,
       "KavoSTNKnownLine", "tells that there is no elevation", sight1, sight2, out);
}

// A station and what it reads, without error but the rounding of the coordinates.
struct Scene {
  CoordPt station;
  IntAngle orient;  // in [-half circle, half circle)
  std::vector<StnDistObs> sights;
};

Scene DrawScene(Draw& draw, std::size_t count) {
  Scene scene{Pt(draw.Between(-1000, 1000), draw.Between(-1000, 1000), draw.Between(-100, 100)),
              static_cast<IntAngle>(draw.Between(-ANGLE_HALF_CIRCLE, ANGLE_HALF_CIRCLE)),
              std::vector<StnDistObs>(count)};
  for (StnDistObs& obs : scene.sights) {
    obs.ha = static_cast<IntAngle>(draw.Between(0, ANGLE_FULL_CIRCLE));
    obs.va = static_cast<IntAngle>(draw.Between(60, 120) * kDegree);
    obs.hd = draw.Between(20, 1000);
    obs.vd = obs.hd / std::tan(static_cast<double>(Radians(obs.va)));
    obs.heightTerm = draw.Between(-2, 2);
    obs.point = PointAt(scene.station, InCircle(obs.ha + scene.orient), obs.hd);
    obs.point.elev = scene.station.elev + obs.vd - obs.heightTerm;
    obs.point.flags = kFull;
    obs.local = PointAt(Pt(0, 0), obs.ha, obs.hd);
  }
  return scene;
}

double SineBetween(const StnDistObs& a, const StnDistObs& b) {
  return static_cast<double>(std::sin(Radians(b.ha) - Radians(a.ha)));
}

// True when no two of the first three sights are nearly in line, and the station is well off the
// circle through their points: inverted at the station, points on a circle with it fall on one
// line, and the triangle that they make has no area.
bool IsOrdinary(const Scene& scene) {
  double area = 0.0;
  double parts = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const auto& a = scene.sights[i];
    const auto& b = scene.sights[(i + 1) % 3];
    if (!CrossWell(a.ha, b.ha, 10 * kDegree)) {
      return false;
    }
    const double part = SineBetween(a, b) / (a.hd * b.hd);
    area += part;
    parts += std::fabs(part);
  }
  return std::fabs(area) > 0.1 * parts;
}

bool IsStation(const Scene& scene, const CoordPt& station, double tolerance) {
  return Near(scene.station.north, station.north, tolerance) &&
         Near(scene.station.east, station.east, tolerance) &&
         Near(scene.station.elev, station.elev, tolerance) && station.flags == kFull;
}

StnDistObs OnFace(StnDistObs obs, bool face2) {
  if (face2) {
    obs.ha = InCircle(obs.ha + ANGLE_HALF_CIRCLE);
    obs.va = ANGLE_FULL_CIRCLE - obs.va;
  }
  return obs;
}

StnAngleObs Angles(const StnDistObs& obs) { return {obs.point, obs.ha, obs.va, obs.heightTerm}; }

void FindStation(Draw& draw) {
  const Scene scene = DrawScene(draw, 3);
  const int faces = draw.Byte();
  std::vector<StnDistObs> sights;
  for (int i = 0; i < 3; ++i) {
    sights.push_back(OnFace(scene.sights[static_cast<std::size_t>(i)], (faces >> i & 1) != 0));
  }
  if (!draw.IsCalmAndShipped() || !IsOrdinary(scene)) {
    return;
  }
  StnSetupResult out;
  const auto byAngles =
      Ask<KavoSTN3PtResect>(Angles(sights[0]), Angles(sights[1]), Angles(sights[2]), out);
  Hold(byAngles == STATUS_OK && IsStation(scene, out.station, kRounding) &&
           Near(scene.orient, out.orient, 1),
       "KavoSTN3PtResect", "finds the station of exact sights", sights[0], sights[1], sights[2],
       scene.station, out);
  out = StnSetupResult{};
  const auto byDistances = Ask<KavoSTN2PtResect>(sights[0], sights[1], out);
  Hold(byDistances == STATUS_OK && IsStation(scene, out.station, kRounding) &&
           Near(scene.orient, out.orient, 1) && Near(0, out.distCheck, kRounding) &&
           Near(0, out.distResid1, kRounding) && Near(0, out.distResid2, kRounding) &&
           Near(0, out.elevDiff, kRounding),
       "KavoSTN2PtResect", "finds the station of exact sights", sights[0], sights[1], scene.station,
       out);
}

MultiResectInput MultiSight(const StnDistObs& obs, bool hasDistance) {
  const double slopeDist = hasDistance ? std::hypot(obs.hd, obs.vd) : 0.0;
  return {obs.point, obs.ha, obs.va, slopeDist, obs.hd, obs.vd, obs.heightTerm};
}

// From any number of sights, some with distances.
void AdjustStation(Draw& draw) {
  const auto count = static_cast<std::size_t>(3 + draw.Below(6));
  const Scene scene = DrawScene(draw, count);
  const int distances = draw.Byte();
  if (!draw.IsCalmAndShipped() || !IsOrdinary(scene)) {
    return;
  }
  std::vector<MultiResectInput> sights;
  for (std::size_t i = 0; i < count; ++i) {
    sights.push_back(MultiSight(scene.sights[i], (distances >> i & 1) != 0));
  }
  const Memory memory;
  MultiResectResult out;
  std::vector<MultiResectResidual> residuals(count);
  const auto status =
      Ask<KavoSTNMultiResect>(static_cast<std::int16_t>(count), sights, out, residuals);
  Hold(status == STATUS_OK && IsStation(scene, out.station, 1e-6) &&
           InCircle(out.orient - scene.orient + 1) <= 2 && Near(0, out.elevSpread, 1e-6),
       "KavoSTNMultiResect", "finds the station of exact sights", scene.station, scene.orient, out);
  for (std::size_t i = 0; i < count; ++i) {
    Hold(Near(0, residuals[i].hzResid, 1) && Near(0, residuals[i].distResid, 1e-6) &&
             Near(0, residuals[i].elevResid, 1e-6),
         "KavoSTNMultiResect", "leaves nothing of exact sights", sights[i], residuals[i]);
  }
}

void RunOutOfMemory(Draw& draw) {
  const Scene scene = DrawScene(draw, 3);
  std::vector<MultiResectInput> sights;
  for (const StnDistObs& obs : scene.sights) {
    sights.push_back(MultiSight(obs, true));
  }
  Memory memory(1 + draw.Byte());
  auto out = Untouched<MultiResectResult>();
  auto residuals = Untouched<std::array<MultiResectResidual, 3>>();
  const auto status = KavoSTNMultiResect(3, sights.data(), &out, residuals.data());
  memory.Allow(status, 1);
  const bool refused = Heap().requests >= Heap().refuse;
  Hold(!refused || ((status == ERR_NO_MEMORY || status == ERR_REFUSED) && IsUntouched(out) &&
                    IsUntouched(residuals)),
       "KavoSTNMultiResect", "writes nothing without memory", status, out);
}

void FindStationByLine(Draw& draw) {
  const Scene scene = DrawScene(draw, 2);
  const auto sight1 = MultiSight(scene.sights[0], true);
  const auto sight2 = MultiSight(scene.sights[1], true);
  if (!draw.IsCalmAndShipped() || !CrossWell(sight1.ha, sight2.ha, 10 * kDegree)) {
    return;
  }
  const Memory memory;
  MultiResectResult out;
  std::array<MultiResectResidual, 2> accuracy;
  const auto status = Ask<KavoSTNKnownLine>(sight1, sight2, AZIMUTH_FROM_POINTS, out, accuracy);
  // Half a unit in the line's azimuth turns the station about the first point.
  Hold(status == STATUS_OK && IsStation(scene, out.station, 1e-6 + 3e-7 * sight1.horizDist) &&
           InCircle(out.orient - scene.orient + 2) <= 4 && Near(0, accuracy[0].distResid, 1e-6),
       "KavoSTNKnownLine", "finds the station of exact sights", sight1, sight2, scene.station, out);
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  Run(draw, {Benchmark, ThreePoints, TwoPoints, ManyPoints, LineOfPoints, FindStation,
             AdjustStation, RunOutOfMemory, FindStationByLine});
  return 0;
}
