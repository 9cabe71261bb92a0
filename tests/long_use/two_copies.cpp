// Two copies of the library in one process keep their own bases.
//
//   two_copies LIBRARY
//
// Two sequences of random calls run each in a library of its own, then by turns in two copies of
// it: each must give the answers that it gave alone. Prints one line; exits 1 when one differs, or
// when the sequences do not disturb each other in a single library either, for then they show
// nothing.

#include <array>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "calls.hpp"

namespace {

using kavo_test::Answer;
using kavo_test::Library;

constexpr std::size_t kCalls = 20000;
constexpr std::array<std::uint64_t, 2> kSeeds = {1, 2};

using Answers = std::array<std::vector<Answer>, 2>;

/// What each sequence gives in a library of its own, which is unloaded at the end.
Answers Alone(const char* path) {
  Answers answers;
  for (std::size_t sequence = 0; sequence < kSeeds.size(); ++sequence) {
    const Library library(path);
    kavo_test::Draws seeds(kSeeds[sequence]);
    for (std::size_t i = 0; i < kCalls; ++i) {
      answers[sequence].push_back(library.Call(seeds.Next()));
    }
  }
  return answers;
}

/// How many answers are others when the sequences run by turns.
int DifferByTurns(const Answers& alone, const Library& first, const Library& second) {
  std::array seeds = {kavo_test::Draws(kSeeds[0]), kavo_test::Draws(kSeeds[1])};
  int different = 0;
  for (std::size_t i = 0; i < kCalls; ++i) {
    different += first.Call(seeds[0].Next()) != alone[0][i] ? 1 : 0;
    different += second.Call(seeds[1].Next()) != alone[1][i] ? 1 : 0;
  }
  return different;
}

int DifferInTwoCopies(const Answers& alone, const char* path) {
  const Library first(path);
  const Library second(kavo_test::Copy(path));
  return DifferByTurns(alone, first, second);
}

int DifferInOne(const Answers& alone, const char* path) {
  const Library only(path);
  return DifferByTurns(alone, only, only);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: two_copies LIBRARY\n");
    return 2;
  }
  const Answers alone = Alone(argv[1]);
  const int inTwo = DifferInTwoCopies(alone, argv[1]);
  const int inOne = DifferInOne(alone, argv[1]);
  std::printf("%zu calls by turns in two copies, %d answers different; in a single one %d\n",
              2 * kCalls, inTwo, inOne);
  return inTwo == 0 && inOne > 0 ? 0 : 1;
}
