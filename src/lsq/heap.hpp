// Where the adjustment gets its memory.
//
// The library as shipped takes it from malloc (heap_default.cpp). A host build whose memory comes
// from elsewhere replaces that one file by its own with both functions (KAVO_HEAP_SOURCES). Only
// the multi-point resection and its adjustment ask; they are called on the caller's thread.
#pragma once

#include <cstddef>

namespace kavo {

/// A new block of memory, aligned for any record.
/// @param size  bytes, at least 1.
/// @return the block, its content undefined; null when it cannot be had.
void* HeapAlloc(std::size_t size) noexcept;

/// Gives a block back.
/// @param block  from HeapAlloc, given back once; never null.
void HeapFree(void* block) noexcept;

}  // namespace kavo
