// A long working day: random calls of all exports in one process.
//
//   mixed_calls LIBRARY [CALLS [SEED]]
//
// After the first hundred thousand calls the heap must not grow by a byte, nor the process by more
// than a few pages. Now and then a call is made again in a fresh copy of the library, brought to
// the same base: it must give the same bits. Prints one line; exits 1 when any of this fails.
//
// Bytes are counted right with GLIBC_TUNABLES=glibc.malloc.tcache_count=0 alone: what malloc caches
// for a thread counts as handed out.

#include <malloc.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "calls.hpp"

namespace {

using kavo_test::Answer;
using kavo_test::Library;

constexpr unsigned long kWarmUp = 100000;
constexpr unsigned long kBetweenFresh = 10000;
constexpr long kFewPages = 65536;  // touched late, as pages of the stack or of code are

/// The calls of one family since its base was last replaced: all that its state can hang on.
class History {
 public:
  /// One that never lets its memory go, so that the library's alone is measured.
  History() { calls_.reserve(kLongest); }

  void Add(std::uint64_t seed, const Answer& answer) {
    const kavo_test::Export& called = kavo_test::Drawn(seed);
    if (called.family == kavo_test::Family::kNone ||
        (called.SetsBase() && kavo_test::Succeeded(answer))) {
      calls_.clear();
    }
    if (calls_.size() == kLongest) {
      std::fprintf(stderr, "no base was replaced for %zu calls\n", kLongest);
      std::exit(2);
    }
    calls_.push_back(seed);
  }

  /// What the last call gives in a library where nothing but these calls was made.
  [[nodiscard]] Answer LastIn(const Library& fresh) const {
    Answer answer;
    for (const std::uint64_t seed : calls_) {
      answer = fresh.Call(seed);
    }
    return answer;
  }

 private:
  static constexpr std::size_t kLongest = 10000;
  std::vector<std::uint64_t> calls_;
};

struct Memory {
  long heap;      // bytes handed out and not given back
  long resident;  // bytes of the process in memory
};

Memory Used() {
  long pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return {static_cast<long>(mallinfo2().uordblks), pages * sysconf(_SC_PAGESIZE)};
}

struct Day {
  Memory growth;
  int compared = 0;
  int different = 0;
};

Day Spend(const char* path, unsigned long calls, unsigned long seed) {
  const char* const copy = kavo_test::Copy(path);
  const Library library(path);
  std::array<History, kavo_test::kFamilies> histories;
  kavo_test::Draws seeds(seed);
  Day day{};
  Memory before = Used();
  for (unsigned long i = 0; i < calls; ++i) {
    if (i == kWarmUp) {
      before = Used();
    }
    const std::uint64_t call = seeds.Next();
    const Answer answer = library.Call(call);
    History& history = histories[static_cast<std::size_t>(kavo_test::Drawn(call).family)];
    history.Add(call, answer);
    if (i % kBetweenFresh == 0) {
      ++day.compared;
      day.different += history.LastIn(Library(copy)) != answer ? 1 : 0;
    }
  }
  const Memory after = Used();
  day.growth = {after.heap - before.heap, after.resident - before.resident};
  return day;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: mixed_calls LIBRARY [CALLS [SEED]]\n");
    return 2;
  }
  const unsigned long calls = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 1000000;
  const unsigned long seed = argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 20261121;
  const Day day = Spend(argv[1], calls, seed);
  std::printf(
      "%lu calls of %zu exports from seed %lu, heap grown by %ld bytes and process by %ld, %d of "
      "%d "
      "answers different in fresh copies\n",
      calls, kavo_test::Exports().size(), seed, day.growth.heap, day.growth.resident, day.different,
      day.compared);
  const bool grown = day.growth.heap > 0 || day.growth.resident > kFewPages;
  return !grown && day.different == 0 ? 0 : 1;
}
