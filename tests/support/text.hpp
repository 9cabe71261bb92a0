// Records as text that is exact to the bit: comparing the texts compares every field, tells -0 from
// +0 and takes a NaN for a value, and a failed comparison shows numbers that people can read.
#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <type_traits>

#include "kavostdlib.h"

namespace kavo_test {

/// A record of which every byte is 0xA5, to be handed out as an output.
template <class Record>
Record Untouched() {
  static_assert(std::is_trivially_copyable_v<Record>);
  Record record;
  std::memset(&record, 0xA5, sizeof record);
  return record;
}

inline std::string Text(double value) {
  if (std::isnan(value)) {
    return "nan";
  }
  std::ostringstream text;
  text.precision(17);
  text << value << " (" << std::hexfloat << value << ')';
  return text.str();
}

template <std::integral Integer>
std::string Text(Integer value) {
  return std::to_string(value);
}

inline std::string Text(const CoordPt& p) {
  return "north " + Text(p.north) + ", east " + Text(p.east) + ", elev " + Text(p.elev) +
         ", flags " + Text(p.flags) + ", reserved " + Text(p.reserved[0]) + ' ' +
         Text(p.reserved[1]) + ' ' + Text(p.reserved[2]);
}

inline std::string Text(const AngDistRec& r) {
  return "azimuth " + Text(r.azimuth) + ", zenith " + Text(r.zenith) + ", slopeDist " +
         Text(r.slopeDist) + ", horizDist " + Text(r.horizDist) + ", dElev " + Text(r.dElev);
}

inline std::string Text(const SlopeRec& r) {
  return "percent " + Text(r.percent) + ", ratio " + Text(r.ratio);
}

inline std::string Text(const LineDef& line) {
  return "p1 {" + Text(line.p1) + "}, p2 {" + Text(line.p2) + "}, direction " +
         Text(line.direction) + ", mode " + Text(line.mode) + ", reserved " + Text(line.reserved);
}

inline std::string Text(const RdmResult& r) {
  return "slopeDist " + Text(r.slopeDist) + ", horizDist " + Text(r.horizDist) + ", dElev " +
         Text(r.dElev) + ", azimuth " + Text(r.azimuth) + ", reserved " + Text(r.reserved);
}

inline std::string Text(const SlopeStakeResult& r) {
  return "horizDiff " + Text(r.horizDiff) + ", vertDiff " + Text(r.vertDiff) + ", horizDist " +
         Text(r.horizDist);
}

inline std::string Text(const AngleDistObs& obs) {
  return "ha " + Text(obs.ha) + ", va " + Text(obs.va) + ", dist " + Text(obs.dist);
}

inline std::string Text(const RefLineResult& r) {
  return "foot {" + Text(r.foot) + "}, along " + Text(r.along) + ", offset " + Text(r.offset) +
         ", dElev " + Text(r.dElev);
}

inline std::string Text(const RefArcParams& p) {
  return "startDir " + Text(p.startDir) + ", endDir " + Text(p.endDir) + ", radius " +
         Text(p.radius) + ", arcLength " + Text(p.arcLength) + ", centralAngle " +
         Text(p.centralAngle);
}

inline std::string Text(const StnSetupResult& r) {
  return "station {" + Text(r.station) + "}, orient " + Text(r.orient) + ", reserved " +
         Text(r.reserved) + ", distCheck " + Text(r.distCheck) + ", distResid1 " +
         Text(r.distResid1) + ", distResid2 " + Text(r.distResid2) + ", elevDiff " +
         Text(r.elevDiff);
}

inline std::string Text(const MultiResectResult& r) {
  return "station {" + Text(r.station) + "}, orient " + Text(r.orient) + ", reserved " +
         Text(r.reserved) + ", sdNorth " + Text(r.sdNorth) + ", sdEast " + Text(r.sdEast) +
         ", elevSpread " + Text(r.elevSpread);
}

inline std::string Text(const MultiResectResidual& r) {
  return "hzResid " + Text(r.hzResid) + ", reserved " + Text(r.reserved) + ", distResid " +
         Text(r.distResid) + ", elevResid " + Text(r.elevResid);
}

}  // namespace kavo_test
