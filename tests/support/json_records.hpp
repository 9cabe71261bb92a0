// Records from and to JSON, by the field names of the header. The functions stand where the records
// do, outside any namespace, because that is where the JSON library looks for them.
#pragma once

#include <nlohmann/json.hpp>

#include "points.hpp"

inline void from_json(const nlohmann::json& in, CoordPt& point) {
  point = kavo_test::Pt(in.at("north"), in.at("east"), in.value("elev", 0.0), in.at("flags"));
}

inline void to_json(nlohmann::json& out, const CoordPt& point) {
  out = {
      {"north", point.north}, {"east", point.east}, {"elev", point.elev}, {"flags", point.flags}};
}

inline void from_json(const nlohmann::json& in, AngDistRec& polar) {
  polar = {in.at("azimuth"), in.at("zenith"), in.at("slopeDist"), in.at("horizDist"),
           in.at("dElev")};
}

inline void to_json(nlohmann::json& out, const AngDistRec& polar) {
  out = {{"azimuth", polar.azimuth},
         {"zenith", polar.zenith},
         {"slopeDist", polar.slopeDist},
         {"horizDist", polar.horizDist},
         {"dElev", polar.dElev}};
}

inline void from_json(const nlohmann::json& in, LineDef& line) {
  line = in.contains("p2") ? kavo_test::TwoPoints(in.at("p1"), in.at("p2"))
                           : kavo_test::Bearing(in.at("p1"), in.at("direction"));
  line.mode = in.at("mode");
}

inline void from_json(const nlohmann::json& in, StnAngleObs& obs) {
  obs = {in.at("point"), in.at("ha"), in.at("va"), in.at("heightTerm")};
}

inline void from_json(const nlohmann::json& in, StnDistObs& obs) {
  obs = {in.at("point"),     in.value("local", kavo_test::Pt(0.0, 0.0)),
         in.at("ha"),        in.at("va"),
         in.at("hd"),        in.at("vd"),
         in.at("heightTerm")};
}

inline void to_json(nlohmann::json& out, const StnSetupResult& result) {
  out = {{"station", result.station},       {"orient", result.orient},
         {"distCheck", result.distCheck},   {"distResid1", result.distResid1},
         {"distResid2", result.distResid2}, {"elevDiff", result.elevDiff}};
}

inline void from_json(const nlohmann::json& in, MultiResectInput& sight) {
  sight = {in.at("point"),     in.at("ha"),         in.at("va"),        in.at("slopeDist"),
           in.at("horizDist"), in.at("heightDiff"), in.at("heightTerm")};
}

inline void to_json(nlohmann::json& out, const MultiResectResult& result) {
  out = {{"station", result.station},
         {"orient", result.orient},
         {"sdNorth", result.sdNorth},
         {"sdEast", result.sdEast},
         {"elevSpread", result.elevSpread}};
}

inline void to_json(nlohmann::json& out, const MultiResectResidual& residual) {
  out = {{"hzResid", residual.hzResid},
         {"distResid", residual.distResid},
         {"elevResid", residual.elevResid}};
}
