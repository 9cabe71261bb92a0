// Typed access to the objects of a request in JSON; everything wrong is told with its place.
#pragma once

#include <simdjson.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace kavo_app {

using JsonNode = simdjson::dom::element;

/// Where in a request something stands: its name, or its number in a list, and what it is part of.
/// Made into text only when something is wrong.
struct JsonPlace {
  const JsonPlace* outer = nullptr;  ///< Null for the request itself.
  std::string_view name{};
  std::size_t number = 0;  ///< Counted from 1; 0 when the name tells.

  /// The names from the outermost inwards, such as "set: from: north"; empty for the request.
  std::string Text() const;
  /// Throws UserError for what stands here.
  [[noreturn]] void Fail(const std::string& advice) const;
};

/// The text, number, list or object at a place; throws UserError when it is something else.
std::string_view JsonText(const JsonNode& node, const JsonPlace& place);
double JsonNumber(const JsonNode& node, const JsonPlace& place);
simdjson::dom::array JsonList(const JsonNode& node, const JsonPlace& place);
simdjson::dom::object JsonObject(const JsonNode& node, const JsonPlace& place,
                                 std::string_view form = R"({"name": value, ...})");

/// The fields of one object. A field that is null counts as absent.
class JsonFields {
 public:
  /// @param object  the object; unknown and repeated fields are refused by throwing UserError.
  /// @param place   where it stands; it must outlive this.
  /// @param known   the names that it may have, at most kMost; they must outlive this.
  JsonFields(const simdjson::dom::object& object, const JsonPlace& place,
             std::span<const std::string_view> known);

  static constexpr std::size_t kMost = 24;

  /// The field of a known name; null when absent.
  const JsonNode* Find(std::string_view name) const;
  /// The field of a known name, which must be there.
  /// @param meaning  what to tell when it is missing.
  const JsonNode& Required(std::string_view name, std::string_view meaning) const;
  /// The finite number under a name; `absent` when there is none.
  double Number(std::string_view name, double absent) const;
  /// Throws UserError for what stands under a name.
  [[noreturn]] void FailAt(std::string_view name, const std::string& advice) const {
    PlaceOf(name).Fail(advice);
  }
  /// The place of a field, for messages.
  JsonPlace PlaceOf(std::string_view name) const { return {&place_, name, 0}; }

 private:
  const JsonPlace& place_;
  std::span<const std::string_view> known_;
  std::array<JsonNode, kMost> nodes_{};
  std::uint32_t present_ = 0;  // one bit for each known name
};

}  // namespace kavo_app
