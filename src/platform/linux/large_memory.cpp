#include "platform/large_memory.h"

#include <sys/mman.h>

namespace tarvo {

LargeMemory::LargeMemory(std::size_t size) {
  if (size == 0) return;
  void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return;
  // A wish: a system without large pages refuses it.
  ::madvise(memory, size, MADV_HUGEPAGE);
  bytes_ = {static_cast<char*>(memory), size};
}

LargeMemory::~LargeMemory() {
  if (!bytes_.empty()) ::munmap(bytes_.data(), bytes_.size());
}

}  // namespace tarvo
