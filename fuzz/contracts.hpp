// Which statuses an export may return, and what its outputs hold under each: the header's contracts
// as a table. A function without a status has one row.
#pragma once

#include <array>
#include <cstdint>

#include "kavostdlib.h"

namespace kavo_fuzz {

inline constexpr std::int32_t kNoStatus = 1 << 30;

/// A word for each output, a letter for each of its fields, or one letter for all of them. Fields
/// named reserved have no letter: they are untouched, or written too where `=` ends the word. A
/// status may have several rows.
///   w  written      u  untouched      i  VALUE_INVALID or ANGLE_INVALID      0 1 3  that number
///   n  a finite number                p  a finite number, not negative
///   f  flags 1 or 3                   F  the same, and the elevation before is 0 with flags 1
///   c  an angle in [0, full circle)   C  the same or ANGLE_INVALID
///   z  an angle in [0, half circle]   Z  the same or ANGLE_INVALID
///   o  an angle in [0, full circle], the end included
struct Outcome {
  std::int32_t status;
  const char* outputs;
};

struct Contract {
  const char* name;
  std::array<Outcome, 7> outcomes;
};

/// The contract of an export. Every export has its own.
template <auto Export>
inline constexpr Contract kContract{nullptr, {}};

#define CONTRACT(Export, ...)                   \
  template <>                                   \
  inline constexpr Contract kContract<Export> { \
#Export, {                                  \
      { __VA_ARGS__ }                           \
    }                                           \
  }

// clang-format off
CONTRACT(KavoCogoCoordToAngDist, {STATUS_OK, "czwww"}, {ERR_NO_DIRECTION, "CZwww"},
         {ERR_POINT_INVALID, "u"});
CONTRACT(KavoCogoAngDistToCoord, {STATUS_OK, "wwwF"}, {ERR_POINT_INVALID, "u"});
CONTRACT(KavoCogoCalcSlopeByDist, {kNoStatus, "w"});
CONTRACT(KavoCogoCalcCrossLine, {STATUS_OK, "ww01"}, {ERR_NO_DIRECTION, "ii01"},
         {ERR_POINT_INVALID, "ii01"}, {ERR_PARALLEL, "ii01"});
CONTRACT(KavoCogoCalcCrossLineCircle, {2, "ww01"}, {1, "ww01"}, {0, "wi01"}, {ERR_REFUSED, "u"},
         {ERR_NO_DIRECTION, "ii01"}, {ERR_POINT_INVALID, "ii01"});
CONTRACT(KavoCogoCalcCrossCircle, {2, "ww01"}, {1, "ww01"}, {0, "u"}, {0, "ii01"},
         {ERR_REFUSED, "u"});
CONTRACT(KavoCogoCalcPtLine, {STATUS_OK, "wwwF"}, {ERR_NO_DIRECTION, "ii01"},
         {ERR_POINT_INVALID, "ii01"});
CONTRACT(KavoCogoOffsetToCoord, {STATUS_OK, "wwwF"}, {ERR_NO_DIRECTION, "u"},
         {ERR_POINT_INVALID, "u"});
CONTRACT(KavoCogoCalcTransLine, {STATUS_OK, "w"}, {ERR_NO_DIRECTION, "u"},
         {ERR_POINT_INVALID, "u"});
CONTRACT(KavoCogoCalcArea, {kNoStatus, ""});

CONTRACT(KavoREMSetBase, {STATUS_OK, ""}, {ERR_SIGHT_VERTICAL, ""});
CONTRACT(KavoREMCalc, {STATUS_OK, "w0w3"}, {ERR_NO_BASE, "i0i3"}, {ERR_SIGHT_VERTICAL, "u0i3"},
         {ERR_SIGHT_OFF_BASE, "i0w3"});
CONTRACT(KavoRDMCalcByCoord, {STATUS_OK, "wwwC"}, {ERR_NO_DIRECTION, "wwwi"},
         {ERR_POINT_INVALID, "u"});
CONTRACT(KavoBRSetSlope, {STATUS_OK, ""}, {WARN_SLOPE_VERTICAL, ""}, {WARN_SLOPE_LEVEL, ""},
         {ERR_REFUSED, ""});
CONTRACT(KavoBRCalc, {STATUS_OK, "w"}, {WARN_SLOPE_VERTICAL, "wiw"}, {WARN_SLOPE_LEVEL, "iww"},
         {ERR_NO_BASE, "u"}, {ERR_POINT_INVALID, "u"}, {ERR_NO_DIRECTION, "u"});
CONTRACT(KavoCalc2PtTarget, {STATUS_OK, "w www3"}, {STATUS_OK, "w www3="},
         {ERR_REFUSED, "u u"}, {ERR_NO_DIRECTION, "u u"}, {ERR_POINT_INVALID, "u u"});
CONTRACT(KavoCalcOfsCorner3Pt, {STATUS_OK, "w www3"}, {ERR_NO_DIRECTION, "u u"},
         {ERR_POINT_INVALID, "u u"});
CONTRACT(KavoCalcOfsCorner4Pt, {STATUS_OK, "w www3"}, {ERR_INDETERMINATE, "u ii01"},
         {ERR_POINT_INVALID, "u ww01"}, {ERR_NO_DIRECTION, "u ww01"});
CONTRACT(KavoCalcOfsLineHA, {STATUS_OK, "w www3"}, {ERR_REFUSED, "w www3"},
         {ERR_POINT_INVALID, "u u"}, {ERR_NO_DIRECTION, "u u"}, {ERR_INDETERMINATE, "u u"});
CONTRACT(KavoCalcOfsCircle, {STATUS_OK, "w www3 w"}, {ERR_POINT_INVALID, "u u u"},
         {ERR_INDETERMINATE, "u u u"});

CONTRACT(KavoREFSetBaseLine, {STATUS_OK, ""}, {ERR_NO_DIRECTION, ""}, {ERR_POINT_INVALID, ""});
CONTRACT(KavoREFCalc, {STATUS_OK, "wwwFwww"}, {ERR_NO_BASE, "u"}, {ERR_POINT_INVALID, "u"});
CONTRACT(KavoREFSetArcByCoord, {STATUS_OK, ""}, {ERR_NO_DIRECTION, ""}, {ERR_POINT_INVALID, ""},
         {ERR_INDETERMINATE, ""});
CONTRACT(KavoREFSetArcByRadiusHAngle, {STATUS_OK, ""}, {ERR_REFUSED, ""}, {ERR_POINT_INVALID, ""},
         {ERR_INDETERMINATE, ""});
CONTRACT(KavoREFSetArcByRadiusArcLen, {STATUS_OK, ""}, {ERR_REFUSED, ""}, {ERR_POINT_INVALID, ""});
CONTRACT(KavoREFGetArcParams, {STATUS_OK, "w"});
CONTRACT(KavoREFCalcArc, {STATUS_OK, "0000www"}, {ERR_NO_DIRECTION, "u"},
         {ERR_POINT_INVALID, "u"});
CONTRACT(KavoREFSet2PtBasePlane, {STATUS_OK, ""}, {WARN_NO_ELEVATION, ""}, {ERR_NO_DIRECTION, ""},
         {ERR_POINT_INVALID, ""});
CONTRACT(KavoREFCalc2PtPlane, {STATUS_OK, "www3 w w"}, {WARN_NO_ELEVATION, "www3 w 0"},
         {WARN_NO_ELEVATION, "iii3 i i"}, {ERR_NO_BASE, "iii3 i i"},
         {ERR_INDETERMINATE, "iii3 i i"});
CONTRACT(KavoREFSet3PtBasePlane, {STATUS_OK, ""}, {ERR_NO_DIRECTION, ""}, {ERR_POINT_INVALID, ""},
         {ERR_INDETERMINATE, ""});
CONTRACT(KavoREFCalc3PtPlane, {STATUS_OK, "www3 w w"}, {ERR_NO_BASE, "iii3 i i"},
         {ERR_INDETERMINATE, "iii3 i i"});

CONTRACT(KavoSTNSeaLevelCalcByBM, {kNoStatus, ""});
CONTRACT(KavoSTN3PtResect, {STATUS_OK, "wwwFwuuuu"}, {ERR_POINT_INVALID, "u"},
         {ERR_SAME_DIRECTION, "u"}, {ERR_INDETERMINATE, "u"});
CONTRACT(KavoSTN2PtResect, {STATUS_OK, "wwwFwwwww"}, {ERR_NO_DIRECTION, "u"},
         {ERR_NO_DIRECTION, "uuwFuwwww"}, {ERR_POINT_INVALID, "u"}, {ERR_NO_DISTANCE, "u"},
         {ERR_INDETERMINATE, "uuwFuwwww"});
CONTRACT(KavoSTNMultiResect, {STATUS_OK, "nnwFoppw w"}, {ERR_REFUSED, "u u"},
         {ERR_NO_MEMORY, "u u"}, {ERR_INDETERMINATE, "u u"});
CONTRACT(KavoSTNKnownLine, {STATUS_OK, "nnwfoppw w"}, {ERR_NO_DIRECTION, "u u"},
         {ERR_POINT_INVALID, "u u"}, {ERR_REFUSED, "u u"}, {ERR_NO_MEMORY, "u u"},
         {ERR_INDETERMINATE, "u u"});
// clang-format on

#undef CONTRACT

/// True of an export that reads what an output holds before the call.
template <auto Export>
inline constexpr bool kReadsOutput = false;
template <>
inline constexpr bool kReadsOutput<KavoCalcOfsCircle> = true;
template <>
inline constexpr bool kReadsOutput<KavoSTN2PtResect> = true;

}  // namespace kavo_fuzz
