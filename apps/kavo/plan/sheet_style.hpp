// How lines, texts and symbols of a drawing look.
#pragma once

#include <array>
#include <string_view>

#include "scene/scene.hpp"

namespace kavo_app {

/// The sheet is white whatever the viewer's background, and no colour is needed to tell lines
/// apart.
inline constexpr std::string_view kSheetStyle = R"(<style>
.paper { fill: #fff; }
text { fill: #111; font-family: "DejaVu Sans", Verdana, Arial, sans-serif; }
.label, .caption, .tick { font-size: 2.4px; paint-order: stroke; stroke: #fff; stroke-width: 0.5px; stroke-linejoin: round; }
.caption { font-style: italic; }
.code { font-size: 2px; fill: #555; }
.tick { fill: #a33b00; }
.title { font-size: 3.8px; font-weight: bold; }
.subtitle { font-size: 3px; }
.small { font-size: 2.2px; }
line, polyline, path, rect { fill: none; }
.inset { stroke: #111; stroke-width: 0.2px; stroke-dasharray: 4 1.5; }
.frame { stroke: #111; stroke-width: 0.25px; }
.sight { stroke: #999; stroke-width: 0.15px; }
.construction { stroke: #555; stroke-width: 0.2px; stroke-dasharray: 3 1 0.4 1; }
.offset { stroke: #a33b00; stroke-width: 0.25px; stroke-dasharray: 1.2 0.8; }
.reference { stroke: #a33b00; stroke-width: 0.5px; }
.boundary { stroke: #2e6b2e; stroke-width: 0.4px; fill: #2e6b2e; fill-opacity: 0.07; }
.residual { stroke: #b00020; stroke-width: 0.35px; marker-end: url(#head); }
.deviation { stroke: #6a1b9a; stroke-width: 0.5px; }
.leader { stroke: #555; stroke-width: 0.12px; }
.scale { stroke: #111; stroke-width: 0.2px; }
.scale-half, .arrow { fill: #111; }
</style>
<defs>
<path id="control" d="M0,-1.6 L1.4,0.8 L-1.4,0.8 Z" style="fill:#fff;stroke:#111;stroke-width:0.3px"/>
<g id="station"><path d="M0,-1.9 L1.7,1 L-1.7,1 Z" style="fill:#fff;stroke:#111;stroke-width:0.35px"/><circle r="0.5" style="fill:#111"/></g>
<circle id="computed" r="0.7" style="fill:#0b5394"/>
<circle id="given" r="0.8" style="fill:#fff;stroke:#0b5394;stroke-width:0.25px"/>
<path id="foot" d="M0,-0.55 L0.55,0 L0,0.55 L-0.55,0 Z" style="fill:#a33b00"/>
<circle id="dot" r="0.3" style="fill:#0b5394"/>
<path id="cross" d="M-1.2,0 H1.2 M0,-1.2 V1.2" style="stroke:#bbb;stroke-width:0.15px"/>
<marker id="head" markerWidth="4" markerHeight="4" refX="2.5" refY="2" orient="auto"><path d="M0,0.6 L3,2 L0,3.4 Z" style="fill:#b00020"/></marker>
</defs>
)";

/// All roles, the weightiest first.
inline constexpr std::array kRoles = {Role::kStation, Role::kControl, Role::kComputed, Role::kGiven,
                                      Role::kFoot};

/// The symbol of a role, as the head of the drawing defines it.
std::string_view SymbolOf(Role role);

/// Half the size of that symbol, millimetres.
double HalfSize(Role role);

/// The symbol of a point whose own one is on another sheet.
inline constexpr std::string_view kDot = "dot";
inline constexpr double kDotHalfSize = 0.3;

/// The class of a stroke, as the style has it.
std::string_view ClassOf(Stroke stroke);

}  // namespace kavo_app
