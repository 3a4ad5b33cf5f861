#include "platform/large_memory.h"

#include <sys/mman.h>

#include <cstdint>

namespace tarvo {
namespace {

// The usual size of a large page. One begins at a multiple of it, and is given only where all of it
// is there.
constexpr std::size_t kLargePage = std::size_t{2} * 1024 * 1024;

constexpr std::size_t RoundUpToLargePage(std::size_t number) {
  return (number + kLargePage - 1) / kLargePage * kLargePage;
}

}  // namespace

LargeMemory::LargeMemory(std::size_t size) {
  if (size == 0 || size > SIZE_MAX / 2) return;
  const std::size_t mapped = RoundUpToLargePage(size) + kLargePage;
  void* const memory = ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return;
  mapping_ = {static_cast<char*>(memory), mapped};
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  bytes_ = mapping_.subspan(RoundUpToLargePage(address) - address, size);
  // A wish: a system without large pages refuses it. A page of which less than half is used would
  // cost more than the small ones that it stands for.
  if (size >= kLargePage / 2) ::madvise(bytes_.data(), RoundUpToLargePage(size), MADV_HUGEPAGE);
}

LargeMemory::~LargeMemory() {
  if (!mapping_.empty()) ::munmap(mapping_.data(), mapping_.size());
}

}  // namespace tarvo
