#include "base/paths.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(WithSeparator, TestsTheLastCharacterOnly) {
  EXPECT_EQ(WithSeparator("/a"), "/a/");
  EXPECT_EQ(WithSeparator("/a/"), "/a/");
  EXPECT_EQ(WithSeparator("/a//"), "/a//");
  EXPECT_EQ(WithSeparator("/"), "/");
  EXPECT_EQ(WithSeparator(""), "/");
}

TEST(JoinPath, PutsOneSeparatorBetween) {
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(JoinPath("/a/", "b"), "/a/b");
  EXPECT_EQ(JoinPath("/", "b"), "/b");
  EXPECT_EQ(JoinPath("", "b"), "b");
  EXPECT_EQ(JoinPath("a", ""), "a/");
}

TEST(FileNameOf, IsThePartBehindTheLastSeparator) {
  EXPECT_EQ(FileNameOf("/a/b.txt"), "b.txt");
  EXPECT_EQ(FileNameOf("b.txt"), "b.txt");
  EXPECT_EQ(FileNameOf("/a/"), "");
  EXPECT_EQ(FileNameOf("/"), "");
  EXPECT_EQ(FileNameOf(""), "");
}

TEST(FolderOf, IsThePartBeforeTheLastSeparator) {
  EXPECT_EQ(FolderOf("/a/b.txt"), "/a");
  EXPECT_EQ(FolderOf("a/b"), "a");
  EXPECT_EQ(FolderOf("/a/"), "/a");
  EXPECT_EQ(FolderOf("/a"), "/");
  EXPECT_EQ(FolderOf("/"), "/");
  EXPECT_EQ(FolderOf("a"), "");
  EXPECT_EQ(FolderOf(""), "");
}

TEST(RootSize, CountsTheFirstSlash) {
  EXPECT_EQ(RootSize("/"), 1u);
  EXPECT_EQ(RootSize("/a/b"), 1u);
  EXPECT_EQ(RootSize("a/b"), 0u);
  EXPECT_EQ(RootSize("C:\\a"), 0u);
  EXPECT_EQ(RootSize(""), 0u);
}

}  // namespace
}  // namespace tarvo
