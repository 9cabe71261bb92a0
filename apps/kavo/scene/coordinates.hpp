// The points of a job, for the lists and drawings that show them.
#pragma once

#include <string>
#include <vector>

#include "scene/step_view.hpp"

namespace kavo_app {

/// What a point is in a job; where it is several of these, the last one counts.
enum class Role {
  kFoot,   ///< Of a measured point, on the line that it is measured against: a place on that line
           ///< and no point of the survey.
  kGiven,  ///< Coordinates written into a step, without a name.
  kComputed,  ///< A result.
  kControl,   ///< Known.
  kStation,   ///< Where the instrument stood.
};

/// What a role is called, such as "control point".
std::string_view RoleText(Role role);

/// Whether what lies at one place is one point: by its name, and a point without one is any that
/// lies there. A foot has the name of another point, and is none but itself.
bool IsOnePoint(std::string_view oneName, Role oneRole, std::string_view otherName, Role otherRole);

/// A point with its part in the job.
struct JobPoint {
  std::string name;  ///< Empty for a given one, where no other lies.
  CoordPt at;
  Role role;
  std::string_view flaw{};     ///< What keeps a result from being good; or empty.
  std::string_view service{};  ///< The service that computed it; empty for the others.
  std::string code{};          ///< Its feature code; may be empty.
};

/// The points that a step uses and computes, in the order of its fields, each once.
std::vector<JobPoint> PointsOf(const StepView& step);

/// The points of all steps, each once, in the order in which they come up.
std::vector<JobPoint> AllPoints(const Job& job, const std::vector<Outcome>& outcomes);

}  // namespace kavo_app
