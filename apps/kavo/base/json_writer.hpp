// JSON, written value by value at the end of a text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavo_app {

class ArrayWriter;
class ObjectWriter;
class JsonScope;

enum class JsonLayout {
  kOneLine,   ///< Without line feeds and blanks.
  kIndented,  ///< Every member and element on a line of its own.
};

/// The place of one value. Commas, keys and indentation come with the value when it is written: a
/// place that is left empty leaves nothing behind, and one that is used twice is two values.
class JsonWriter {
 public:
  /// The place at the end of a text.
  explicit JsonWriter(std::string& out, JsonLayout layout = JsonLayout::kOneLine)
      : out_(out), indent_(layout == JsonLayout::kIndented ? kStep : 0) {}

  /// Text in quotation marks, escaped. Bytes that are no part of a UTF-8 character become U+FFFD,
  /// each.
  void Text(std::string_view text) const;
  /// The shortest text that reads back as the same number; null for one that is not finite, which
  /// JSON has no word for.
  void Number(double number) const;
  void Integer(std::int64_t number) const;
  void Boolean(bool truth) const;
  void Null() const;
  /// A value that is JSON as it stands.
  void Verbatim(std::string_view json) const;

  /// Opens an object or an array, which closes where what is given here goes out of scope. Until
  /// then nothing is written outside of it.
  [[nodiscard]] ObjectWriter Object() const;
  [[nodiscard]] ArrayWriter Array() const;

 private:
  friend class JsonScope;
  static constexpr std::size_t kStep = 2;

  inline JsonWriter(JsonScope& scope, std::string_view key);
  void Begin() const;

  std::string& out_;
  JsonScope* scope_ = nullptr;  // null for a value that is in no other
  std::string_view key_;        // without data in an array
  std::size_t indent_;          // of what is in the value; 0 on one line
};

/// What is open between braces or brackets.
class JsonScope {
 public:
  JsonScope(const JsonScope&) = delete;
  JsonScope& operator=(const JsonScope&) = delete;

 protected:
  JsonScope(std::string& out, std::size_t indent, char open, char close);
  ~JsonScope();

  JsonWriter Place(std::string_view key = {}) { return {*this, key}; }

 private:
  friend class JsonWriter;
  void BeginLine(std::size_t indent) const;

  std::string& out_;
  std::size_t indent_;  // of members and elements; 0 on one line
  char close_;
  bool empty_ = true;
};

/// An open object.
class ObjectWriter : public JsonScope {
 public:
  /// The place of the member's value.
  [[nodiscard]] JsonWriter Key(std::string_view key) { return Place(key); }
  /// Writes a text that there may be: no member for an empty one.
  void OptionalText(std::string_view key, std::string_view text) {
    if (!text.empty()) {
      Key(key).Text(text);
    }
  }

 private:
  friend class JsonWriter;
  ObjectWriter(std::string& out, std::size_t indent) : JsonScope(out, indent, '{', '}') {}
};

/// An open array.
class ArrayWriter : public JsonScope {
 public:
  /// The place of the next element.
  [[nodiscard]] JsonWriter Next() { return Place(); }

 private:
  friend class JsonWriter;
  ArrayWriter(std::string& out, std::size_t indent) : JsonScope(out, indent, '[', ']') {}
};

inline JsonWriter::JsonWriter(JsonScope& scope, std::string_view key)
    : out_(scope.out_),
      scope_(&scope),
      key_(key),
      indent_(scope.indent_ == 0 ? 0 : scope.indent_ + kStep) {}

}  // namespace kavo_app
