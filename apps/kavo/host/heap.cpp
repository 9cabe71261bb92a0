// A worked example of a host's heap: the process's own, which also knows what is out.
#include "host/heap.hpp"

#include <cstddef>
#include <cstdlib>

#include "lsq/heap.hpp"

namespace kavo_app {
namespace {

// Stands before every block and ties it into the ring of those that are out.
struct alignas(std::max_align_t) Header {
  Header* next;
  Header* previous;
};

Header ring{&ring, &ring};

void Release(Header* header) {
  header->previous->next = header->next;
  header->next->previous = header->previous;
  std::free(header);
}

}  // namespace

void ReclaimHeap() {
  while (ring.next != &ring) {
    Release(ring.next);
  }
}

}  // namespace kavo_app

namespace kavo {

using kavo_app::Header;
using kavo_app::ring;

void* HeapAlloc(std::size_t size) noexcept {
  auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
  if (header == nullptr) {
    return nullptr;
  }
  *header = {ring.next, &ring};
  ring.next->previous = header;
  ring.next = header;
  return header + 1;
}

void HeapFree(void* block) noexcept { kavo_app::Release(static_cast<Header*>(block) - 1); }

}  // namespace kavo
