#include "pipe_request.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>

#include "input_reader.hpp"
#include "job_settings.hpp"
#include "json_toml.hpp"
#include "sight_reader.hpp"
#include "user_error.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 4> kRequestKeys = {"service", "id", "angles", "settings"};
constexpr std::string_view kSet = "set";
constexpr std::array<std::string_view, 3> kPointKeys = {"north", "east", "elev"};
constexpr std::array<std::string_view, 3> kLineKeys = {"from", "to", "azimuth"};
// The library counts points in 16 bits.
constexpr std::size_t kMostPoints = std::numeric_limits<std::int16_t>::max();
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

IntAngle AngleOf(const JsonNode& node, AngleUnit angles, const JsonPlace& place) {
  const auto reading = node.is_number() ? ReadAngle(JsonNumber(node, place), angles)
                                        : ReadAngle(JsonText(node, place), angles);
  if (!reading.angle) {
    place.Fail(reading.complaint);
  }
  return *reading.angle;
}

const JsonNode& Required(const JsonFields& fields, std::string_view name,
                         std::string_view meaning) {
  const auto* node = fields.Find(name);
  if (node == nullptr) {
    fields.PlaceOf(name).Fail(fmt::format("is missing; {}", meaning));
  }
  return *node;
}

CoordPt PointOf(const JsonNode& node, const JsonPlace& place) {
  const JsonFields fields(JsonObject(node, place), place, kPointKeys);
  constexpr std::string_view kMeaning = "a point has north and east, and may have elev";
  CoordPt point{};
  point.north = JsonNumber(Required(fields, "north", kMeaning), fields.PlaceOf("north"));
  point.east = JsonNumber(Required(fields, "east", kMeaning), fields.PlaceOf("east"));
  point.elev = fields.Number("elev", 0.0);
  point.flags = fields.Find("elev") != nullptr ? COORD_HAS_NE | COORD_HAS_ELEV : COORD_HAS_NE;
  return point;
}

LineDef LineOf(const JsonNode& node, AngleUnit angles, const JsonPlace& place) {
  const JsonFields fields(JsonObject(node, place), place, kLineKeys);
  constexpr std::string_view kMeaning = "a line has from, and either to or azimuth";
  LineDef line{};
  line.p1 = PointOf(Required(fields, "from", kMeaning), fields.PlaceOf("from"));
  const auto* azimuth = fields.Find("azimuth");
  if (azimuth != nullptr && fields.Find("to") != nullptr) {
    fields.PlaceOf("azimuth").Fail("give either this or to");
  }
  if (azimuth != nullptr) {
    line.mode = LINE_MODE_DIRECTION;
    line.direction = AngleOf(*azimuth, angles, fields.PlaceOf("azimuth"));
  } else {
    line.mode = LINE_MODE_TWO_POINTS;
    line.p2 = PointOf(Required(fields, "to", kMeaning), fields.PlaceOf("to"));
  }
  return line;
}

std::vector<CoordPt> PointsOf(const JsonNode& node, const JsonPlace& place) {
  std::vector<CoordPt> points;
  for (const JsonNode element : JsonList(node, place)) {
    if (points.size() == kMostPoints) {
      place.Fail(fmt::format("has more than {} points", kMostPoints));
    }
    points.push_back(PointOf(element, {&place, {}, points.size() + 1}));
  }
  return points;
}

// Sights can be given in many ways: they go through the reader of jobs, which knows what is right.
std::vector<Sight> SightsOf(const JsonFields& fields, const Field& field, AngleUnit angles) {
  const auto place = fields.PlaceOf(field.name);
  const auto list = JsonList(*fields.Find(field.name), place);  // a job could also name a file
  const toml::table table{{field.name, TomlOf(list, place)}};
  const Names noNames;
  const TomlReader reader(table, "", "");
  const auto input =
      ReadSights(InputReader(noNames, angles, {}), reader, *reader.Find(field.name), field);
  std::vector<Sight> sights;
  for (const auto& part : input.parts) {
    sights.push_back(std::get<std::vector<Sight>>(part.value).front());
    if (!part.parts.empty()) {
      sights.back().point = std::get<CoordPt>(part.parts.front().value);
    }
  }
  return sights;
}

// The value of a field that is there.
Value ValueOf(const JsonFields& fields, const Field& field, AngleUnit angles) {
  const auto& node = *fields.Find(field.name);
  const auto place = fields.PlaceOf(field.name);
  switch (field.kind) {
    case Kind::kPoint:
      return PointOf(node, place);
    case Kind::kPoints:
      return PointsOf(node, place);
    case Kind::kLine:
      return LineOf(node, angles, place);
    case Kind::kSights:
      return SightsOf(fields, field, angles);
    default:
      break;
  }
  if (IsAngle(field.kind)) {
    return AngleOf(node, angles, place);
  }
  return JsonNumber(node, place);
}

// The service that an object names; the rest of its fields depends on it.
const Service& ServiceOf(const simdjson::dom::object& object, const JsonPlace& place) {
  const JsonPlace at{&place, "service", 0};
  JsonNode node;
  if (object.at_key("service").get(node) != simdjson::SUCCESS) {
    at.Fail("is missing; kavo list names them");
  }
  const auto name = JsonText(node, at);
  const auto* service = FindService(name);
  if (service == nullptr) {
    at.Fail(fmt::format("\"{}\" is no service; kavo list names them", name));
  }
  return *service;
}

const Field* BaseOf(const Service& service) {
  const auto base = std::ranges::find(service.inputs, Kind::kFigure, &Field::kind);
  return base == service.inputs.end() ? nullptr : &*base;
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

std::vector<bool> Given(const std::vector<Value>& inputs) {
  std::vector<bool> given(inputs.size());
  std::transform(inputs.begin(), inputs.end(), given.begin(), Available);
  return given;
}

std::vector<Value> InputsOf(const JsonFields& fields, const Service& service, AngleUnit angles,
                            const JsonPlace& place) {
  std::vector<Value> inputs;
  inputs.reserve(service.inputs.size());
  for (const auto& field : service.inputs) {
    if (field.kind != Kind::kFigure && fields.Find(field.name) != nullptr) {
      inputs.push_back(ValueOf(fields, field, angles));
      continue;
    }
    if (field.kind != Kind::kFigure && field.need == Need::kRequired) {
      fields.PlaceOf(field.name).Fail(fmt::format("is missing; {}", field.meaning));
    }
    inputs.emplace_back();
  }
  if (const auto trouble = ChoiceTrouble(service, Given(inputs)); !trouble.empty()) {
    place.Fail(trouble);
  }
  return inputs;
}

// The base that the request's service measures against, set by a service of its own.
void ReadSet(const JsonFields& fields, const Field& base, Request& request) {
  const auto place = fields.PlaceOf(kSet);
  const auto object = JsonObject(
      Required(fields, kSet,
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
  request.setInputs =
      InputsOf(JsonFields(object, place, keys.All()), service, request.angles, place);
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
    place.Fail("is not a notation; there are dms, gon, deg, raw");
  }
  return *unit;
}

// So do settings.
InstrumentSettings SettingsOf(const JsonFields& fields) {
  const auto* node = fields.Find("settings");
  if (node == nullptr) {
    return {};
  }
  const auto place = fields.PlaceOf("settings");
  const toml::table top{{"settings", TomlOf(JsonObject(*node, place), place)}};
  Job job;
  ReadSettings(TomlReader(top, "", ""), job);
  return job.settings;
}

// The id as it is echoed; ids are what other programs know their records by.
std::string IdOf(const simdjson::dom::object& object) {
  JsonNode node;
  if (object.at_key("id").get(node) != simdjson::SUCCESS || node.is_null()) {
    return {};
  }
  if (node.is_array() || node.is_object()) {
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
  request.settings = SettingsOf(fields);
  request.inputs = InputsOf(fields, *request.service, request.angles, place);
  if (const auto* base = BaseOf(*request.service)) {
    ReadSet(fields, *base, request);
  }
  return request;
}

}  // namespace kavo_app
