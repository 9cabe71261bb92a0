// What the library assumes of the machine and promises of its records, checked when it is compiled.
#include <cfloat>
#include <climits>
#include <cstddef>
#include <limits>

#include "core/host.hpp"
#include "kavostdlib.h"

static_assert(CHAR_BIT == 8);
static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);
static_assert(static_cast<std::int32_t>(0xFFFFFFFFU) == -1, "two's complement");
#if defined(FLT_EVAL_METHOD)
static_assert(FLT_EVAL_METHOD == 0, "doubles are computed as doubles, not in wider registers");
#endif

static_assert(sizeof(CoordPt) == 32);
static_assert(offsetof(CoordPt, north) == 0 && offsetof(CoordPt, east) == 8);
static_assert(offsetof(CoordPt, elev) == 16 && offsetof(CoordPt, flags) == 24);

static_assert(sizeof(AngDistRec) == 32);
static_assert(offsetof(AngDistRec, azimuth) == 0 && offsetof(AngDistRec, zenith) == 4);
static_assert(offsetof(AngDistRec, slopeDist) == 8 && offsetof(AngDistRec, horizDist) == 16);
static_assert(offsetof(AngDistRec, dElev) == 24);

static_assert(sizeof(SlopeRec) == 16);
static_assert(offsetof(SlopeRec, percent) == 0 && offsetof(SlopeRec, ratio) == 8);

static_assert(sizeof(LineDef) == 72);
static_assert(offsetof(LineDef, p1) == 0 && offsetof(LineDef, p2) == 32);
static_assert(offsetof(LineDef, direction) == 64 && offsetof(LineDef, mode) == 68);

static_assert(sizeof(RdmResult) == 32);
static_assert(offsetof(RdmResult, slopeDist) == 0 && offsetof(RdmResult, horizDist) == 8);
static_assert(offsetof(RdmResult, dElev) == 16 && offsetof(RdmResult, azimuth) == 24);

static_assert(sizeof(SlopeStakeResult) == 24);
static_assert(offsetof(SlopeStakeResult, horizDiff) == 0);
static_assert(offsetof(SlopeStakeResult, vertDiff) == 8);
static_assert(offsetof(SlopeStakeResult, horizDist) == 16);

static_assert(sizeof(AngleDistObs) == 16);
static_assert(offsetof(AngleDistObs, ha) == 0 && offsetof(AngleDistObs, va) == 4);
static_assert(offsetof(AngleDistObs, dist) == 8);

static_assert(sizeof(RefLineResult) == 56);
static_assert(offsetof(RefLineResult, foot) == 0 && offsetof(RefLineResult, along) == 32);
static_assert(offsetof(RefLineResult, offset) == 40 && offsetof(RefLineResult, dElev) == 48);

static_assert(sizeof(RefArcParams) == 28 && alignof(RefArcParams) == 4);
static_assert(offsetof(RefArcParams, startDir) == 0 && offsetof(RefArcParams, endDir) == 4);
static_assert(offsetof(RefArcParams, radius) == 8 && offsetof(RefArcParams, arcLength) == 16);
static_assert(offsetof(RefArcParams, centralAngle) == 24);

static_assert(sizeof(StnSetupResult) == 72);
static_assert(offsetof(StnSetupResult, station) == 0 && offsetof(StnSetupResult, orient) == 32);
static_assert(offsetof(StnSetupResult, distCheck) == 40);
static_assert(offsetof(StnSetupResult, distResid1) == 48);
static_assert(offsetof(StnSetupResult, distResid2) == 56);
static_assert(offsetof(StnSetupResult, elevDiff) == 64);

static_assert(sizeof(StnAngleObs) == 48);
static_assert(offsetof(StnAngleObs, point) == 0 && offsetof(StnAngleObs, ha) == 32);
static_assert(offsetof(StnAngleObs, va) == 36 && offsetof(StnAngleObs, heightTerm) == 40);

static_assert(sizeof(StnDistObs) == 96);
static_assert(offsetof(StnDistObs, point) == 0 && offsetof(StnDistObs, local) == 32);
static_assert(offsetof(StnDistObs, ha) == 64 && offsetof(StnDistObs, va) == 68);
static_assert(offsetof(StnDistObs, hd) == 72 && offsetof(StnDistObs, vd) == 80);
static_assert(offsetof(StnDistObs, heightTerm) == 88);

static_assert(sizeof(MultiResectInput) == 72);
static_assert(offsetof(MultiResectInput, point) == 0 && offsetof(MultiResectInput, ha) == 32);
static_assert(offsetof(MultiResectInput, va) == 36 && offsetof(MultiResectInput, slopeDist) == 40);
static_assert(offsetof(MultiResectInput, horizDist) == 48);
static_assert(offsetof(MultiResectInput, heightDiff) == 56);
static_assert(offsetof(MultiResectInput, heightTerm) == 64);

static_assert(sizeof(MultiResectResult) == 64);
static_assert(offsetof(MultiResectResult, station) == 0);
static_assert(offsetof(MultiResectResult, orient) == 32);
static_assert(offsetof(MultiResectResult, sdNorth) == 40);
static_assert(offsetof(MultiResectResult, sdEast) == 48);
static_assert(offsetof(MultiResectResult, elevSpread) == 56);

static_assert(sizeof(MultiResectResidual) == 24);
static_assert(offsetof(MultiResectResidual, hzResid) == 0);
static_assert(offsetof(MultiResectResidual, distResid) == 8);
static_assert(offsetof(MultiResectResidual, elevResid) == 16);

static_assert(sizeof(kavo::SiteRecord) == 96 && offsetof(kavo::SiteRecord, meanElev) == 40);
static_assert(sizeof(kavo::ObsReply) == 56);
static_assert(offsetof(kavo::ObsReply, ha) == 0 && offsetof(kavo::ObsReply, va) == 4);
static_assert(offsetof(kavo::ObsReply, dist) == 8 && offsetof(kavo::ObsReply, north) == 32);
static_assert(offsetof(kavo::ObsReply, east) == 40 && offsetof(kavo::ObsReply, elev) == 48);
