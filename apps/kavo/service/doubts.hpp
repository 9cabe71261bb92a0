// Results that are computed rightly, from what can hardly be right. A doubt names the sight and the
// amount; it is empty when there is none.
#pragma once

#include <string>
#include <vector>

#include "service/service.hpp"

namespace kavo_app {

/// The worst residual of a resection far beyond its weight, and elevations far apart.
/// @param in, out  of the service resect.
std::string DoubtOfResiduals(const Inputs& in, const Outputs& out);

/// The same of a two-point resection: distances that do not fit the points.
/// @param in, out  of the service resect-2.
std::string DoubtOfResect2(const Inputs& in, const Outputs& out);

/// The same of a known line: its misclosures.
/// @param in, out  of the service known-line.
std::string DoubtOfKnownLine(const Inputs& in, const Outputs& out);

/// A station that moves far when one direction changes by what directions are uncertain, as near
/// the circle through the points: every direction is changed and the set-up computed again.
/// @param setUp  the call of a service that has sights and whose first output is the station.
std::string DoubtOfPlace(Answer (*setUp)(const Inputs& in), const Inputs& in, const Outputs& out);

/// Sights on both faces that contradict one another or any instrument in use: collimation or index
/// errors far from those of the other sights, or large.
std::string DoubtOfFaces(const std::vector<Sight>& sights);

/// The same of a service that has one pointing.
std::string DoubtOfPointing(const Inputs& in, const Outputs& out);

}  // namespace kavo_app
