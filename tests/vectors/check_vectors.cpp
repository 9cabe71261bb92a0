// Replays rows of inputs and outputs against the library.
//
//   check_vectors FILE...
//
// A row is a call: export, inputs, "=", outputs; or several calls with ";" between them. The inputs
// stand in the order of the parameters, without reserved fields; the outputs are the returned
// value, if any, then the records that pointers lead to. Lines that begin with "#" are comments;
// one above a row is its name, printed with every difference. An indented line goes on with the row
// above it.
//
// .vec files spell every number in bits, .rows files so that people can read them: tokens.hpp has
// both spellings. After "let NAME WORD..." the word $NAME stands for those words.
//
// Every output is compared to the bit; on machines with another mathematics library than the
// reference machine, those that go through it may differ a little, and a row that begins with
// "reference" is left out (yardstick.hpp).
//
// Prints each difference as one line, then how the outputs compared and "N passed, M failed"; exits
// 1 on any difference, malformed row or file without a row. Of every call it also checks that the
// inputs are unchanged and, of an export without state, that a second call answers the same.

#include "replay.hpp"

#ifdef __SANITIZE_ADDRESS__
// Some rows meet the one loss of memory that is meant so.
extern "C" const char* __lsan_default_suppressions() { return "leak:kavo::LuDecompose"; }
#endif

int main(int argc, char** argv) {
  const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
  return kavo_test::ReplayFiles(arguments.subspan(1), kavo_test::Exports()) ? 0 : 1;
}
