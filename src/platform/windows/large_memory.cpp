#include "platform/large_memory.h"

#include <windows.h>

namespace tarvo {

LargeMemory::LargeMemory(std::size_t size) {
  if (size == 0) return;
  void* const memory = ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (!memory) return;
  mapping_ = bytes_ = {static_cast<char*>(memory), size};
}

LargeMemory::~LargeMemory() {
  if (!mapping_.empty()) ::VirtualFree(mapping_.data(), 0, MEM_RELEASE);
}

}  // namespace tarvo
