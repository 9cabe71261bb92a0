// Calls of the exports, each held against what must be true of any call: its status is one of its
// contract, its outputs are written just as the contract says, its inputs and everything around its
// outputs stay as they are, and a second call over other old contents gives the same bits.
#pragma once

#include <tuple>
#include <utility>

#include "contracts.hpp"
#include "fail.hpp"
#include "slots.hpp"

namespace kavo_fuzz {

/// Holds a law between results of `who`; the values are shown when it is broken.
template <class... Values>
void Hold(bool holds, std::string_view who, std::string_view law, const Values&... values) {
  if (!holds) {
    std::string text;
    ((text += "  " + Text(values) + '\n'), ...);
    Fail(who, law, text);
  }
}

/// False as well for what is not a number.
inline bool Near(double want, double got, double tolerance) {
  return std::fabs(want - got) <= tolerance;
}

template <class Function>
class JudgeOf;

template <class Returned, class... Parameters>
class JudgeOf<Returned (*)(Parameters...)> {
 public:
  using Function = Returned (*)(Parameters...);

  template <class... Arguments>
  explicit JudgeOf(const Contract& contract, Arguments&&... arguments)
      : contract_(contract),
        one_(Slot<Parameters>(arguments, std::byte{0xA5})...),
        two_(Slot<Parameters>(arguments, std::byte{0x5A})...) {}

  /// Makes both calls and judges them. `copiesReserved` says that a reserved field may be written.
  Returned Call(Function function, bool copiesReserved) {
    if constexpr (std::is_void_v<Returned>) {
      std::apply([&](auto&... slot) { function(slot.Pass()...); }, one_);
      std::apply([&](auto&... slot) { function(slot.Pass()...); }, two_);
      Judge(kNoStatus, copiesReserved);
    } else {
      const auto result = std::apply([&](auto&... slot) { return function(slot.Pass()...); }, one_);
      const auto again = std::apply([&](auto&... slot) { return function(slot.Pass()...); }, two_);
      result_ = "  returned " + Text(result) + '\n';
      Require(SameBytes(result, again), "a second call returns something else");
      Judge(std::is_same_v<Returned, double> ? kNoStatus : static_cast<std::int32_t>(result),
            copiesReserved);
      return result;
    }
  }

  /// Hands the outputs to the caller's arguments.
  template <class... Arguments>
  void Give(Arguments&&... arguments) const {
    std::apply(
        [&](const auto&... slot) {
          (
              [&] {
                if constexpr (kIsOutput<Parameters>) {
                  slot.Give(arguments);
                }
              }(),
              ...);
        },
        one_);
  }

 private:
  void Judge(std::int32_t status, bool copiesReserved) const {
    Require(std::apply([](auto&... slot) { return (slot.IsSound() && ...); }, one_),
            "an input was changed, or something beside an output");
    bool isListed = false;
    for (const Outcome& outcome : contract_.outcomes) {
      isListed = isListed || (outcome.outputs != nullptr && outcome.status == status);
      if (outcome.outputs != nullptr && outcome.status == status &&
          Fit(outcome.outputs, copiesReserved)) {
        return;
      }
    }
    Require(isListed, "the status is not in the contract");
    Require(false, "the outputs are not as the contract has them, or not the same again");
  }

  // Whether each output fits its word.
  [[nodiscard]] bool Fit(std::string_view words, bool copiesReserved) const {
    return [&]<std::size_t... i>(std::index_sequence<i...>) {
      return (FitOne<i>(words, copiesReserved) && ...);
    }
    (std::index_sequence_for<Parameters...>());
  }
  template <std::size_t i>
  bool FitOne(std::string_view& words, bool copiesReserved) const {
    if constexpr (kIsOutput<std::tuple_element_t<i, std::tuple<Parameters...>>>) {
      const auto end = std::min(words.find(' '), words.size());
      const auto word = words.substr(0, end);
      words.remove_prefix(std::min(end + 1, words.size()));
      return Slot<std::tuple_element_t<i, std::tuple<Parameters...>>>::Fit(
          std::get<i>(one_), std::get<i>(two_), word, copiesReserved);
    }
    return true;
  }

  void Require(bool holds, std::string_view rule) const {
    if (!holds) {
      const auto show = [](const auto&... slot) { return (std::string() + ... + slot.Show()); };
      Fail(contract_.name, rule,
           result_ + std::apply(show, one_) + "again:\n" + std::apply(show, two_));
    }
  }

  const Contract& contract_;
  std::tuple<Slot<Parameters>...> one_;
  std::tuple<Slot<Parameters>...> two_;
  std::string result_;
};

/// Calls an export and judges the call. The arguments are those of the export, records in place of
/// the pointers to them; a vector stands for an array, and an empty one for null.
template <auto Export, bool kCopiesReserved = false, class... Arguments>
auto Ask(Arguments&&... arguments) {
  static_assert(kContract<Export>.name != nullptr, "every export has a contract");
  JudgeOf<decltype(Export)> judge(kContract<Export>, arguments...);
  if constexpr (std::is_void_v<decltype(judge.Call(Export, kCopiesReserved))>) {
    judge.Call(Export, kCopiesReserved);
    judge.Give(arguments...);
  } else {
    const auto result = judge.Call(Export, kCopiesReserved);
    judge.Give(arguments...);
    return result;
  }
}

}  // namespace kavo_fuzz
