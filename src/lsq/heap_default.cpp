// The heap of the library as shipped: that of the process.
#include <cstdlib>

#include "lsq/heap.hpp"

namespace kavo {

void* HeapAlloc(std::size_t size) noexcept { return std::malloc(size); }

void HeapFree(void* block) noexcept { std::free(block); }

}  // namespace kavo
