#include "report/coordinates.hpp"

#include <algorithm>
#include <map>

namespace kavo_app {
namespace {

void Insert(std::vector<JobPoint>& points, const JobPoint& point) {
  if (std::ranges::none_of(points, [&](auto& known) { return Unite(known, point); })) {
    points.push_back(point);
  }
}

// The points that the job gives for an input, also within a list, a line or a sight.
void AddGiven(const Input& input, bool occupied, std::vector<JobPoint>& points) {
  for (const auto& part : input.parts) {
    AddGiven(part, occupied, points);
  }
  const auto* at = std::get_if<CoordPt>(&input.value);
  if (at == nullptr || input.from) {
    return;
  }
  const auto role = occupied ? Role::kStation : input.named ? Role::kControl : Role::kGiven;
  Insert(points, {input.named ? input.text : "", *at, role});
}

// An earlier result that is used as a station is one from here on.
void AddUsed(const StepView& step, std::size_t input, std::vector<JobPoint>& points) {
  const auto* at = std::get_if<CoordPt>(&step.Result().inputs[input]);
  if (at != nullptr && step.GetStep().inputs[input].from) {
    const bool occupied = step.GetStep().service->inputs[input].name == "station";
    Insert(points,
           {step.GetStep().inputs[input].text, *at, occupied ? Role::kStation : Role::kComputed});
  }
}

void AddComputed(const StepView& step, std::vector<JobPoint>& points) {
  const auto& service = *step.GetStep().service;
  for (std::size_t i = 0; i < service.outputs.size(); ++i) {
    if (const auto* at = std::get_if<CoordPt>(&step.Result().outputs[i])) {
      const bool occupied = service.outputs[i].name == "station";
      Insert(points, {step.PointName(i), *at, occupied ? Role::kStation : Role::kComputed,
                      step.Result().Good(), service.name, step.GetStep().code});
    }
  }
}

}  // namespace

std::string_view RoleText(Role role) {
  switch (role) {
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

bool Unite(JobPoint& known, const JobPoint& other) {
  if (known.at.north != other.at.north || known.at.east != other.at.east ||
      known.name != other.name) {
    return false;
  }
  known.role = std::max(known.role, other.role);
  known.good = known.good && other.good;
  if (known.service.empty()) {
    known.service = other.service;
  }
  return true;
}

std::vector<JobPoint> PointsOf(const StepView& step) {
  std::vector<JobPoint> points;
  const auto& service = *step.GetStep().service;
  for (std::size_t i = 0; i < step.GetStep().inputs.size(); ++i) {
    AddGiven(step.GetStep().inputs[i], service.inputs[i].name == "station", points);
    if (step.Result().ran) {
      AddUsed(step, i, points);
    }
  }
  AddComputed(step, points);
  return points;
}

std::vector<JobPoint> AllPoints(const Job& job, const std::vector<Outcome>& outcomes) {
  std::vector<JobPoint> all;
  std::multimap<std::string, std::size_t> known;
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    for (const auto& point : PointsOf({job, outcomes, i})) {
      const auto [first, last] = known.equal_range(point.name);
      if (std::none_of(first, last, [&](const auto& at) { return Unite(all[at.second], point); })) {
        known.emplace(point.name, all.size());
        all.push_back(point);
      }
    }
  }
  return all;
}

}  // namespace kavo_app
