// The words of a row: numbers and records, read as inputs and compared with outputs.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "records.hpp"
#include "yardstick.hpp"

namespace kavo_test {

/// How a file spells its numbers: in bits, for machines, or readably, for people.
enum class Spelling { kBits, kReadable };

/// The number that a word stands for, or nothing. In bits: its big-endian value in hex digits, 16
/// of a double, 8 of a 32-bit and 4 of a 16-bit integer. Readable doubles are decimal, or hex with
/// 0x before; readable integers are sums such as `90d-16`, where d stands for degrees. Both may be
/// constants of the header by name.
template <class T>
std::optional<T> Number(std::string_view word, Spelling spelling);

/// The word that stands for a number.
template <class T>
std::string Word(T value, Spelling spelling);

/// Whether the word expects this value: its number to the bit (any NaN is one value), `_` for bytes
/// that were not touched, or `number~tolerance`.
template <class T>
bool Expects(std::string_view word, T value, Spelling spelling);

/// What is wrong with a row; nothing when it holds.
using Complaints = std::vector<std::string>;

/// The words on one side of a call, taken from left to right. A word that does not fit reads as
/// something harmless, and AreUsedUp() is false for the rest.
class Words {
 public:
  Words(std::vector<std::string> words, Spelling spelling, Yardstick& yardstick)
      : words_(std::move(words)), spelling_(spelling), yardstick_(yardstick) {}

  /// True when all words were taken and each one fitted.
  [[nodiscard]] bool AreUsedUp() const { return fit_ && next_ == words_.size(); }

  /// Takes the next word if it is this one.
  bool Accept(std::string_view word);

  template <class T>
  void Read(T& value) {
    const auto number = Number<T>(Next(), spelling_);
    fit_ = fit_ && number.has_value();
    value = number.value_or(T{});
    if constexpr (std::is_same_v<T, double>) {
      yardstick_.NoteInput(value);
    }
  }

  /// Readable records stand in parentheses and leave their reserved fields out; so do the inputs
  /// in bits.
  template <Record T>
  void Read(T& record) {
    Parenthesis("(");
    VisitFields(record, [&](std::string_view name, auto value) {
      if (name != kReserved) {
        Read(value);
      }
      return value;
    });
    if constexpr (std::is_same_v<T, LineDef>) {
      if (record.mode != LINE_MODE_TWO_POINTS) {
        yardstick_.NoteDirection();
      }
    }
    Parenthesis(")");
  }

  /// Compares an output with the next word and complains of a difference, unless it is one that
  /// the yardstick accepts.
  template <class T>
  void Compare(const std::string& what, T value, Complaints& complaints) {
    const std::string word = Next();
    const bool same = Expects(word, value, spelling_);
    const T want = Number<T>(word, spelling_).value_or(value);
    if (!yardstick_.Accepts(what, want, value, same)) {
      complaints.push_back(what + ": expected " + word + ", got " + Word(value, spelling_));
    }
  }

  /// The same for each field of a record, or `_` for all of it. Readable records leave out their
  /// reserved fields, which must not be touched.
  template <Record T>
  void Compare(const std::string& what, T record, Complaints& complaints) {
    if (Accept("_")) {
      ExpectUntouched(what, record, complaints);
      return;
    }
    Parenthesis("(");
    VisitFields(record, [&](std::string_view name, auto value) {
      const std::string field = what + '.' + std::string(name);
      if (name == kReserved && spelling_ == Spelling::kReadable) {
        ExpectUntouched(field, value, complaints);
      } else {
        Compare(field, value, complaints);
      }
      return value;
    });
    Parenthesis(")");
  }

 private:
  template <class T>
  static void ExpectUntouched(const std::string& what, const T& value, Complaints& complaints) {
    if (!IsUntouched(value)) {
      complaints.push_back(what + ": expected to be untouched");
    }
  }

  std::string Next();
  void Parenthesis(std::string_view parenthesis);

  std::vector<std::string> words_;
  Spelling spelling_;
  Yardstick& yardstick_;
  std::size_t next_ = 0;
  bool fit_ = true;
};

}  // namespace kavo_test
