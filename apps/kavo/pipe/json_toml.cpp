#include "pipe/json_toml.hpp"

namespace kavo_app {
namespace {

// Calls `add` with the node as TOML has it.
void Convert(const JsonNode& node, const JsonPlace& place, const auto& add) {
  switch (node.type()) {
    case simdjson::dom::element_type::OBJECT:
      return add(TomlOf(JsonObject(node, place), place));
    case simdjson::dom::element_type::ARRAY:
      return add(TomlOf(JsonList(node, place), place));
    case simdjson::dom::element_type::STRING:
      return add(JsonText(node, place));
    case simdjson::dom::element_type::BOOL:
      return add(bool(node));
    case simdjson::dom::element_type::NULL_VALUE:
      return;
    default:
      return add(JsonNumber(node, place));
  }
}

}  // namespace

toml::table TomlOf(const simdjson::dom::object& object, const JsonPlace& place) {
  toml::table table;
  for (const auto& field : object) {
    const JsonPlace at{&place, field.key, 0};
    Convert(field.value, at, [&](auto&& value) {
      if (!table.insert(field.key, std::forward<decltype(value)>(value)).second) {
        at.Fail("is given twice; give it once");
      }
    });
  }
  return table;
}

toml::array TomlOf(const simdjson::dom::array& list, const JsonPlace& place) {
  toml::array out;
  for (const JsonNode element : list) {
    Convert(element, {&place, {}, out.size() + 1},
            [&out](auto&& value) { out.push_back(std::forward<decltype(value)>(value)); });
  }
  return out;
}

}  // namespace kavo_app
