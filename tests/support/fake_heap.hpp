// A heap that a test limits and looks into.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "lsq/heap.hpp"
#include "lsq/storage.hpp"

namespace kavo_test {

/// Who asked for what, and what became of it. Requests are numbered from 1. A new block is filled
/// with NaNs; one that no machine would have (256 MiB) is refused.
struct FakeHeap {
  struct Block {
    int request;
    std::size_t size;
  };
  int refuse = 0;   ///< The request to refuse; 0 is none.
  int pretend = 0;  ///< The request to grant whatever its size, with a block that only looks so.
  int requests = 0;
  std::map<void*, Block> live;
  std::vector<int> released;  ///< Requests in the order in which their blocks came back.
  std::size_t liveBytes = 0;
  std::size_t peakBytes = 0;
};

/// The heap that serves the library in this program.
FakeHeap& Heap();

/// Releases what is live of the requests after this one, as nobody else will. Returns how many
/// blocks there were.
int ReclaimAfter(int request);

/// Releases all that is live and starts anew. Returns how many blocks there were.
int ReclaimHeap();

/// A new heap for a scope, at the end of which nothing may be live.
struct HeapGuard {
  HeapGuard() { ReclaimHeap(); }
  HeapGuard(const HeapGuard&) = delete;
  HeapGuard& operator=(const HeapGuard&) = delete;
  ~HeapGuard();
};

/// Calls with the first request refused, then with the second, until no request is left to refuse.
/// One letter for each: '.' when the call answers kEngineNoMemory and nothing is lost, 'L' when it
/// does so and exactly one block is lost, '?' for anything else. The last call, with every request
/// granted, must answer kEngineOk; the call releases what it is then given.
template <class Call>
std::string RefuseEachRequest(Call call) {
  std::string letters;
  for (int k = 1;; ++k) {
    const int before = Heap().requests;
    Heap().refuse = before + k;
    const auto code = call();
    Heap().refuse = 0;
    const int lost = ReclaimAfter(before);
    if (Heap().requests < before + k) {
      return letters + (code == kavo::kEngineOk && lost == 0 ? "" : "?");
    }
    const bool told = code == kavo::kEngineNoMemory;
    letters += told && lost == 0 ? '.' : told && lost == 1 ? 'L' : '?';
  }
}

}  // namespace kavo_test
