#include "platform/large_memory.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tarvo {
namespace {

TEST(LargeMemory, CanBeWrittenFromTheFirstToTheLastByte) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{4097}, std::size_t{5} << 20}) {
    const LargeMemory memory(size);
    ASSERT_EQ(memory.Bytes().size(), size);
    memory.Bytes().front() = 'a';
    memory.Bytes().back() = 'z';
    EXPECT_EQ(memory.Bytes()[size - 1], 'z');
  }
}

TEST(LargeMemory, OfNoBytesIsNone) { EXPECT_TRUE(LargeMemory(0).Bytes().empty()); }

TEST(LargeMemory, ThatTheSystemDoesNotHaveIsNone) {
  EXPECT_TRUE(LargeMemory(SIZE_MAX / 2).Bytes().empty());
}

}  // namespace
}  // namespace tarvo
