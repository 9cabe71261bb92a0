#include "job/run.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/geometry.hpp"
#include "base/limit.hpp"
#include "base/plain_text.hpp"
#include "service/input_rules.hpp"
#include "service/setup.hpp"

namespace kavo_app {
namespace {

class Runner {
 public:
  explicit Runner(const Job& job) : job_(job) {}

  std::vector<Outcome> Run() {
    SetInstrument(job_.settings);
    for (const auto& step : job_.steps) {
      outcomes_.push_back(RunStep(step));
    }
    return std::move(outcomes_);
  }

 private:
  Outcome RunStep(const Step& step) const {
    Outcome outcome;
    outcome.outputs.resize(step.service->outputs.size());
    for (const auto& input : step.inputs) {
      if (const auto missing = MissingResult(input)) {
        return Skipped(step, fmt::format("\"{}\" has no result", job_.steps[*missing].name));
      }
      outcome.inputs.push_back(ValueOf(input));
    }
    // What the job itself says was held to the limits when it was read.
    if (const auto trouble = TroubleOfLimits(*step.service, outcome.inputs); !trouble.empty()) {
      return Skipped(step, trouble);
    }
    CallService(*step.service, job_.angles, outcome);
    outcome.warning = Joined(Forgotten(step, outcome), outcome.warning);
    for (const auto& expected : step.expected) {
      outcome.comparisons.push_back(Compare(step, expected, outcome.outputs[expected.output]));
    }
    return outcome;
  }

  static Outcome Skipped(const Step& step, std::string_view why) {
    Outcome outcome;
    outcome.outputs.resize(step.service->outputs.size());
    outcome.sentence = fmt::format("skipped: {}", why);
    outcome.comparisons.resize(step.expected.size());
    return outcome;
  }

  // What the set-up of the station took or found, such as its orientation, and the step does not
  // take, so that it counts as 0: the points would come out turned, or too low.
  std::string Forgotten(const Step& step, const Outcome& outcome) const {
    const auto station = FindField(step.service->inputs, kSetUpStation.name);
    if (!station || !step.inputs[*station].from) {
      return {};
    }
    const auto [setUp, output] = *step.inputs[*station].from;
    if (job_.steps[setUp].service->outputs[output].name != kSetUpStation.name) {
      return {};
    }
    std::string told;
    for (std::size_t i = 0; i < step.inputs.size(); ++i) {
      if (step.inputs[i].text.empty()) {
        told = Joined(told, ForgottenInput(step, outcome, i, setUp));
      }
    }
    return told;
  }

  std::string ForgottenInput(const Step& step, const Outcome& outcome, std::size_t input,
                             std::size_t setUp) const {
    const auto name = step.service->inputs[input].name;
    const Service& setter = *job_.steps[setUp].service;
    const bool found = FindField(setter.outputs, name).has_value();
    const auto twin = FindField(found ? setter.outputs : setter.inputs, name);
    if (!twin) {
      return {};
    }
    const Outcome& known = outcomes_[setUp];
    const Value& value = found ? known.outputs[*twin] : known.inputs[*twin];
    return Matters(step, outcome, input, value)
               ? ForgottenText(name, job_.steps[setUp].name, found, value)
               : "";
  }

  // Whether the result is another one with the input given. A height that is forgotten where none
  // is computed is not missed, and nor is 0.
  bool Matters(const Step& step, const Outcome& outcome, std::size_t input,
               const Value& value) const {
    if (!Available(value)) {
      return false;
    }
    Outcome given;
    given.inputs = outcome.inputs;
    given.inputs[input] = value;
    CallService(*step.service, job_.angles, given);
    return !std::ranges::equal(given.outputs, outcome.outputs, SameNumbers);
  }

  // @param found  whether the set-up found the value; if not, it was given it.
  std::string ForgottenText(std::string_view name, std::string_view setUp, bool found,
                            const Value& value) const {
    const auto* angle = std::get_if<IntAngle>(&value);
    const auto text = angle != nullptr ? AngleText(*angle, job_.angles)
                                       : fmt::format("{}", std::get<double>(value));
    const auto remedy = found ? fmt::format("\"@{}.{}\"", setUp, name) : text;
    return fmt::format(
        "{0} is not given and counts as 0, although \"{1}\" has {2} {3}: give {0} = {4}", name,
        setUp, found ? "found" : "taken", text, remedy);
  }

  // The step whose result an input needs and that has none.
  std::optional<std::size_t> MissingResult(const Input& input) const {
    if (input.from && !Available(outcomes_[input.from->step].outputs[input.from->output])) {
      return input.from->step;
    }
    for (const auto& part : input.parts) {
      if (const auto missing = MissingResult(part)) {
        return missing;
      }
    }
    return std::nullopt;
  }

  Value ValueOf(const Input& input) const {
    if (input.from) {
      return outcomes_[input.from->step].outputs[input.from->output];
    }
    if (const auto* line = std::get_if<LineDef>(&input.value)) {
      return LineOf(*line, input.parts);
    }
    if (std::holds_alternative<std::vector<CoordPt>>(input.value)) {
      std::vector<CoordPt> points;
      for (const auto& part : input.parts) {
        points.push_back(std::get<CoordPt>(ValueOf(part)));
      }
      return points;
    }
    if (std::holds_alternative<std::vector<Sight>>(input.value)) {
      std::vector<Sight> sights;
      for (const auto& part : input.parts) {
        sights.push_back(SightOf(part));
      }
      return sights;
    }
    return input.value;
  }

  // A sight is a list of one, with the point that it sights as its part. What does not tell a
  // height gives no elevation of the station either.
  Sight SightOf(const Input& input) const {
    Sight sight = std::get<std::vector<Sight>>(input.value).front();
    if (!input.parts.empty()) {
      sight.point = std::get<CoordPt>(ValueOf(input.parts.front()));
      if (!sight.hasHeight) {
        sight.point.flags &= COORD_HAS_NE;
      }
    }
    return sight;
  }

  LineDef LineOf(LineDef line, const std::vector<Input>& parts) const {
    line.p1 = std::get<CoordPt>(ValueOf(parts[0]));
    const Value second = ValueOf(parts[1]);
    if (line.mode == LINE_MODE_TWO_POINTS) {
      line.p2 = std::get<CoordPt>(second);
    } else {
      line.direction = std::get<IntAngle>(second);
    }
    return line;
  }

  static Comparison Compare(const Step& step, const Expectation& expected, const Value& output) {
    Comparison comparison;
    comparison.computed = Component(output, expected.component);
    if (!Available(comparison.computed)) {
      return comparison;
    }
    if (const auto* angle = std::get_if<IntAngle>(&expected.value)) {
      const auto difference = Folded(std::get<IntAngle>(comparison.computed) - *angle);
      comparison.difference = difference;
      if (step.angleTolerance) {
        comparison.within = std::abs(difference) <= *step.angleTolerance;
      }
      return comparison;
    }
    const double difference =
        std::get<double>(comparison.computed) - std::get<double>(expected.value);
    comparison.difference = difference;
    if (step.tolerance) {
      comparison.within = WithinLimit(difference, *step.tolerance);
    }
    return comparison;
  }

  const Job& job_;
  std::vector<Outcome> outcomes_;
};

}  // namespace

std::vector<Outcome> RunJob(const Job& job) { return Runner(job).Run(); }

}  // namespace kavo_app
