#include "pipe/pipe_answer.hpp"

#include <fmt/format.h>

#include <optional>

#include "base/user_error.hpp"
#include "job/run.hpp"
#include "report/value_json.hpp"

namespace kavo_app {
namespace {

void WriteId(ObjectWriter& answer, std::string_view id) {
  if (!id.empty()) {
    answer.Key("id").Verbatim(id);
  }
}

void WriteResult(const JsonWriter& json, std::string_view id, const Request& request,
                 const Outcome& outcome) {
  auto answer = json.Object();
  WriteId(answer, id);
  WriteJsonStatus(answer, outcome);
  answer.Key("meaning").Text(outcome.sentence);
  if (!outcome.passed) {
    answer.Key("passed").Boolean(false);
  }
  answer.OptionalText("note", outcome.note);
  answer.OptionalText("warning", outcome.warning);
  WriteJsonOutputs(answer.Key("outputs"), *request.service, outcome, request.angles);
}

// What is wrong; with the export's status when it was the export that found it.
void WriteError(const JsonWriter& json, std::string_view id, std::string_view complaint,
                std::size_t number, const Outcome* outcome = nullptr) {
  auto answer = json.Object();
  WriteId(answer, id);
  answer.Key("error").Text(complaint);
  answer.Key("line").Integer(static_cast<std::int64_t>(number));
  if (outcome != nullptr) {
    WriteJsonStatus(answer, *outcome);
    answer.OptionalText("warning", outcome->warning);
  }
}

// Sets the base that the request asks for, if it does; the outcome of the set when it fails.
std::optional<Outcome> SetBase(Request& request) {
  if (request.setService == nullptr) {
    return std::nullopt;
  }
  Outcome set;
  set.inputs = request.setInputs;
  CallService(*request.setService, request.angles, set);
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
  CallService(*request.service, request.angles, outcome);
  return outcome;
}

}  // namespace

bool LineAnswerer::Answer(std::string_view line, std::size_t number, std::string& out) {
  const bool good = WriteAnswer(answer_.Start(), line, number);
  AppendAnswer(out);
  return good;
}

void LineAnswerer::Refuse(std::string_view complaint, std::size_t number, std::string& out) {
  WriteError(answer_.Start(), {}, complaint, number);
  AppendAnswer(out);
}

void LineAnswerer::AppendAnswer(std::string& out) const {
  out += answer_.Text();
  out += '\n';
}

bool LineAnswerer::WriteAnswer(const JsonWriter& json, std::string_view line, std::size_t number) {
  try {
    auto request = reader_.Read(line, id_);
    const auto outcome = OutcomeOf(request);
    if (outcome.success) {
      WriteResult(json, id_, request, outcome);
    } else {
      WriteError(json, id_, outcome.sentence, number, &outcome);
    }
    return outcome.Good();
  } catch (const UserError& error) {
    WriteError(json, id_, error.complaint, number);
    return false;
  }
}

}  // namespace kavo_app
