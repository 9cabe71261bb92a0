#include "exports.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace kavo_test {
namespace {

// Records are preceded by their number; a number below 1 has none.
template <class T>
std::vector<T> ReadCounted(Words& inputs, std::int16_t& count, Complaints& complaints) {
  inputs.Read(count);
  std::vector<T> records(static_cast<std::size_t>(std::max<std::int16_t>(count, 0)),
                         Untouched<T>());
  for (T& record : records) {
    inputs.Read(record);
  }
  if (!inputs.AreUsedUp()) {
    complaints.emplace_back("malformed inputs");
  }
  return records;
}

void ReplayArea(Words& inputs, Words& outputs, Complaints& complaints) {
  std::int16_t count = 0;
  const auto points = ReadCounted<CoordPt>(inputs, count, complaints);
  if (complaints.empty()) {
    outputs.Compare("result", KavoCogoCalcArea(points.empty() ? nullptr : points.data(), count),
                    complaints);
  }
}

void ReplayMultiResect(Words& inputs, Words& outputs, Complaints& complaints) {
  std::int16_t count = 0;
  const auto sights = ReadCounted<MultiResectInput>(inputs, count, complaints);
  if (!complaints.empty()) {
    return;
  }
  auto result = Untouched<MultiResectResult>();
  std::vector residuals(sights.size() + 1, Untouched<MultiResectResidual>());
  const auto status = KavoSTNMultiResect(count, sights.data(), &result, residuals.data());
  outputs.Compare("status", status, complaints);
  outputs.Compare("result", result, complaints);
  for (std::size_t i = 0; i < sights.size(); ++i) {
    outputs.Compare("residual " + std::to_string(i + 1), residuals[i], complaints);
  }
  if (!IsUntouched(residuals.back())) {
    complaints.emplace_back("residuals: written beyond their end");
  }
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
    {"KavoSTNMultiResect", ReplayMultiResect},
    {"KavoSTNKnownLine", kStateless<KavoSTNKnownLine, 2>},
};

}  // namespace

std::span<const Export> Exports() { return kExports; }

}  // namespace kavo_test
