// Records from and to JSON, by the field names of the header. The functions stand where the records
// do, outside any namespace, because that is where the JSON library looks for them.
#pragma once

#include <nlohmann/json.hpp>

#include "points.hpp"

inline void from_json(const nlohmann::json& in, CoordPt& point) {
  point = kavo_test::Pt(in.at("north"), in.at("east"), in.at("elev"), in.at("flags"));
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
