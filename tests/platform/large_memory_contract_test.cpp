#include "platform/large_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

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

TEST(LargeMemory, ThatTheSystemDoesNotHaveIsAnError) {
  EXPECT_THROW(LargeMemory(SIZE_MAX / 2), std::bad_alloc);
}

}  // namespace
}  // namespace tarvo
