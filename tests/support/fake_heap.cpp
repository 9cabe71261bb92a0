#include "fake_heap.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace kavo_test {

constexpr std::size_t kMostBytes = std::size_t{256} << 20U;

FakeHeap& Heap() {
  static FakeHeap heap;
  return heap;
}

int ReclaimAfter(int request) {
  return static_cast<int>(std::erase_if(Heap().live, [=](const auto& entry) {
    const auto& [block, known] = entry;
    if (known.request <= request) {
      return false;
    }
    Heap().liveBytes -= known.size;
    std::free(block);
    return true;
  }));
}

int ReclaimHeap() {
  const int count = ReclaimAfter(0);
  Heap() = FakeHeap{};
  return count;
}

HeapGuard::~HeapGuard() { EXPECT_EQ(0, ReclaimHeap()) << "blocks were never released"; }

}  // namespace kavo_test

namespace kavo {

void* HeapAlloc(std::size_t size) noexcept {
  auto& heap = kavo_test::Heap();
  heap.requests += 1;
  if (heap.requests == heap.pretend) {
    size = 1;
  }
  if (heap.requests == heap.refuse || size > kavo_test::kMostBytes) {
    return nullptr;
  }
  void* block = std::malloc(size);
  std::memset(block, 0xFF, size);
  heap.live[block] = {heap.requests, size};
  heap.liveBytes += size;
  heap.peakBytes = std::max(heap.peakBytes, heap.liveBytes);
  return block;
}

void HeapFree(void* block) noexcept {
  auto& heap = kavo_test::Heap();
  const auto known = heap.live.find(block);
  if (known == heap.live.end()) {
    ADD_FAILURE() << "released what is not live";
    return;
  }
  heap.released.push_back(known->second.request);
  heap.liveBytes -= known->second.size;
  heap.live.erase(known);
  std::free(block);
}

}  // namespace kavo
