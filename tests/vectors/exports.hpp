// The functions that a row can call.
#pragma once

#include <span>
#include <string_view>

#include "call.hpp"
#include "tokens.hpp"

namespace kavo_test {

/// Reads the inputs of one call, makes it and compares the outputs: the returned value, if any,
/// then what the parameters lead to, in their order.
using Replay = void (*)(Words& inputs, Words& outputs, Complaints& complaints);

struct Export {
  std::string_view name;
  Replay replay;
};

/// Every export of the library. A new one is a row of this table.
std::span<const Export> Exports();

/// Reads the arguments of a call that are inputs; `null` is a null pointer.
template <class CallType>
void ReadInputs(CallType& call, Words& inputs) {
  call.VisitArguments([&](std::size_t, auto& argument) {
    if constexpr (requires { argument.isNull; }) {
      argument.isNull = inputs.Accept("null");
      if (argument.isNull) {
        return;
      }
    }
    if constexpr (requires { argument.value; }) {
      inputs.Read(argument.value);
    }
  });
}

template <class CallType>
void CompareOutputs(CallType& call, const typename CallType::Result& result, Words& outputs,
                    Complaints& complaints) {
  if constexpr (!std::is_same_v<typename CallType::Result, Nothing>) {
    outputs.Compare("result", result, complaints);
  }
  call.VisitArguments([&](std::size_t number, auto& argument) {
    if constexpr (requires { argument.items; }) {
      const std::string what = "parameter " + std::to_string(number + 1);
      for (const auto& item : argument.items) {
        outputs.Compare(what, item, complaints);
      }
      if (!IsUntouched(argument.beyond)) {
        complaints.push_back(what + ": written beyond its end");
      }
    }
  });
}

/// Complains of what differs between two calls among the inputs, or among the outputs.
template <class CallType>
void CompareCalls(CallType& one, CallType& other, bool outputs, const std::string& complaint,
                  Complaints& complaints) {
  CallType::VisitPairs(one, other, [&](std::size_t number, auto& a, auto& b) {
    if (a.kIsOutput == outputs && !a.Same(b)) {
      complaints.push_back("parameter " + std::to_string(number + 1) + ": " + complaint);
    }
  });
}

/// Replays a call, a second time if the function keeps no state and so must answer the same.
template <auto Function, std::size_t Count, bool kTwice>
void ReplayCall(Words& inputs, Words& outputs, Complaints& complaints) {
  Call<Function, Count> call;
  ReadInputs(call, inputs);
  if (!inputs.AreUsedUp()) {
    complaints.emplace_back("malformed inputs");
    return;
  }
  Call<Function, Count> second = call;
  const auto result = call.Make(Function);
  CompareOutputs(call, result, outputs, complaints);
  CompareCalls(second, call, false, "the input was changed", complaints);
  if constexpr (kTwice) {
    if (!SameBytes(result, second.Make(Function))) {
      complaints.emplace_back("result: a second call returned another one");
    }
    CompareCalls(second, call, true, "a second call gave another output", complaints);
  }
}

template <auto Function, std::size_t Count = 1>
constexpr Replay kStateless = ReplayCall<Function, Count, true>;

/// Of a function that stores or reads a base.
template <auto Function>
constexpr Replay kStateful = ReplayCall<Function, 1, false>;

}  // namespace kavo_test
