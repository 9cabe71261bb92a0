// One library, eight threads: functions without state answer as they do on one thread.
//
//   shared_calls LIBRARY CALLS EXPORT...
//
// Every thread makes the same random calls of the named exports, all at the same time. Built with
// the thread sanitizer, which reports where two of them touch the same memory. Prints one line;
// exits 1 when an answer differs.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <latch>
#include <span>
#include <string_view>
#include <thread>
#include <vector>

#include "calls.hpp"

namespace {

constexpr std::size_t kThreads = 8;

using Names = std::span<const char* const>;

bool IsNamed(Names names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [&](const char* each) { return name == each; });
}

/// Seeds of that many calls of the named exports.
std::vector<std::uint64_t> SeedsOf(Names names, std::size_t calls) {
  kavo_test::Draws draws(20261121);
  std::vector<std::uint64_t> seeds;
  seeds.reserve(calls);
  while (seeds.size() < calls) {
    const std::uint64_t seed = draws.Next();
    if (IsNamed(names, kavo_test::Drawn(seed).name)) {
      seeds.push_back(seed);
    }
  }
  return seeds;
}

/// Makes the calls on all threads at once; how many answers differ from those of one thread.
std::size_t DifferOnThreads(const kavo_test::Library& library,
                            const std::vector<std::uint64_t>& seeds) {
  std::vector<kavo_test::Answer> alone;
  alone.reserve(seeds.size());
  for (const std::uint64_t seed : seeds) {
    alone.push_back(library.Call(seed));
  }
  std::atomic<std::size_t> different = 0;
  std::latch start(kThreads);
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      start.arrive_and_wait();
      for (std::size_t call = 0; call < seeds.size(); ++call) {
        different += library.Call(seeds[call]) != alone[call] ? 1 : 0;
      }
    });
  }
  threads.clear();
  return different;
}

}  // namespace

int main(int argc, char** argv) {
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  const auto known = [](const char* name) {
    const auto exports = kavo_test::Exports();
    return std::any_of(exports.begin(), exports.end(),
                       [&](const kavo_test::Export& each) { return each.name == name; });
  };
  if (argc < 4 || !std::all_of(arguments.begin() + 3, arguments.end(), known)) {
    std::fprintf(stderr, "usage: shared_calls LIBRARY CALLS EXPORT...\n");
    return 2;
  }
  const Names names = arguments.subspan(3);
  const kavo_test::Library library(argv[1]);
  const std::size_t calls = std::strtoul(argv[2], nullptr, 10);
  const std::size_t different = DifferOnThreads(library, SeedsOf(names, calls));
  std::printf("%zu calls of %zu exports on each of %zu threads, %zu answers different\n", calls,
              names.size(), kThreads, different);
  return different == 0 ? 0 : 1;
}
