// Calls of the exports, each held against what must be true of any call: its status is one of its
// contract, its outputs are written just as the contract says, its inputs and everything around its
// outputs stay as they are, and a second call over other old contents gives the same bits.
#pragma once

#include <tuple>
#include <utility>

#include "contracts.hpp"
#include "draw.hpp"
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

template <auto Export, class Function>
class Judged;

/// Two calls of an export with the same arguments.
template <auto Export, class Returned, class... Parameters>
class Judged<Export, Returned (*)(Parameters...)> {
 public:
  template <class... Arguments>
  explicit Judged(Arguments&... arguments)
      : one_(Slot<Parameters>(arguments, std::byte{0xA5}, kReadsOutput<Export>)...),
        two_(Slot<Parameters>(arguments, std::byte{0x00}, kReadsOutput<Export>)...) {}

  /// Makes the calls, judges them and gives what they return.
  auto Call() {
    if constexpr (std::is_void_v<Returned>) {
      std::apply([](auto&... slot) { Export(slot.Pass()...); }, one_);
      std::apply([](auto&... slot) { Export(slot.Pass()...); }, two_);
      Judge(kNoStatus);
      return kNoStatus;
    } else {
      const auto result = std::apply([](auto&... slot) { return Export(slot.Pass()...); }, one_);
      const auto again = std::apply([](auto&... slot) { return Export(slot.Pass()...); }, two_);
      Require(SameBytes(result, again), "a second call returns something else");
      result_ = "  returned " + Text(result) + '\n';
      Judge(std::is_same_v<Returned, double> ? kNoStatus : static_cast<std::int32_t>(result));
      return result;
    }
  }

  /// Hands the outputs to the caller's arguments.
  template <class... Arguments>
  void Give(Arguments&... arguments) const {
    std::apply([&](const auto&... slot) { (GiveOne<Parameters>(slot, arguments), ...); }, one_);
  }

 private:
  void Judge(std::int32_t status) const {
    Require(std::apply([](auto&... slot) { return (slot.IsSound() && ...); }, one_),
            "an input was changed, or something beside an output");
    bool isListed = false;
    for (const Outcome& outcome : kContract<Export>.outcomes) {
      if (outcome.outputs != nullptr && outcome.status == status) {
        isListed = true;
        if (Fit(outcome.outputs, std::index_sequence_for<Parameters...>())) {
          return;
        }
      }
    }
    Require(isListed, "the status is not in the contract");
    Require(false, "the outputs are not as the contract has them, or not the same again");
  }

  // Whether each output fits its word.
  template <std::size_t... i>
  bool Fit(std::string_view words, std::index_sequence<i...> /*all*/) const {
    return (FitOne<Parameters>(std::get<i>(one_), std::get<i>(two_), words) && ...);
  }
  template <class Parameter>
  static bool FitOne(const auto& one, const auto& two, std::string_view& words) {
    if constexpr (kIsOutput<Parameter>) {
      const auto word = words.substr(0, words.find(' '));
      words.remove_prefix(std::min(word.size() + 1, words.size()));
      return Slot<Parameter>::Fit(one, two, word);
    }
    return true;
  }
  template <class Parameter>
  static void GiveOne(const auto& slot, auto& argument) {
    if constexpr (kIsOutput<Parameter>) {
      slot.Give(argument);
    }
  }

  void Require(bool holds, std::string_view rule) const {
    if (!holds) {
      const auto show = [](const auto&... slot) { return (std::string() + ... + slot.Show()); };
      Fail(kContract<Export>.name, rule,
           result_ + std::apply(show, one_) + "again:\n" + std::apply(show, two_));
    }
  }

  std::tuple<Slot<Parameters>...> one_;
  std::tuple<Slot<Parameters>...> two_;
  std::string result_;
};

/// Calls an export and judges the call. The arguments are those of the export, records in place of
/// the pointers to them; a vector stands for an array, and an empty one for null.
template <auto Export, class... Arguments>
auto Ask(Arguments&&... arguments) {
  static_assert(kContract<Export>.name != nullptr, "every export has a contract");
  Judged<Export, decltype(Export)> judged(arguments...);
  const auto result = judged.Call();
  judged.Give(arguments...);
  return result;
}

/// An argument by value: what is drawn for an input, what an output leaves.
template <class Parameter, std::size_t kRecords>
using Held = std::conditional_t<kIsOutput<Parameter> && kRecords != 1,
                                std::array<std::remove_pointer_t<Parameter>, kRecords>,
                                std::remove_const_t<std::remove_pointer_t<Parameter>>>;

template <auto Export, class Parameter, std::size_t kRecords>
Held<Parameter, kRecords> DrawOne(Draw& draw) {
  if constexpr (kIsOutput<Parameter> && !kReadsOutput<Export>) {
    return {};
  } else {
    return draw.Any<Held<Parameter, kRecords>>();
  }
}

template <auto Export, std::size_t kRecords, class Returned, class... Parameters>
auto TryAs(Draw& draw, Returned (* /*function*/)(Parameters...)) {
  std::tuple<Held<Parameters, kRecords>...> values{DrawOne<Export, Parameters, kRecords>(draw)...};
  const auto result = std::apply([](auto&... value) { return Ask<Export>(value...); }, values);
  return std::tuple_cat(std::tuple(result), values);
}

/// Draws all arguments of an export and asks it. Gives the result and the arguments, in their
/// order; outputs are arrays where they have several records.
template <auto Export, std::size_t kRecords = 1>
auto Try(Draw& draw) {
  return TryAs<Export, kRecords>(draw, Export);
}

/// The same where nothing but the contract is held.
template <auto Export, std::size_t kRecords = 1>
void Just(Draw& draw) {
  Try<Export, kRecords>(draw);
}

}  // namespace kavo_fuzz
