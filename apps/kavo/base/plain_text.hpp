// Text that a user wrote: as a number, and shown back in a message.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavo_app {

/// All of the text as a finite number with a decimal point; nothing when it is not one.
std::optional<double> ReadNumber(std::string_view text);

/// How lists are written, for messages: other programs have commas in their numbers.
inline constexpr std::string_view kListRule =
    "columns stand between commas, and the decimal sign is a point";

/// What is wrong with text that is no number, and what would be right.
std::string NoNumberAdvice(std::string_view text);

/// Stands for what is no character: U+FFFD.
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// Whether a byte of UTF-8 text goes on with a character that began before it.
constexpr bool ContinuesSequence(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

/// True for a control character of ASCII.
bool IsControl(char c);

/// The text with its control characters written as TOML and JSON write them, such as \u000A: names
/// and texts may hold some, and would break the line or command the terminal.
std::string InOneLine(std::string_view text);

/// The same fit for a message: cut after `most` bytes.
std::string Shown(std::string_view text, std::size_t most = 60);

/// That in quotation marks.
inline std::string Quoted(std::string_view text) { return '"' + Shown(text) + '"'; }

/// The text with small letters for the capitals A to Z.
std::string Lower(std::string_view text);

/// Two remarks as one; either may be empty.
std::string Joined(const std::string& first, const std::string& second);

/// The bytes of the UTF-8 character that a text, which is not empty, begins with; 0 when there is
/// none. Surrogates and characters beyond the last one are none.
std::size_t CharacterBytes(std::string_view text);

/// The text, with U+FFFD for each byte that is no part of a UTF-8 character.
std::string AsUtf8(std::string_view text);

/// How many columns UTF-8 text takes.
std::size_t Columns(std::string_view text);

}  // namespace kavo_app
