// Typed access to the tables of a job file; everything wrong is told with its place.
#pragma once

#include <toml++/toml.h>

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/user_error.hpp"

namespace kavo_app {

/// One table of a job file, under the name that messages give it. Reading throws UserError.
class TomlReader {
 public:
  /// @param table     the table; it must outlive the reader.
  /// @param file      the job file, for messages.
  /// @param label     what the table is, such as "step 3001"; may be empty.
  /// @param fallback  where to look for keys that the table does not have; may be null.
  TomlReader(const toml::table& table, std::string file, std::string label,
             const toml::table* fallback = nullptr)
      : table_(table), fallback_(fallback), file_(std::move(file)), label_(std::move(label)) {}

  /// A reader of a row of a CSV file. Its values are text; numbers are read from it.
  /// @param row   where the row stands, for messages.
  /// @param step  the table to fall back on; null for none.
  TomlReader(const toml::table& table, const Place& row, std::string label, const TomlReader* step)
      : table_(table),
        fallback_(step != nullptr ? &step->table_ : nullptr),
        file_(step != nullptr ? step->file_ : row.file),
        label_(std::move(label)),
        row_(row) {}

  /// The node under a key; null when there is none.
  const toml::node* Find(std::string_view key) const;
  /// True when the table itself has the key, not the fallback.
  bool Owns(std::string_view key) const { return table_.contains(key); }
  /// What the table's own node under a key stands in place of: the fallback's; null for none.
  const toml::node* Replaced(std::string_view key) const {
    return Owns(key) && fallback_ != nullptr ? fallback_->get(key) : nullptr;
  }

  /// The node under a key, which must be there.
  /// @param meaning  what to tell when it is missing.
  const toml::node& Required(std::string_view key, std::string_view meaning) const;

  /// The text under a key, which may have several lines; empty when absent.
  std::string Text(std::string_view key) const;
  /// The text of one line under a key; empty when absent.
  std::string Line(std::string_view key) const;
  /// True or false under a key; false when absent.
  bool Flag(std::string_view key) const;
  /// The finite number under a key; `absent` when absent.
  double Number(std::string_view key, double absent) const;

  std::string TextOf(const toml::node& node, std::string_view field) const;
  double NumberOf(const toml::node& node, std::string_view field) const;
  const toml::table& TableOf(const toml::node& node, std::string_view field) const;
  const toml::array& ArrayOf(const toml::node& node, std::string_view field) const;

  /// A reader of a table within this one.
  TomlReader Inner(const toml::table& table, std::string_view field) const;

  /// The same of the table under a key that is there, whose keys come before those of the one under
  /// that key of the fallback.
  /// @param known  the keys that either can have.
  TomlReader Merged(std::string_view key, std::span<const std::string_view> known) const;

  /// Refuses every key that is not among the known ones.
  void Only(std::span<const std::string_view> known) const;

  /// Refuses a key that is probably meant to be the wanted one, which the table does not have.
  void RefuseMisspelt(std::string_view wanted) const;

  /// Ends the reading because of a field of this table.
  [[noreturn]] void Fail(const toml::node& node, std::string_view field,
                         const std::string& advice) const;
  /// The same because of a field that is there.
  [[noreturn]] void FailAt(std::string_view key, const std::string& advice) const {
    Fail(*Find(key), key, advice);
  }
  /// Ends the reading because of what the whole table says of a field.
  [[noreturn]] void FailHere(std::string_view field, const std::string& advice) const;
  /// Ends the reading because a field is missing.
  [[noreturn]] void FailMissing(std::string_view field, const std::string& advice) const;

  /// Where the table begins, or a part of it.
  Place PlaceOfAll() const { return PlaceOf(table_); }
  Place PlaceOf(const toml::node& node) const { return PlaceOf(node.source()); }

 private:
  // What comes from a row of a CSV file has no line in the job.
  Place PlaceOf(const toml::source_region& source) const {
    return FromRow(source) ? row_ : Place{file_, source.begin.line};
  }
  bool FromRow(const toml::source_region& source) const {
    return row_.line > 0 && source.begin.line == 0;
  }
  std::string Labelled(std::string_view field) const;

  const toml::table& table_;
  const toml::table* fallback_;
  std::string file_;
  std::string label_;
  Place row_{};  ///< Line 0 when the table is no row of a CSV file.
};

}  // namespace kavo_app
