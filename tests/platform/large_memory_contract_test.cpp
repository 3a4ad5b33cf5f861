#include "platform/large_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace tarvo {
namespace {

TEST(LargeMemory, CanBeWrittenFromTheFirstToTheLastByte) {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  for (const std::size_t size : {std::size_t{1}, std::size_t{4097}, kMegabyte - 1, kMegabyte,
                                 2 * kMegabyte, 2 * kMegabyte + 1, 5 * kMegabyte}) {
    const LargeMemory memory(size);
    ASSERT_EQ(memory.Bytes().size(), size);
    std::fill(memory.Bytes().begin(), memory.Bytes().end(), 'a');
    EXPECT_EQ(std::count(memory.Bytes().begin(), memory.Bytes().end(), 'a'), size);
  }
}

TEST(LargeMemory, OfNoBytesIsNone) { EXPECT_TRUE(LargeMemory(0).Bytes().empty()); }

TEST(LargeMemory, ThatTheSystemDoesNotHaveIsNone) {
  for (const std::size_t size : {SIZE_MAX / 2, SIZE_MAX / 2 + 1, SIZE_MAX - 1, SIZE_MAX}) {
    EXPECT_TRUE(LargeMemory(size).Bytes().empty()) << size;
  }
}

}  // namespace
}  // namespace tarvo
