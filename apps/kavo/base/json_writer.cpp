#include "base/json_writer.hpp"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace kavo_app {
namespace {

constexpr unsigned kIndent = 2;

rapidjson::SizeType SizeOf(std::string_view text) {
  return static_cast<rapidjson::SizeType>(text.size());
}

}  // namespace

JsonDocument::JsonDocument(JsonLayout layout) {
  if (layout == JsonLayout::kIndented) {
    auto& printer = printer_.emplace<IndentedPrinter>().SetIndent(' ', kIndent);
    printer.SetFormatOptions(rapidjson::kFormatDefault);  // RapidJSON 1.1 leaves them unset
  }
}

JsonWriter JsonDocument::Start() {
  buffer_.Clear();
  Print([this](auto& printer) { printer.Reset(buffer_); });
  return JsonWriter(*this);
}

// The key before the value, if it has one.
template <class Write>
void JsonWriter::Print(Write write) const {
  document_.Print([&](auto& printer) {
    if (key_.data() != nullptr) {
      printer.Key(key_.data(), SizeOf(key_));
    }
    write(printer);
  });
}

void JsonWriter::Text(std::string_view text) const {
  Print([text](auto& printer) {
    printer.String(text.empty() ? "" : text.data(), SizeOf(text));  // which must not be null
  });
}

// RapidJSON's own number may have a digit more than is needed.
void JsonWriter::Number(double number) const {
  if (!std::isfinite(number)) {
    Null();
    return;
  }
  std::array<char, 32> digits{};  // enough for any double
  const auto* const end = fmt::format_to(digits.data(), "{}", number);
  Verbatim({digits.data(), end});
}

void JsonWriter::Integer(std::int64_t number) const {
  Print([number](auto& printer) { printer.Int64(number); });
}

void JsonWriter::Boolean(bool truth) const {
  Print([truth](auto& printer) { printer.Bool(truth); });
}

void JsonWriter::Null() const {
  Print([](auto& printer) { printer.Null(); });
}

void JsonWriter::Verbatim(std::string_view json) const {
  // Of the kind of a value RapidJSON only wants to know that it is no key.
  Print([json](auto& printer) {
    printer.RawValue(json.data(), json.size(), rapidjson::kNumberType);
  });
}

ObjectWriter JsonWriter::Object() const {
  Print([](auto& printer) { printer.StartObject(); });
  return ObjectWriter(document_);
}

ArrayWriter JsonWriter::Array() const {
  Print([](auto& printer) { printer.StartArray(); });
  return ArrayWriter(document_);
}

ObjectWriter::~ObjectWriter() {
  document_.Print([](auto& printer) { printer.EndObject(); });
}

void ObjectWriter::OptionalText(std::string_view key, std::string_view text) {
  if (!text.empty()) {
    Key(key).Text(text);
  }
}

ArrayWriter::~ArrayWriter() {
  document_.Print([](auto& printer) { printer.EndArray(); });
}

}  // namespace kavo_app
