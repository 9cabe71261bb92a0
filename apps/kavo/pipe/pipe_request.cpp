#include "pipe/pipe_request.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <new>
#include <optional>

#include "base/near_name.hpp"
#include "base/user_error.hpp"
#include "job/job_settings.hpp"
#include "pipe/json_toml.hpp"
#include "pipe/json_values.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 4> kRequestKeys = {"service", "id", "angles", "settings"};
constexpr std::string_view kSet = "set";
// A request, its set, a list, a line or sight and a point need six.
constexpr std::size_t kDeepest = 16;

// What is wrong with a line that the parser refuses.
std::string_view Complaint(simdjson::error_code error) {
  switch (error) {
    case simdjson::EMPTY:
      return "the line is blank; write one request on each line";
    case simdjson::UTF8_ERROR:
      return "the line is not text in UTF-8";
    case simdjson::DEPTH_ERROR:
      return "the line is nested too deep for a request";
    case simdjson::NUMBER_ERROR:
    case simdjson::NUMBER_OUT_OF_RANGE:
      return "the line has a number that is too large or not written as JSON has it";
    case simdjson::UNESCAPED_CHARS:
      return "the line has a control character within quotation marks";
    case simdjson::UNCLOSED_STRING:
      return "the line has a quotation mark that does not close";
    case simdjson::MEMALLOC:
      return "there is not enough memory for the line";
    default:
      return "the line is not valid JSON; write one request on each line";
  }
}

// Refuses a key that is probably meant to be the wanted one, which the object does not have.
void RefuseMisspelt(const simdjson::dom::object& object, const JsonPlace& place,
                    std::string_view wanted) {
  for (const auto& [key, node] : object) {
    if (const auto advice = MisspeltAdvice(key, wanted); !advice.empty()) {
      JsonPlace{&place, key, 0}.Fail(advice);
    }
  }
}

// The service that an object names; the rest of its fields depends on it.
const Service& ServiceOf(const simdjson::dom::object& object, const JsonPlace& place) {
  const JsonPlace at{&place, "service", 0};
  JsonNode node;
  if (object.at_key("service").get(node) != simdjson::SUCCESS) {
    RefuseMisspelt(object, place, "service");
    at.Fail("is missing; kavo list names them");
  }
  const auto name = JsonText(node, at);
  const auto* service = FindService(name);
  if (service == nullptr) {
    at.Fail(NoServiceAdvice(name));
  }
  return *service;
}

// The names that a call of a service may have: some of its own, and the service's inputs; a base is
// given by its set.
class CallKeys {
 public:
  CallKeys(std::span<const std::string_view> own, const Service& service) {
    std::ranges::for_each(own, [this](std::string_view key) { Add(key); });
    for (const auto& field : service.inputs) {
      Add(field.kind == Kind::kFigure ? kSet : field.name);
    }
  }
  std::span<const std::string_view> All() const { return std::span(keys_).first(count_); }

 private:
  void Add(std::string_view key) { keys_.at(count_++) = key; }

  std::array<std::string_view, JsonFields::kMost> keys_;
  std::size_t count_ = 0;
};

std::vector<Value> InputsOf(const JsonFields& fields, const Service& service, AngleUnit angles) {
  std::vector<Value> inputs;
  inputs.reserve(service.inputs.size());
  for (const auto& field : service.inputs) {
    if (field.kind != Kind::kFigure && fields.Find(field.name) != nullptr) {
      inputs.push_back(ReadJsonValue(fields, field, angles));
      if (const auto trouble = TroubleOfLimit(field, Measure(inputs.back())); !trouble.empty()) {
        fields.PlaceOf(field.name).Fail(trouble);
      }
      continue;
    }
    if (field.kind != Kind::kFigure && field.need == Need::kRequired) {
      fields.PlaceOf(field.name).Fail(fmt::format("is missing; {}", field.meaning));
    }
    inputs.emplace_back();
  }
  if (const auto trouble = TroubleOfChoice(service, Given(inputs, Available))) {
    fields.PlaceOf(trouble->field).Fail(trouble->advice);
  }
  return inputs;
}

// The base that the request's service measures against, set by a service of its own.
void ReadSet(const JsonFields& fields, const Field& base, Request& request) {
  const auto place = fields.PlaceOf(kSet);
  const auto object = JsonObject(
      fields.Required(kSet,
                      fmt::format("{}: the service that sets it, and its inputs", base.meaning)),
      place);
  const Service& service = ServiceOf(object, place);
  const auto sets = [&base](const Field& output) { return Fits(output, base); };
  if (!std::ranges::any_of(service.outputs, sets)) {
    place.Fail(
        fmt::format("service {} does not set it; wanted is: {}", service.name, base.meaning));
  }
  constexpr std::array<std::string_view, 1> kOwnKeys = {"service"};
  const CallKeys keys(kOwnKeys, service);
  request.setInputs = InputsOf(JsonFields(object, place, keys.All()), service, request.angles);
  request.setService = &service;
}

AngleUnit AnglesOf(const JsonFields& fields) {
  const auto* node = fields.Find("angles");
  if (node == nullptr) {
    return AngleUnit::kDms;
  }
  const auto place = fields.PlaceOf("angles");
  const auto unit = AngleUnitNamed(JsonText(*node, place));
  if (!unit) {
    place.Fail(NoUnitAdvice(JsonText(*node, place)));
  }
  return *unit;
}

InstrumentSettings SettingsOf(const JsonFields& fields, const Service& service) {
  const auto* node = fields.Find("settings");
  if (node == nullptr) {
    return {};
  }
  const auto place = fields.PlaceOf("settings");
  const toml::table top{{"settings", TomlOf(JsonObject(*node, place), place)}};
  Job job;
  const TomlReader reader(top, "", "");
  ReadSettings(reader, job);
  RefuseIdleSettings(reader, job.settings, service.settings, "this request");
  return job.settings;
}

// The id as it is echoed; ids are what other programs know their records by.
std::string IdOf(const simdjson::dom::object& object) {
  JsonNode node;
  if (object.at_key("id").get(node) != simdjson::SUCCESS || node.is_null()) {
    return {};
  }
  if (!node.is_string() && !node.is_number()) {
    throw UserError({}, "id", "write text or a number");
  }
  return simdjson::minify(node);
}

}  // namespace

RequestReader::RequestReader() {
  constexpr std::size_t kUsualLine = 4096;
  if (parser_.allocate(kUsualLine, kDeepest) != simdjson::SUCCESS) {
    throw std::bad_alloc();
  }
}

Request RequestReader::Read(std::string_view line, std::string& id) {
  id.clear();
  JsonNode root;
  if (const auto error = parser_.parse(line.data(), line.size()).get(root)) {
    throw UserError({}, "", std::string(Complaint(error)));
  }
  const JsonPlace place{};
  const auto object = JsonObject(root, place);
  id = IdOf(object);
  Request request;
  request.service = &ServiceOf(object, place);
  const CallKeys keys(kRequestKeys, *request.service);
  const JsonFields fields(object, place, keys.All());
  request.angles = AnglesOf(fields);
  request.settings = SettingsOf(fields, *request.service);
  request.inputs = InputsOf(fields, *request.service, request.angles);
  if (const auto* base = BaseInput(*request.service)) {
    ReadSet(fields, *base, request);
  }
  return request;
}

}  // namespace kavo_app
