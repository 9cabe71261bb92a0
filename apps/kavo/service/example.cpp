#include "service/example.hpp"

#include <fmt/format.h>
#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/json_writer.hpp"

namespace kavo_app {
namespace {

// What an example gives for a field, as a job writes it: for one service, or for all that have no
// row of their own. An optional field shows only where its service has a row.
struct ExampleRow {
  std::string_view service;
  std::string_view field;
  std::string_view text;
};

constexpr std::string_view kAll;

// One scene: a station at 1000, 2000 with its circle's zero at azimuth 10 degrees where sights are
// meant, and things around it at lengths that can be worked in the head.
constexpr std::array kRows = {
    ExampleRow{kAll, "station", "{ north = 1000, east = 2000, elev = 50 }"},
    ExampleRow{kAll, "point", "{ north = 1030, east = 2040, elev = 52 }"},
    ExampleRow{kAll, "azimuth", R"("53-07-48")"},
    ExampleRow{kAll, "horizDist", "50"},
    ExampleRow{kAll, "dElev", "2"},
    ExampleRow{kAll, "ha", R"("45-00-00")"},
    ExampleRow{kAll, "va", R"("88-00-00")"},
    ExampleRow{kAll, "slopeDist", "50.04"},
    ExampleRow{"radiate", "orient", R"("10-00-00")"},
    ExampleRow{"radiate", "va", R"("88-00-00")"},
    ExampleRow{"radiate", "slopeDist", "50.04"},
    ExampleRow{"radiate", "ih", "1.6"},
    ExampleRow{"radiate", "th", "1.5"},
    ExampleRow{kAll, "from", "{ north = 1000, east = 2000, elev = 50 }"},
    ExampleRow{kAll, "to", "{ north = 1100, east = 2000, elev = 55 }"},
    ExampleRow{kAll, "line",
               "{ from = { north = 1000, east = 2000 }, to = { north = 1100, east = 2000 } }"},
    ExampleRow{kAll, "along", "30"},
    ExampleRow{kAll, "offset", "2"},
    ExampleRow{"transform-line", "rotation", R"("90-00-00")"},
    ExampleRow{"transform-line", "offset", "2"},
    ExampleRow{kAll, "points", R"([
  { north = 1000, east = 2000 },
  { north = 1030, east = 2000 },
  { north = 1030, east = 2040 },
])"},
    ExampleRow{kAll, "line1", "{ from = { north = 1000, east = 2000 }, azimuth = \"45-00-00\" }"},
    ExampleRow{kAll, "line2", "{ from = { north = 1000, east = 2100 }, azimuth = \"315-00-00\" }"},
    ExampleRow{kAll, "centre", "{ north = 1050, east = 2015 }"},
    ExampleRow{"intersect-line-circle", "radius", "25"},
    ExampleRow{kAll, "centre1", "{ north = 1000, east = 2000 }"},
    ExampleRow{kAll, "radius1", "50"},
    ExampleRow{kAll, "centre2", "{ north = 1060, east = 2000 }"},
    ExampleRow{kAll, "radius2", "50"},
    ExampleRow{kAll, "first", "{ north = 1000, east = 2000, elev = 50 }"},
    ExampleRow{kAll, "second", "{ north = 1000.6, east = 2000.8, elev = 50 }"},
    ExampleRow{kAll, "target", "0.5"},
    ExampleRow{kAll, "elev1", "50"},
    ExampleRow{kAll, "offset1", "5"},
    ExampleRow{kAll, "elev2", "45"},
    ExampleRow{kAll, "offset2", "15"},
    ExampleRow{kAll, "reference", "{ north = 1030, east = 2030 }"},
    ExampleRow{kAll, "wallFrom", "{ north = 1050, east = 2000 }"},
    ExampleRow{kAll, "wallTo", "{ north = 1050, east = 2100 }"},
    ExampleRow{kAll, "wall1From", "{ north = 1000, east = 2010 }"},
    ExampleRow{kAll, "wall1To", "{ north = 1050, east = 2010 }"},
    ExampleRow{kAll, "wall2From", "{ north = 1100, east = 2050 }"},
    ExampleRow{kAll, "wall2To", "{ north = 1100, east = 2100, elev = 50 }"},
    ExampleRow{"point-on-edge", "from", "{ north = 1050, east = 2000, elev = 52 }"},
    ExampleRow{"point-on-edge", "to", "{ north = 1050, east = 2100, elev = 53 }"},
    ExampleRow{"column", "ha2", R"("39-15-39")"},
    ExampleRow{"column", "ha3", R"("50-44-21")"},
    ExampleRow{kAll, "start", "{ north = 1000, east = 2000, elev = 50 }"},
    ExampleRow{kAll, "end", "{ north = 1100, east = 2100, elev = 50 }"},
    ExampleRow{kAll, "startDir", R"("0-00-00")"},
    ExampleRow{kAll, "endDir", R"("90-00-00")"},
    ExampleRow{kAll, "radius", "100"},
    ExampleRow{kAll, "arcLength", "150"},
    ExampleRow{kAll, "p1", "{ north = 1050, east = 2000, elev = 50 }"},
    ExampleRow{kAll, "p2", "{ north = 1050, east = 2100, elev = 50 }"},
    ExampleRow{"plane-set", "p3", "{ north = 1055, east = 2050, elev = 60 }"},
    ExampleRow{kAll, "elev", "50"},
    ExampleRow{kAll, "vertDiff", "1.5"},
    ExampleRow{"benchmark", "ih", "1.6"},
    ExampleRow{"resect-3", "sights", R"([
  { point = { north = 1100, east = 2000 }, ha = "350-00-00" },
  { point = { north = 1000, east = 2100 }, ha = "80-00-00" },
  { point = { north = 900, east = 2000 }, ha = "170-00-00" },
])"},
    ExampleRow{"resect", "sights", R"([
  { point = { north = 1100, east = 2000 }, ha = "350-00-00", horizDist = 100.002 },
  { point = { north = 1000, east = 2100 }, ha = "80-00-00", horizDist = 100 },
  { point = { north = 900, east = 2000 }, ha = "170-00-00", horizDist = 99.999 },
])"},
    ExampleRow{"face-check", "sights", R"([
  { point = { north = 1100, east = 2000, elev = 51 }, ha = "350-00-00", va = "89-25-38" },
  { point = { north = 1100, east = 2000, elev = 51 }, ha = "170-00-06", va = "270-34-28" },
])"},
    ExampleRow{kAll, "sights", R"([
  { point = { north = 1100, east = 2000 }, ha = "350-00-00", horizDist = 100 },
  { point = { north = 1000, east = 2100 }, ha = "80-00-00", horizDist = 100 },
])"},
    ExampleRow{kAll, "measured", "{ north = 1030.004, east = 2040.003, elev = 52.002 }"},
    ExampleRow{kAll, "known", "{ north = 1030, east = 2040, elev = 52 }"},
    ExampleRow{kAll, "tolerance", "0.02"},
    ExampleRow{kAll, "angle-tolerance", R"("0-00-20")"},
    ExampleRow{"backsight", "orient", R"("8-07-53")"},
};

// The text for a field; empty when the example does not show it.
std::string_view TextOf(const Service& service, const Field& field) {
  for (const auto owner : {service.name, kAll}) {
    const auto row = std::ranges::find_if(kRows, [&](const ExampleRow& candidate) {
      return candidate.service == owner && candidate.field == field.name;
    });
    if (row != kRows.end() && (field.need == Need::kRequired || owner == service.name)) {
      return row->text;
    }
  }
  if (field.need == Need::kRequired) {
    throw std::logic_error(fmt::format("no example of {} for {}", field.name, service.name));
  }
  return {};
}

// The first service that sets a base.
const Service& SetterOf(const Field& base) {
  const auto setter = std::ranges::find_if(Services(), [&base](const Service& candidate) {
    return std::ranges::any_of(candidate.outputs,
                               [&base](const Field& output) { return Fits(output, base); });
  });
  return *setter;
}

// The inputs of a service as a job writes them, without its base.
std::string InputLines(const Service& service) {
  std::string lines;
  for (const auto& field : service.inputs) {
    if (field.kind == Kind::kFigure) {
      continue;
    }
    if (const auto text = TextOf(service, field); !text.empty()) {
      lines += fmt::format("{} = {}\n", field.name, text);
    }
  }
  return lines;
}

// The keys of a table in the order in which they are written.
std::vector<toml::key> KeysAsWritten(const toml::table& table) {
  std::vector<toml::key> keys;
  for (const auto& [key, value] : table) {
    keys.push_back(key);
  }
  std::ranges::sort(keys, std::less<>{}, [](const toml::key& key) {
    return std::pair(key.source().begin.line, key.source().begin.column);
  });
  return keys;
}

void WriteNode(const JsonWriter& json, const toml::node& node) {
  if (const auto* table = node.as_table()) {
    auto object = json.Object();
    for (const auto& key : KeysAsWritten(*table)) {
      WriteNode(object.Key(key.str()), *table->get(key.str()));
    }
  } else if (const auto* list = node.as_array()) {
    auto array = json.Array();
    for (const auto& element : *list) {
      WriteNode(array.Next(), element);
    }
  } else if (node.is_string()) {
    json.Text(node.value_or(std::string_view()));
  } else {
    json.Number(node.value_or(0.0));
  }
}

// A service and its inputs, in the table's order.
void WriteCall(ObjectWriter& object, const Service& service) {
  object.Key("service").Text(service.name);
  const auto values = toml::parse(InputLines(service));
  for (const auto& field : service.inputs) {
    if (const auto* node = values.get(field.name)) {
      WriteNode(object.Key(field.name), *node);
    }
  }
}

void WriteRequest(const JsonWriter& json, const Service& service) {
  auto request = json.Object();
  WriteCall(request, service);
  if (const auto* base = BaseInput(service)) {
    auto set = request.Key("set").Object();
    WriteCall(set, SetterOf(*base));
  }
}

}  // namespace

std::string ExampleSteps(const Service& service) {
  std::string steps;
  const auto* base = BaseInput(service);
  if (base != nullptr) {
    const Service& setter = SetterOf(*base);
    steps = fmt::format("[[step]]\nservice = \"{}\"\nname = \"my {}\"\n{}\n", setter.name,
                        base->name, InputLines(setter));
  }
  steps += fmt::format("[[step]]\nservice = \"{}\"\n", service.name);
  if (base != nullptr) {
    steps += fmt::format("{0} = \"my {0}\"\n", base->name);
  }
  return steps + InputLines(service);
}

std::string ExampleRequest(const Service& service) {
  JsonDocument request;
  WriteRequest(request.Start(), service);
  return std::string(request.Text());
}

}  // namespace kavo_app
