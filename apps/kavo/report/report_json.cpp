#include <algorithm>

#include "base/plain_text.hpp"
#include "report/report.hpp"
#include "report/value_json.hpp"

namespace kavo_app {
namespace {

// A base is only named: the step that set it says all of it.
void WriteInputs(const JsonWriter& json, const Step& step, const Outcome& outcome,
                 AngleUnit angles) {
  auto object = json.Object();
  for (std::size_t i = 0; i < step.inputs.size(); ++i) {
    const Field& field = step.service->inputs[i];
    if (step.inputs[i].text.empty() && !Available(step.inputs[i].value)) {
      continue;
    }
    auto input = object.Key(field.name).Object();
    input.Key("written").Text(step.inputs[i].text);
    if (outcome.ran && Available(outcome.inputs[i]) && field.kind != Kind::kFigure) {
      WriteJsonValue(input.Key("value"), outcome.inputs[i], angles);
    }
  }
}

void WriteExpectation(const JsonWriter& json, const Service& service, const Expectation& expected,
                      const Comparison& comparison, AngleUnit angles) {
  auto object = json.Object();
  object.Key("output").Text(service.outputs[expected.output].name);
  object.OptionalText("component", expected.component);
  WriteJsonValue(object.Key("expected"), expected.value, angles);
  WriteJsonValue(object.Key("computed"), comparison.computed, angles);
  if (Available(comparison.computed)) {
    const auto asValue = [](auto difference) { return Value(difference); };
    WriteJsonValue(object.Key("difference"), std::visit(asValue, comparison.difference), angles);
  }
  if (comparison.within) {
    object.Key("within").Boolean(*comparison.within);
  }
}

void WriteExpectations(const JsonWriter& json, const Step& step, const Outcome& outcome,
                       AngleUnit angles) {
  auto array = json.Array();
  for (std::size_t i = 0; i < step.expected.size(); ++i) {
    WriteExpectation(array.Next(), *step.service, step.expected[i], outcome.comparisons[i], angles);
  }
}

void WriteStep(const JsonWriter& json, const Step& step, const Outcome& outcome, AngleUnit angles) {
  auto object = json.Object();
  object.Key("name").Text(step.name);
  object.Key("service").Text(step.service->name);
  object.Key("export").Text(step.service->exportName);
  object.Key("remark").Text(step.note);
  WriteInputs(object.Key("inputs"), step, outcome, angles);
  object.Key("ran").Boolean(outcome.ran);
  object.Key("success").Boolean(outcome.success);
  object.Key("good").Boolean(outcome.Good());
  object.OptionalText("code", step.code);
  if (outcome.ran) {
    WriteJsonStatus(object, outcome);
  }
  object.Key("meaning").Text(outcome.sentence);
  object.OptionalText("note", outcome.note);
  object.OptionalText("warning", outcome.warning);
  WriteJsonOutputs(object.Key("outputs"), *step.service, outcome, angles);
  if (!step.expected.empty()) {
    WriteExpectations(object.Key("expected"), step, outcome, angles);
  }
}

void WriteSettings(const JsonWriter& json, const Job& job) {
  auto array = json.Array();
  for (const auto& text : job.settingTexts) {
    array.Next().Text(text);
  }
}

void WriteSteps(const JsonWriter& json, const Job& job, const std::vector<Outcome>& outcomes) {
  auto array = json.Array();
  for (std::size_t i = 0; i < job.steps.size(); ++i) {
    WriteStep(array.Next(), job.steps[i], outcomes[i], job.angles);
  }
}

void WriteReport(const JsonWriter& json, const Job& job, const std::vector<Outcome>& outcomes) {
  auto object = json.Object();
  object.Key("format").Text("kavo report 1");
  object.Key("title").Text(job.title);
  object.Key("source").Text(job.source);
  object.Key("job").Text(AsUtf8(job.file));  // a file may have any name
  object.Key("lengths").Text("m");
  object.Key("areas").Text("m2");
  object.Key("angles").Text(UnitText(job.angles));
  WriteSettings(object.Key("settings"), job);
  object.Key("good").Boolean(std::ranges::all_of(outcomes, &Outcome::Good));
  WriteSteps(object.Key("steps"), job, outcomes);
}

}  // namespace

std::string JsonReport(const Job& job, const std::vector<Outcome>& outcomes) {
  JsonDocument report(JsonLayout::kIndented);
  WriteReport(report.Start(), job, outcomes);
  return std::string(report.Text()) + '\n';
}

}  // namespace kavo_app
