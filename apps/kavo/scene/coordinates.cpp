#include "scene/coordinates.hpp"

#include <algorithm>

#include "scene/place_index.hpp"
#include "service/service_rows.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

// The points that come up, each once.
class PointList {
 public:
  void Add(const JobPoint& point) {
    const auto known = index_.Find(point.at.north, point.at.east,
                                   [&](std::size_t i) { return IsSame(points_[i], point); });
    if (known) {
      Unite(points_[*known], point);
    } else {
      index_.Add(point.at.north, point.at.east, points_.size());
      points_.push_back(point);
    }
  }
  std::vector<JobPoint> Take() { return std::move(points_); }

 private:
  static bool IsSame(const JobPoint& one, const JobPoint& other) {
    return one.at.north == other.at.north && one.at.east == other.at.east &&
           IsOnePoint(one.name, one.role, other.name, other.role);
  }

  // The weightier role counts, and the coordinates that have the name.
  static void Unite(JobPoint& known, const JobPoint& other) {
    if (known.name.empty()) {
      known.name = other.name;
      known.at = other.at;
    }
    known.role = std::max(known.role, other.role);
    known.flaw = known.flaw.empty() ? other.flaw : known.flaw;
    if (known.service.empty()) {
      known.service = other.service;
      known.code = other.code;
    }
  }

  std::vector<JobPoint> points_;
  PlaceIndex index_;
};

// Whether the instrument stands at an input: where it does, its height above the point counts. An
// azimuth between two points starts at a station too, where nobody need have stood.
bool IsOccupied(const Service& service, std::size_t input) {
  return service.inputs[input].name == kSetUpStation.name &&
         FindField(service.inputs, kInstrumentHeight.name);
}

// What an output point is: a service that measures a point against a base gives its foot there.
Role RoleOf(const Service& service, std::size_t output) {
  if (service.outputs[output].name == kSetUpStation.name) {
    return Role::kStation;
  }
  const bool measures = BaseInput(service) != nullptr && FindField(service.inputs, "point");
  return measures ? Role::kFoot : Role::kComputed;
}

// The points that the job gives for an input, also within a list, a line or a sight.
void AddGiven(const Input& input, bool occupied, PointList& points) {
  for (const auto& part : input.parts) {
    AddGiven(part, occupied, points);
  }
  const auto* at = std::get_if<CoordPt>(&input.value);
  if (at == nullptr || input.from) {
    return;
  }
  const auto role = occupied ? Role::kStation : input.named ? Role::kControl : Role::kGiven;
  points.Add({input.named ? input.text : "", *at, role});
}

// An earlier result that is used as a station is one from here on. However the reference is
// written, it is the point that the earlier step gave.
void AddUsed(const StepView& step, std::size_t input, PointList& points) {
  const auto* at = std::get_if<CoordPt>(&step.Result().inputs[input]);
  const auto& from = step.GetStep().inputs[input].from;
  if (at != nullptr && from) {
    const auto source = step.SourceOf(input);
    const auto role = IsOccupied(*step.GetStep().service, input)
                          ? Role::kStation
                          : RoleOf(*source.GetStep().service, from->output);
    points.Add({source.PointName(from->output), *at, role});
  }
}

void AddComputed(const StepView& step, PointList& points) {
  const auto& service = *step.GetStep().service;
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    if (const auto* at = std::get_if<CoordPt>(&step.Result().outputs[i])) {
      points.Add({step.PointName(i), *at, RoleOf(service, i), step.Result().Flaw(), service.name,
                  step.GetStep().code});
    }
  }
}

void AddAll(const StepView& step, PointList& points) {
  const auto& service = *step.GetStep().service;
  for (std::size_t i = 0; i < step.GetStep().inputs.size(); ++i) {
    AddGiven(step.GetStep().inputs[i], IsOccupied(service, i), points);
    if (step.Result().ran) {
      AddUsed(step, i, points);
    }
  }
  AddComputed(step, points);
}

}  // namespace

std::string_view RoleText(Role role) {
  switch (role) {
    case Role::kFoot:
      return "foot on a line";
    case Role::kGiven:
      return "given point";
    case Role::kComputed:
      return "computed point";
    case Role::kControl:
      return "control point";
    case Role::kStation:
      break;
  }
  return "instrument station";
}

bool IsOnePoint(std::string_view oneName, Role oneRole, std::string_view otherName,
                Role otherRole) {
  const bool foot = oneRole == Role::kFoot || otherRole == Role::kFoot;
  return oneName == otherName || (!foot && (oneName.empty() || otherName.empty()));
}

std::vector<JobPoint> PointsOf(const StepView& step) {
  PointList points;
  AddAll(step, points);
  return points.Take();
}

std::vector<JobPoint> AllPoints(const Job& job, const std::vector<Outcome>& outcomes) {
  PointList points;
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    AddAll({job, outcomes, i}, points);
  }
  return points.Take();
}

}  // namespace kavo_app
