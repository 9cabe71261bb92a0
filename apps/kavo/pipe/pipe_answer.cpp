#include "pipe/pipe_answer.hpp"

#include <fmt/format.h>

#include <optional>

#include "base/user_error.hpp"
#include "report/value_json.hpp"
#include "run.hpp"

namespace kavo_app {
namespace {

void AppendId(std::string& out, std::string_view id) {
  if (!id.empty()) {
    out += R"("id":)";
    out += id;
    out += ',';
  }
}

void AppendStatus(std::string& out, const Outcome& outcome) {
  fmt::format_to(std::back_inserter(out), R"("status":{})", outcome.status);
  if (!outcome.statusName.empty()) {
    fmt::format_to(std::back_inserter(out), R"(,"statusName":"{}")", outcome.statusName);
  }
}

void AppendWarning(std::string& out, const Outcome& outcome) {
  if (!outcome.warning.empty()) {
    out += R"(,"warning":)";
    AppendJsonText(out, outcome.warning);
  }
}

// What is wrong; with the export's status when it was the export that found it.
void AppendError(std::string& out, std::string_view id, std::string_view complaint,
                 std::size_t number, const Outcome* outcome = nullptr) {
  out += '{';
  AppendId(out, id);
  out += R"("error":)";
  AppendJsonText(out, complaint);
  fmt::format_to(std::back_inserter(out), R"(,"line":{})", number);
  if (outcome != nullptr) {
    out += ',';
    AppendStatus(out, *outcome);
    AppendWarning(out, *outcome);
  }
  out += "}\n";
}

void AppendResult(std::string& out, std::string_view id, const Request& request,
                  const Outcome& outcome) {
  out += '{';
  AppendId(out, id);
  AppendStatus(out, outcome);
  out += R"(,"meaning":)";
  AppendJsonText(out, outcome.sentence);
  out += outcome.passed ? "" : R"(,"passed":false)";
  if (!outcome.note.empty()) {
    out += R"(,"note":)";
    AppendJsonText(out, outcome.note);
  }
  AppendWarning(out, outcome);
  out += R"(,"outputs":{)";
  for (std::size_t i = 0; i < outcome.outputs.size(); ++i) {
    const Field& field = request.service->outputs[i];
    if (field.kind == Kind::kFigure) {
      continue;  // the request says all of it
    }
    out += out.back() == '{' ? "" : ",";
    AppendJsonText(out, field.name);
    out += ':';
    AppendJsonValue(out, outcome.outputs[i], request.angles);
  }
  out += "}}\n";
}

// Sets the base that the request asks for, if it does; the outcome of the set when it fails.
std::optional<Outcome> SetBase(Request& request) {
  if (request.setService == nullptr) {
    return std::nullopt;
  }
  Outcome set;
  set.inputs = request.setInputs;
  CallService(*request.setService, set);
  if (!set.success) {
    set.sentence = fmt::format("set: {}", set.sentence);
    return set;
  }
  for (std::size_t i = 0; i < request.inputs.size(); ++i) {
    if (request.service->inputs[i].kind == Kind::kFigure) {
      request.inputs[i] =
          std::make_shared<const Inputs>(request.setService->inputs, request.setInputs);
    }
  }
  return std::nullopt;
}

Outcome OutcomeOf(Request& request) {
  SetInstrument(request.settings);
  if (auto failed = SetBase(request)) {
    return *std::move(failed);
  }
  Outcome outcome;
  outcome.inputs = std::move(request.inputs);
  CallService(*request.service, outcome);
  return outcome;
}

}  // namespace

bool LineAnswerer::Answer(std::string_view line, std::size_t number, std::string& out) {
  try {
    auto request = reader_.Read(line, id_);
    const auto outcome = OutcomeOf(request);
    if (outcome.success) {
      AppendResult(out, id_, request, outcome);
    } else {
      AppendError(out, id_, outcome.sentence, number, &outcome);
    }
    return outcome.Good();
  } catch (const UserError& error) {
    AppendError(out, id_, error.complaint, number);
    return false;
  }
}

void LineAnswerer::Refuse(std::string_view complaint, std::size_t number, std::string& out) {
  AppendError(out, {}, complaint, number);
}

}  // namespace kavo_app
