#include "job/toml_reader.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/near_name.hpp"
#include "base/plain_text.hpp"

namespace kavo_app {

const toml::node* TomlReader::Find(std::string_view key) const {
  const auto* node = table_.get(key);
  return node == nullptr && fallback_ != nullptr ? fallback_->get(key) : node;
}

const toml::node& TomlReader::Required(std::string_view key, std::string_view meaning) const {
  const auto* node = Find(key);
  if (node == nullptr) {
    FailMissing(key, std::string(meaning));
  }
  return *node;
}

std::string TomlReader::Text(std::string_view key) const {
  const auto* node = Find(key);
  auto text = node == nullptr ? std::string() : TextOf(*node, key);
  if (std::ranges::any_of(text, [](char c) { return c != '\n' && IsControl(c); })) {
    FailAt(key, "has control characters other than line feeds; leave them out");
  }
  return text;
}

std::string TomlReader::Line(std::string_view key) const {
  const auto* node = Find(key);
  auto text = node == nullptr ? std::string() : TextOf(*node, key);
  if (std::ranges::any_of(text, IsControl)) {
    FailAt(key, "is one line of text, without control characters");
  }
  return text;
}

bool TomlReader::Flag(std::string_view key) const {
  const auto* node = Find(key);
  if (node == nullptr) {
    return false;
  }
  if (!node->is_boolean()) {
    Fail(*node, key, "write true or false");
  }
  return node->value_or(false);
}

double TomlReader::Number(std::string_view key, double absent) const {
  const auto* node = Find(key);
  return node == nullptr ? absent : NumberOf(*node, key);
}

std::string TomlReader::TextOf(const toml::node& node, std::string_view field) const {
  if (!node.is_string()) {
    Fail(node, field, "write text in quotation marks");
  }
  return node.value_or(std::string());
}

double TomlReader::NumberOf(const toml::node& node, std::string_view field) const {
  if (FromRow(node.source()) && node.is_string()) {
    const auto text = TextOf(node, field);
    const auto number = ReadNumber(text);
    if (!number) {
      Fail(node, field, NoNumberAdvice(text));
    }
    return *number;
  }
  if (!node.is_number()) {
    Fail(node, field, "write a number, without quotation marks");
  }
  const auto number = node.value<double>();  // none for an integer that a double cannot hold
  if (!number) {
    Fail(node, field, "has more digits than can be kept; write a number like 123.456");
  }
  if (!std::isfinite(*number)) {
    Fail(node, field, "is not finite; write a number like 123.456");
  }
  return *number;
}

const toml::table& TomlReader::TableOf(const toml::node& node, std::string_view field) const {
  if (!node.is_table()) {
    Fail(node, field,
         FromRow(node.source())
             ? fmt::format("is no column; its parts are, such as {}.north", field)
             : "write a table: { name = value, ... }");
  }
  return *node.as_table();
}

const toml::array& TomlReader::ArrayOf(const toml::node& node, std::string_view field) const {
  if (!node.is_array()) {
    Fail(node, field,
         FromRow(node.source()) ? "a row has no room for a list; give it in the step"
                                : "write a list: [ ..., ... ]");
  }
  return *node.as_array();
}

TomlReader TomlReader::Inner(const toml::table& table, std::string_view field) const {
  TomlReader inner(table, file_, Labelled(field));
  inner.row_ = row_;
  return inner;
}

TomlReader TomlReader::Merged(std::string_view key, std::span<const std::string_view> known) const {
  auto merged = Inner(TableOf(*Find(key), key), key);
  merged.Only(known);
  if (const auto* replaced = Replaced(key)) {
    const auto& below = TableOf(*replaced, key);
    Inner(below, key).Only(known);
    merged.fallback_ = &below;
  }
  return merged;
}

void TomlReader::Only(std::span<const std::string_view> known) const {
  for (const auto& [key, node] : table_) {
    if (std::ranges::find(known, key.str()) == known.end()) {
      throw UserError(PlaceOf(key.source()), Labelled(Shown(key.str())),
                      UnknownAdvice(key.str(), known));
    }
  }
}

void TomlReader::RefuseMisspelt(std::string_view wanted) const {
  for (const auto& [key, node] : table_) {
    if (const auto advice = MisspeltAdvice(key.str(), wanted); !advice.empty()) {
      throw UserError(PlaceOf(key.source()), Labelled(Shown(key.str())), advice);
    }
  }
}

void TomlReader::Fail(const toml::node& node, std::string_view field,
                      const std::string& advice) const {
  throw UserError(PlaceOf(node), Labelled(field), advice);
}

void TomlReader::FailHere(std::string_view field, const std::string& advice) const {
  throw UserError(PlaceOf(table_), Labelled(field), advice);
}

void TomlReader::FailMissing(std::string_view field, const std::string& advice) const {
  FailHere(field, "is missing; " + advice);
}

std::string TomlReader::Labelled(std::string_view field) const {
  return label_.empty() ? std::string(field) : fmt::format("{}: {}", label_, field);
}

}  // namespace kavo_app
