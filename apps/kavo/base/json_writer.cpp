#include "base/json_writer.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>

#include "base/plain_text.hpp"

namespace kavo_app {
namespace {

template <class Number>
void AppendDigits(std::string& out, Number number) {
  std::array<char, 32> digits{};  // enough for a double and for any integer
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), end);
}

// ASCII that stands for itself, by its code.
constexpr auto kPlain = [] {
  std::array<bool, 256> plain{};
  std::fill(plain.begin() + ' ', plain.begin() + 0x80, true);
  plain['"'] = plain['\\'] = false;
  return plain;
}();

bool IsPlain(char c) { return kPlain[static_cast<unsigned char>(c)]; }

void AppendEscape(std::string& out, char c) {
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetters = "\"\\bfnrt";
  if (const auto i = kShort.find(c); i != kShort.npos) {
    out += '\\';
    out += kLetters[i];
  } else {
    fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned char>(c));
  }
}

// Appends the character that a text begins with, which is not a plain one; gives its bytes.
std::size_t AppendCharacter(std::string& out, std::string_view text) {
  const auto bytes = CharacterBytes(text);
  if (bytes == 0) {
    out += "\uFFFD";
    return 1;
  }
  if (bytes == 1) {
    AppendEscape(out, text.front());
  } else {
    out += text.substr(0, bytes);
  }
  return bytes;
}

void AppendText(std::string& out, std::string_view text) {
  out += '"';
  while (!text.empty()) {
    const auto plain =
        static_cast<std::size_t>(std::ranges::find_if_not(text, IsPlain) - text.begin());
    out += text.substr(0, plain);
    text.remove_prefix(plain);
    if (!text.empty()) {
      text.remove_prefix(AppendCharacter(out, text));
    }
  }
  out += '"';
}

}  // namespace

void JsonWriter::Text(std::string_view text) const {
  Begin();
  AppendText(out_, text);
}

void JsonWriter::Number(double number) const {
  if (!std::isfinite(number)) {
    Null();
    return;
  }
  Begin();
  AppendDigits(out_, number);
}

void JsonWriter::Integer(std::int64_t number) const {
  Begin();
  AppendDigits(out_, number);
}

void JsonWriter::Boolean(bool truth) const { Verbatim(truth ? "true" : "false"); }

void JsonWriter::Null() const { Verbatim("null"); }

void JsonWriter::Verbatim(std::string_view json) const {
  Begin();
  out_ += json;
}

ObjectWriter JsonWriter::Object() const {
  Begin();
  return {out_, indent_};
}

ArrayWriter JsonWriter::Array() const {
  Begin();
  return {out_, indent_};
}

// Writes what comes before the value.
void JsonWriter::Begin() const {
  if (scope_ == nullptr) {
    return;
  }
  if (!scope_->empty_) {
    out_ += ',';
  }
  scope_->empty_ = false;
  scope_->BeginLine(scope_->indent_);
  if (key_.data() != nullptr) {
    AppendText(out_, key_);
    out_ += scope_->indent_ == 0 ? ":" : ": ";
  }
}

JsonScope::JsonScope(std::string& out, std::size_t indent, char open, char close)
    : out_(out), indent_(indent), close_(close) {
  out_ += open;
}

JsonScope::~JsonScope() {
  if (!empty_) {
    BeginLine(indent_ - JsonWriter::kStep);
  }
  out_ += close_;
}

void JsonScope::BeginLine(std::size_t indent) const {
  if (indent_ != 0) {
    out_ += '\n';
    out_.append(indent, ' ');
  }
}

}  // namespace kavo_app
