// A call of any export, its arguments deduced from the type of the function: a number or a pointer
// to const is an input, a pointer to anything else leads to an output.
#pragma once

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "records.hpp"

namespace kavo_test {

template <class Parameter, std::size_t>
struct Argument {
  static constexpr bool kIsOutput = false;
  Parameter value = Untouched<Parameter>();

  Parameter Pass() { return value; }
  [[nodiscard]] bool Same(const Argument& other) const { return SameBytes(value, other.value); }
};

template <class T, std::size_t Count>
struct Argument<const T*, Count> {
  static constexpr bool kIsOutput = false;
  T value = Untouched<T>();
  bool isNull = false;

  const T* Pass() { return isNull ? nullptr : &value; }
  [[nodiscard]] bool Same(const Argument& other) const { return SameBytes(value, other.value); }
};

template <class T, std::size_t Count>
struct Argument<T*, Count> {
  static constexpr bool kIsOutput = true;
  std::array<T, Count> items = Untouched<std::array<T, Count>>();
  std::array<std::byte, 16> beyond = Untouched<std::array<std::byte, 16>>();  // never written

  T* Pass() { return items.data(); }
  [[nodiscard]] bool Same(const Argument& other) const { return SameBytes(items, other.items); }
};

/// What a function without a result returns.
struct Nothing {
  char same = 0;  // as any other Nothing
};

template <class Function, std::size_t Count>
class CallOf;

template <class Returned, class... Parameters, std::size_t Count>
class CallOf<Returned (*)(Parameters...), Count> {
 public:
  using Result = std::conditional_t<std::is_void_v<Returned>, Nothing, Returned>;

  /// Hands every argument with the number of its parameter, from 0, to `visit`.
  template <class Visit>
  void VisitArguments(Visit&& visit) {
    std::apply(
        [&](auto&... argument) {
          std::size_t number = 0;
          (visit(number++, argument), ...);
        },
        arguments_);
  }

  /// The same for every pair of arguments of two calls.
  template <class Visit>
  static void VisitPairs(CallOf& one, CallOf& other, Visit&& visit) {
    [&]<std::size_t... number>(std::index_sequence<number...>) {
      (visit(number, std::get<number>(one.arguments_), std::get<number>(other.arguments_)), ...);
    }
    (std::index_sequence_for<Parameters...>());
  }

  Result Make(Returned (*function)(Parameters...)) {
    return std::apply(
        [&](auto&... argument) {
          if constexpr (std::is_void_v<Returned>) {
            function(argument.Pass()...);
            return Nothing{};
          } else {
            return function(argument.Pass()...);
          }
        },
        arguments_);
  }

 private:
  std::tuple<Argument<Parameters, Count>...> arguments_;
};

/// A call of `Export`, of which every output is an array of `Count` records, mostly of one.
template <auto Export, std::size_t Count = 1>
using Call = CallOf<decltype(Export), Count>;

}  // namespace kavo_test
