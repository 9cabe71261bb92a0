#include "pipe/json_fields.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "base/near_name.hpp"
#include "base/user_error.hpp"

namespace kavo_app {

std::string JsonPlace::Text() const {
  const auto own = number > 0 ? fmt::format("number {}", number) : Shown(name);
  const auto before = outer != nullptr ? outer->Text() : std::string();
  return before.empty() ? own : fmt::format("{}: {}", before, own);
}

void JsonPlace::Fail(const std::string& advice) const { throw UserError({}, Text(), advice); }

std::string_view JsonText(const JsonNode& node, const JsonPlace& place) {
  std::string_view text;
  if (node.get(text) != simdjson::SUCCESS) {
    place.Fail("write text in quotation marks");
  }
  return text;
}

// JSON knows no number that is not finite, and the parser refuses those that do not fit.
double JsonNumber(const JsonNode& node, const JsonPlace& place) {
  double number = 0.0;
  if (node.get(number) != simdjson::SUCCESS) {
    place.Fail("write a number, without quotation marks");
  }
  return number;
}

simdjson::dom::array JsonList(const JsonNode& node, const JsonPlace& place) {
  simdjson::dom::array list;
  if (node.get(list) != simdjson::SUCCESS) {
    place.Fail("write a list: [ ..., ... ]");
  }
  return list;
}

simdjson::dom::object JsonObject(const JsonNode& node, const JsonPlace& place,
                                 std::string_view form) {
  simdjson::dom::object object;
  if (node.get(object) != simdjson::SUCCESS) {
    place.Fail(fmt::format("write an object: {}", form));
  }
  return object;
}

JsonFields::JsonFields(const simdjson::dom::object& object, const JsonPlace& place,
                       std::span<const std::string_view> known)
    : place_(place), known_(known) {
  if (known.size() > kMost) {
    throw std::logic_error("more fields than an object can have");
  }
  std::uint32_t met = 0;
  for (const auto& [key, node] : object) {
    const auto index = static_cast<std::size_t>(std::ranges::find(known, key) - known.begin());
    if (index == known.size()) {
      FailAt(key, UnknownAdvice(key, known));
    }
    const auto bit = std::uint32_t{1} << index;
    if ((met & bit) != 0) {
      FailAt(key, "is given twice; give it once");
    }
    met |= bit;
    if (!node.is_null()) {
      present_ |= bit;
      nodes_[index] = node;
    }
  }
}

const JsonNode* JsonFields::Find(std::string_view name) const {
  const auto index = static_cast<std::size_t>(std::ranges::find(known_, name) - known_.begin());
  const bool present = index < known_.size() && (present_ >> index & 1U) != 0;
  return present ? &nodes_[index] : nullptr;
}

const JsonNode& JsonFields::Required(std::string_view name, std::string_view meaning) const {
  const auto* node = Find(name);
  if (node == nullptr) {
    FailAt(name, fmt::format("is missing; {}", meaning));
  }
  return *node;
}

double JsonFields::Number(std::string_view name, double absent) const {
  const auto* node = Find(name);
  return node == nullptr ? absent : JsonNumber(*node, PlaceOf(name));
}

}  // namespace kavo_app
