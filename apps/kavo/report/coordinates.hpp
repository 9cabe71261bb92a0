// The points of a job, for the lists and drawings that show them.
#pragma once

#include <string>
#include <vector>

#include "report/step_view.hpp"

namespace kavo_app {

/// What a point is in a job; where it is several of these, the last one counts.
enum class Role {
  kGiven,     ///< Coordinates written into a step, without a name.
  kComputed,  ///< A result.
  kControl,   ///< Known.
  kStation,   ///< Where the instrument stood.
};

/// What a role is called, such as "control point".
std::string_view RoleText(Role role);

/// A point with its part in the job.
struct JobPoint {
  std::string name;  ///< Empty for a given one.
  CoordPt at;
  Role role;
  bool good = true;            ///< False for a result that is out of tolerance.
  std::string_view service{};  ///< The service that computed it; empty for the others.
  std::string code{};          ///< Its feature code; may be empty.
};

/// The points that a step uses and computes, in the order of its fields, each name once.
std::vector<JobPoint> PointsOf(const StepView& step);

/// The points of all steps, each name once, in the order in which they come up.
std::vector<JobPoint> AllPoints(const Job& job, const std::vector<Outcome>& outcomes);

/// Two points in one: true when `known` is the point `other`; then it has the weightier role.
bool Unite(JobPoint& known, const JobPoint& other);

}  // namespace kavo_app
