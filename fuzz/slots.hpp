// The parameters of a judged call: numbers, records that are read, records that are written.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "text.hpp"

namespace kavo_fuzz {

using namespace kavo_test;

/// A field by its bits.
struct Cell {
  bool isReserved;
  bool isReal;
  std::uint64_t bits;

  [[nodiscard]] double Real() const { return std::bit_cast<double>(bits); }
  [[nodiscard]] std::int64_t Integer() const { return static_cast<std::int64_t>(bits); }
  [[nodiscard]] bool IsInvalid() const {
    return isReal ? Real() == VALUE_INVALID : Integer() == ANGLE_INVALID;
  }
  [[nodiscard]] bool IsBetween(std::int64_t low, std::int64_t high) const {
    return low <= Integer() && Integer() <= high;
  }
  [[nodiscard]] bool Is(int number) const {
    return isReal ? Real() == number : Integer() == number;
  }
};

/// The fields of a record, those of inner records among them; or a number by itself.
struct Cells {
  std::array<Cell, 20> cells;
  std::size_t count = 0;

  template <class T>
  explicit Cells(const T& value) {
    Append("", value);
  }

  template <class T>
  void Append(std::string_view name, T value) {
    if constexpr (Record<T>) {
      VisitFields(value, [this](std::string_view field, auto inner) {
        this->Append(field, inner);
        return inner;
      });
    } else if constexpr (std::is_same_v<T, double>) {
      cells.at(count++) = {false, true, std::bit_cast<std::uint64_t>(value)};
    } else {
      cells.at(count++) = {name == kReserved, false,
                           static_cast<std::uint64_t>(std::int64_t{value})};
    }
  }
};

/// What a letter of a contract wants of a field that was written, and of the one before it.
struct Letter {
  char letter;
  bool (*fits)(const Cell& cell, const Cell& before);
};
inline constexpr Letter kLetters[] = {
    {'w', [](auto&, auto&) { return true; }},
    {'i', [](auto& cell, auto&) { return cell.IsInvalid(); }},
    {'0', [](auto& cell, auto&) { return cell.Is(0); }},
    {'1', [](auto& cell, auto&) { return cell.Is(1); }},
    {'3', [](auto& cell, auto&) { return cell.Is(3); }},
    {'n', [](auto& cell, auto&) { return std::isfinite(cell.Real()); }},
    {'p', [](auto& cell, auto&) { return std::isfinite(cell.Real()) && cell.Real() >= 0.0; }},
    {'f', [](auto& cell, auto&) { return cell.Is(1) || cell.Is(3); }},
    {'F', [](auto& cell, auto& elev) { return cell.Is(3) || (cell.Is(1) && elev.bits == 0); }},
    {'c', [](auto& cell, auto&) { return cell.IsBetween(0, ANGLE_FULL_CIRCLE - 1); }},
    {'C', [](auto& c, auto&) { return c.IsInvalid() || c.IsBetween(0, ANGLE_FULL_CIRCLE - 1); }},
    {'z', [](auto& cell, auto&) { return cell.IsBetween(0, ANGLE_HALF_CIRCLE); }},
    {'Z', [](auto& c, auto&) { return c.IsInvalid() || c.IsBetween(0, ANGLE_HALF_CIRCLE); }},
    {'o', [](auto& cell, auto&) { return cell.IsBetween(0, ANGLE_FULL_CIRCLE); }},
};

/// A record before and after each of two calls.
template <class T>
struct TwoCalls {
  const T& before1;
  const T& after1;
  const T& before2;
  const T& after2;

  /// True when the calls left the record as the letters say, one for each field or one for all.
  [[nodiscard]] bool Fit(std::string_view letters) const {
    const bool copiesReserved = letters.ends_with('=');
    letters.remove_suffix(copiesReserved ? 1 : 0);
    const Cells start1(before1), end1(after1), start2(before2), end2(after2);
    std::size_t next = 0;
    for (std::size_t i = 0; i < end1.count; ++i) {
      const Cell& cell = end1.cells[i];
      const bool untouched =
          cell.bits == start1.cells[i].bits && end2.cells[i].bits == start2.cells[i].bits;
      if (cell.isReserved && (untouched || copiesReserved)) {
        continue;
      }
      const char letter = cell.isReserved ? 'u' : letters.at(letters.size() == 1 ? 0 : next++);
      const auto fits = std::ranges::find(kLetters, letter, &Letter::letter);
      const bool good = letter == 'u' ? untouched
                                      : cell.bits == end2.cells[i].bits &&
                                            fits->fits(cell, end1.cells[i == 0 ? 0 : i - 1]);
      if (!good) {
        return false;
      }
    }
    return true;
  }
};

/// Fills what is reserved in a record.
template <Record T>
void RefillReserved(T& record, std::byte filling) {
  VisitFields(record, [filling](std::string_view name, auto value) {
    if constexpr (Record<decltype(value)>) {
      RefillReserved(value, filling);
    } else if (name == kReserved) {
      std::memset(&value, std::to_integer<int>(filling), sizeof value);
    }
    return value;
  });
}

template <class T>
std::string ShowAll(const std::vector<T>& values) {
  std::string text;
  for (const T& value : values) {
    text += "  " + Text(value) + '\n';
  }
  return text.empty() ? "  none\n" : text;
}

template <class Parameter>
inline constexpr bool kIsOutput =
    std::is_pointer_v<Parameter> && !std::is_const_v<std::remove_pointer_t<Parameter>>;

/// A parameter as one call hands it over: a number. What is written holds `filling` before, but
/// where the call reads it.
template <class Parameter>
class Slot {
 public:
  Slot(Parameter value, std::byte /*filling*/, bool /*reads*/) : value_(value) {}
  Parameter Pass() { return value_; }
  [[nodiscard]] bool IsSound() const { return true; }
  [[nodiscard]] std::string Show() const { return "  " + Text(value_) + '\n'; }

 private:
  Parameter value_;
};

/// Records that are read, or none for null. What is reserved in them is unlike what outputs hold.
template <class T>
class Slot<const T*> {
 public:
  Slot(const T& record, std::byte filling, bool reads)
      : Slot(std::vector{record}, filling, reads) {}
  Slot(const std::vector<T>& records, std::byte filling, bool /*reads*/) : given_(records) {
    for (T& record : given_) {
      RefillReserved(record, ~filling);
    }
    handed_ = given_;
  }
  const T* Pass() { return handed_.empty() ? nullptr : handed_.data(); }
  [[nodiscard]] bool IsSound() const { return std::ranges::equal(given_, handed_, SameBytes<T>); }
  [[nodiscard]] std::string Show() const { return ShowAll(given_); }

 private:
  std::vector<T> given_;
  std::vector<T> handed_;
};

/// Records that are written, between two that are not.
template <class T>
class Slot<T*> {
 public:
  Slot(T& out, std::byte filling, bool reads) : Slot(std::size_t{1}, filling) {
    if constexpr (Record<T>) {
      if (reads) {
        before_[1] = out;
        RefillReserved(before_[1], filling);
        after_ = before_;
      }
    }
  }
  template <std::size_t Count>
  Slot(std::array<T, Count>& /*out*/, std::byte filling, bool /*reads*/) : Slot(Count, filling) {}
  Slot(std::vector<T>& out, std::byte filling, bool /*reads*/) : Slot(out.size(), filling) {}

  T* Pass() { return after_.data() + 1; }
  [[nodiscard]] bool IsSound() const {
    return SameBytes(after_.front(), before_.front()) && SameBytes(after_.back(), before_.back());
  }
  [[nodiscard]] std::string Show() const {
    return ShowAll(std::vector<T>(after_.begin() + 1, after_.end() - 1));
  }
  static bool Fit(const Slot& one, const Slot& two, std::string_view letters) {
    for (std::size_t i = 1; i + 1 < one.after_.size(); ++i) {
      const TwoCalls<T> calls{one.before_[i], one.after_[i], two.before_[i], two.after_[i]};
      if (!calls.Fit(letters)) {
        return false;
      }
    }
    return true;
  }

  void Give(T& out) const { out = after_[1]; }
  /// To a vector or an array.
  void Give(auto& out) const { std::copy_n(after_.begin() + 1, out.size(), out.begin()); }

 private:
  Slot(std::size_t count, std::byte filling) : before_(count + 2) {
    std::memset(before_.data(), std::to_integer<int>(filling), before_.size() * sizeof(T));
    after_ = before_;
  }
  std::vector<T> before_;
  std::vector<T> after_;
};

}  // namespace kavo_fuzz
