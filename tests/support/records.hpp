// The fields of every record of the header, listed once: what reads, prints and compares records
// goes through VisitFields and so never misses one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "kavostdlib.h"

namespace kavo_test {

constexpr std::byte kUntouchedByte{0xA5};

/// A record as it looks before a call, so that a byte which must not be written shows when it is.
template <class T>
T Untouched() {
  static_assert(std::is_trivially_copyable_v<T>);
  T value;
  std::memset(&value, std::to_integer<int>(kUntouchedByte), sizeof value);
  return value;
}

template <class T>
bool SameBytes(const T& a, const T& b) {
  static_assert(std::is_trivially_copyable_v<T>);
  return std::memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
bool IsUntouched(const T& value) {
  return SameBytes(value, Untouched<T>());
}

/// Fields of this name are not inputs, and no call writes them.
constexpr std::string_view kReserved = "reserved";

// Each hands every field with its name to `visit`, in their order, and gives the field the value
// that comes back. Values, not references: the doubles of a packed record have no address.

template <class Visit>
void VisitFields(CoordPt& r, Visit&& visit) {
  r.north = visit("north", r.north);
  r.east = visit("east", r.east);
  r.elev = visit("elev", r.elev);
  r.flags = visit("flags", r.flags);
  for (auto& word : r.reserved) {
    word = visit(kReserved, word);
  }
}

template <class Visit>
void VisitFields(AngDistRec& r, Visit&& visit) {
  r.azimuth = visit("azimuth", r.azimuth);
  r.zenith = visit("zenith", r.zenith);
  r.slopeDist = visit("slopeDist", r.slopeDist);
  r.horizDist = visit("horizDist", r.horizDist);
  r.dElev = visit("dElev", r.dElev);
}

template <class Visit>
void VisitFields(SlopeRec& r, Visit&& visit) {
  r.percent = visit("percent", r.percent);
  r.ratio = visit("ratio", r.ratio);
}

template <class Visit>
void VisitFields(LineDef& r, Visit&& visit) {
  r.p1 = visit("p1", r.p1);
  r.p2 = visit("p2", r.p2);
  r.direction = visit("direction", r.direction);
  r.mode = visit("mode", r.mode);
  r.reserved = visit(kReserved, r.reserved);
}

template <class Visit>
void VisitFields(RdmResult& r, Visit&& visit) {
  r.slopeDist = visit("slopeDist", r.slopeDist);
  r.horizDist = visit("horizDist", r.horizDist);
  r.dElev = visit("dElev", r.dElev);
  r.azimuth = visit("azimuth", r.azimuth);
  r.reserved = visit(kReserved, r.reserved);
}

template <class Visit>
void VisitFields(SlopeStakeResult& r, Visit&& visit) {
  r.horizDiff = visit("horizDiff", r.horizDiff);
  r.vertDiff = visit("vertDiff", r.vertDiff);
  r.horizDist = visit("horizDist", r.horizDist);
}

template <class Visit>
void VisitFields(AngleDistObs& r, Visit&& visit) {
  r.ha = visit("ha", r.ha);
  r.va = visit("va", r.va);
  r.dist = visit("dist", r.dist);
}

template <class Visit>
void VisitFields(RefLineResult& r, Visit&& visit) {
  r.foot = visit("foot", r.foot);
  r.along = visit("along", r.along);
  r.offset = visit("offset", r.offset);
  r.dElev = visit("dElev", r.dElev);
}

template <class Visit>
void VisitFields(RefArcParams& r, Visit&& visit) {
  r.startDir = visit("startDir", r.startDir);
  r.endDir = visit("endDir", r.endDir);
  r.radius = visit("radius", r.radius);
  r.arcLength = visit("arcLength", r.arcLength);
  r.centralAngle = visit("centralAngle", r.centralAngle);
}

template <class Visit>
void VisitFields(StnAngleObs& r, Visit&& visit) {
  r.point = visit("point", r.point);
  r.ha = visit("ha", r.ha);
  r.va = visit("va", r.va);
  r.heightTerm = visit("heightTerm", r.heightTerm);
}

template <class Visit>
void VisitFields(StnDistObs& r, Visit&& visit) {
  r.point = visit("point", r.point);
  r.local = visit("local", r.local);
  r.ha = visit("ha", r.ha);
  r.va = visit("va", r.va);
  r.hd = visit("hd", r.hd);
  r.vd = visit("vd", r.vd);
  r.heightTerm = visit("heightTerm", r.heightTerm);
}

template <class Visit>
void VisitFields(StnSetupResult& r, Visit&& visit) {
  r.station = visit("station", r.station);
  r.orient = visit("orient", r.orient);
  r.reserved = visit(kReserved, r.reserved);
  r.distCheck = visit("distCheck", r.distCheck);
  r.distResid1 = visit("distResid1", r.distResid1);
  r.distResid2 = visit("distResid2", r.distResid2);
  r.elevDiff = visit("elevDiff", r.elevDiff);
}

template <class Visit>
void VisitFields(MultiResectInput& r, Visit&& visit) {
  r.point = visit("point", r.point);
  r.ha = visit("ha", r.ha);
  r.va = visit("va", r.va);
  r.slopeDist = visit("slopeDist", r.slopeDist);
  r.horizDist = visit("horizDist", r.horizDist);
  r.heightDiff = visit("heightDiff", r.heightDiff);
  r.heightTerm = visit("heightTerm", r.heightTerm);
}

template <class Visit>
void VisitFields(MultiResectResult& r, Visit&& visit) {
  r.station = visit("station", r.station);
  r.orient = visit("orient", r.orient);
  r.reserved = visit(kReserved, r.reserved);
  r.sdNorth = visit("sdNorth", r.sdNorth);
  r.sdEast = visit("sdEast", r.sdEast);
  r.elevSpread = visit("elevSpread", r.elevSpread);
}

template <class Visit>
void VisitFields(MultiResectResidual& r, Visit&& visit) {
  r.hzResid = visit("hzResid", r.hzResid);
  r.reserved = visit(kReserved, r.reserved);
  r.distResid = visit("distResid", r.distResid);
  r.elevResid = visit("elevResid", r.elevResid);
}

/// A visit that leaves every field as it is.
struct Leave {
  template <class T>
  T operator()(std::string_view /*name*/, T value) const {
    return value;
  }
};

/// A record whose fields stand above.
template <class T>
concept Record = requires(T record) {
  VisitFields(record, Leave{});
};

}  // namespace kavo_test
