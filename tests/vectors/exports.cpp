#include "exports.hpp"

#include <algorithm>
#include <vector>

namespace kavo_test {
namespace {

// Corners are preceded by their number; a number below 1 has none.
void ReplayArea(Words& inputs, Words& outputs, Complaints& complaints) {
  std::int16_t count = 0;
  inputs.Read(count);
  std::vector<CoordPt> points(static_cast<std::size_t>(std::max<std::int16_t>(count, 0)),
                              Untouched<CoordPt>());
  for (CoordPt& point : points) {
    inputs.Read(point);
  }
  if (!inputs.AreUsedUp()) {
    complaints.emplace_back("malformed inputs");
    return;
  }
  outputs.Compare("result", KavoCogoCalcArea(points.empty() ? nullptr : points.data(), count),
                  complaints);
}

constexpr Export kExports[] = {
    {"KavoCogoCoordToAngDist", kStateless<KavoCogoCoordToAngDist>},
    {"KavoCogoAngDistToCoord", kStateless<KavoCogoAngDistToCoord>},
    {"KavoCogoCalcSlopeByDist", kStateless<KavoCogoCalcSlopeByDist>},
    {"KavoCogoCalcCrossLine", kStateless<KavoCogoCalcCrossLine>},
    {"KavoCogoCalcCrossLineCircle", kStateless<KavoCogoCalcCrossLineCircle, 2>},
    {"KavoCogoCalcCrossCircle", kStateless<KavoCogoCalcCrossCircle, 2>},
    {"KavoCogoCalcPtLine", kStateless<KavoCogoCalcPtLine>},
    {"KavoCogoOffsetToCoord", kStateless<KavoCogoOffsetToCoord>},
    {"KavoCogoCalcTransLine", kStateless<KavoCogoCalcTransLine>},
    {"KavoCogoCalcArea", ReplayArea},
    {"KavoREMSetBase", kStateful<KavoREMSetBase>},
    {"KavoREMCalc", kStateful<KavoREMCalc>},
    {"KavoRDMCalcByCoord", kStateless<KavoRDMCalcByCoord>},
    {"KavoBRSetSlope", kStateful<KavoBRSetSlope>},
    {"KavoBRCalc", kStateful<KavoBRCalc>},
    {"KavoCalc2PtTarget", kStateless<KavoCalc2PtTarget>},
    {"KavoCalcOfsCorner3Pt", kStateless<KavoCalcOfsCorner3Pt>},
    {"KavoCalcOfsCorner4Pt", kStateless<KavoCalcOfsCorner4Pt>},
    {"KavoCalcOfsLineHA", kStateful<KavoCalcOfsLineHA>},
    {"KavoCalcOfsCircle", kStateless<KavoCalcOfsCircle>},
    {"KavoREFSetBaseLine", kStateful<KavoREFSetBaseLine>},
    {"KavoREFCalc", kStateful<KavoREFCalc>},
    {"KavoREFSetArcByCoord", kStateful<KavoREFSetArcByCoord>},
    {"KavoREFSetArcByRadiusHAngle", kStateful<KavoREFSetArcByRadiusHAngle>},
    {"KavoREFSetArcByRadiusArcLen", kStateful<KavoREFSetArcByRadiusArcLen>},
    {"KavoREFGetArcParams", kStateful<KavoREFGetArcParams>},
    {"KavoREFCalcArc", kStateful<KavoREFCalcArc>},
    {"KavoREFSet2PtBasePlane", kStateful<KavoREFSet2PtBasePlane>},
    {"KavoREFCalc2PtPlane", kStateful<KavoREFCalc2PtPlane>},
    {"KavoREFSet3PtBasePlane", kStateful<KavoREFSet3PtBasePlane>},
    {"KavoREFCalc3PtPlane", kStateful<KavoREFCalc3PtPlane>},
    {"KavoSTNSeaLevelCalcByBM", kStateless<KavoSTNSeaLevelCalcByBM>},
    {"KavoSTN3PtResect", kStateless<KavoSTN3PtResect>},
    {"KavoSTN2PtResect", kStateless<KavoSTN2PtResect>},
    {"KavoSTNKnownLine", kStateless<KavoSTNKnownLine, 2>},
};

}  // namespace

std::span<const Export> Exports() { return kExports; }

}  // namespace kavo_test
