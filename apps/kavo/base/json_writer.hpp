// JSON, written value by value. RapidJSON prints it; what is here keeps callers to what is JSON.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string_view>
#include <variant>

namespace kavo_app {

class ArrayWriter;
class JsonWriter;
class ObjectWriter;

enum class JsonLayout {
  kOneLine,   ///< Without line feeds and blanks.
  kIndented,  ///< Every member and element on a line of its own.
};

/// A text of JSON, which is one value.
class JsonDocument {
 public:
  explicit JsonDocument(JsonLayout layout = JsonLayout::kOneLine);
  JsonDocument(const JsonDocument&) = delete;
  JsonDocument& operator=(const JsonDocument&) = delete;

  /// Empties the text; gives the place of its value.
  JsonWriter Start();
  /// What was written since, until the next start.
  std::string_view Text() const { return {buffer_.GetString(), buffer_.GetSize()}; }

 private:
  using LinePrinter = rapidjson::Writer<rapidjson::StringBuffer>;
  using IndentedPrinter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;
  friend class JsonWriter;
  friend class ArrayWriter;
  friend class ObjectWriter;
  template <class Write>
  void Print(Write write) {
    if (auto* indented = std::get_if<IndentedPrinter>(&printer_)) {
      write(*indented);
    } else {
      write(*std::get_if<LinePrinter>(&printer_));
    }
  }

  rapidjson::StringBuffer buffer_;
  std::variant<LinePrinter, IndentedPrinter> printer_;
};

/// The place of one value. A member's key comes with the value when it is written: a place that is
/// left empty leaves nothing behind.
class JsonWriter {
 public:
  /// Text in quotation marks, escaped. The text is UTF-8.
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
  friend class ArrayWriter;
  friend class JsonDocument;
  friend class ObjectWriter;

  explicit JsonWriter(JsonDocument& document, std::string_view key = {})
      : document_(document), key_(key) {}
  template <class Write>
  void Print(Write write) const;

  JsonDocument& document_;
  std::string_view key_;  // without data where the value has none
};

/// An open object.
class ObjectWriter {
 public:
  ObjectWriter(const ObjectWriter&) = delete;
  ObjectWriter& operator=(const ObjectWriter&) = delete;
  ~ObjectWriter();

  /// The place of the member's value.
  [[nodiscard]] JsonWriter Key(std::string_view key) { return JsonWriter(document_, key); }
  /// Writes a text that there may be: no member for an empty one.
  void OptionalText(std::string_view key, std::string_view text);

 private:
  friend class JsonWriter;
  explicit ObjectWriter(JsonDocument& document) : document_(document) {}

  JsonDocument& document_;
};

/// An open array.
class ArrayWriter {
 public:
  ArrayWriter(const ArrayWriter&) = delete;
  ArrayWriter& operator=(const ArrayWriter&) = delete;
  ~ArrayWriter();

  /// The place of the next element.
  [[nodiscard]] JsonWriter Next() { return JsonWriter(document_); }

 private:
  friend class JsonWriter;
  explicit ArrayWriter(JsonDocument& document) : document_(document) {}

  JsonDocument& document_;
};

}  // namespace kavo_app
