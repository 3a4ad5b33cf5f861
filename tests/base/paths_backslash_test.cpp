#include "base/paths.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(WithSeparator, TestsTheLastCharacterOnly) {
  EXPECT_EQ(WithSeparator(R"(\a)"), R"(\a\)");
  EXPECT_EQ(WithSeparator(R"(\a\)"), R"(\a\)");
  EXPECT_EQ(WithSeparator(R"(\a\\)"), R"(\a\\)");
  EXPECT_EQ(WithSeparator(R"(\)"), R"(\)");
  EXPECT_EQ(WithSeparator(""), R"(\)");
}

TEST(JoinPath, PutsOneSeparatorBetween) {
  EXPECT_EQ(JoinPath(R"(\a)", "b"), R"(\a\b)");
  EXPECT_EQ(JoinPath(R"(\a\)", "b"), R"(\a\b)");
  EXPECT_EQ(JoinPath(R"(\)", "b"), R"(\b)");
  EXPECT_EQ(JoinPath("", "b"), "b");
  EXPECT_EQ(JoinPath("a", ""), R"(a\)");
}

TEST(FileNameOf, IsThePartBehindTheLastSeparator) {
  EXPECT_EQ(FileNameOf(R"(\a\b.txt)"), "b.txt");
  EXPECT_EQ(FileNameOf("b.txt"), "b.txt");
  EXPECT_EQ(FileNameOf(R"(\a\)"), "");
  EXPECT_EQ(FileNameOf(R"(\)"), "");
  EXPECT_EQ(FileNameOf(""), "");
}

TEST(FolderOf, IsThePartBeforeTheLastSeparator) {
  EXPECT_EQ(FolderOf(R"(\a\b.txt)"), R"(\a)");
  EXPECT_EQ(FolderOf(R"(a\b)"), "a");
  EXPECT_EQ(FolderOf(R"(\a\)"), R"(\a)");
  EXPECT_EQ(FolderOf(R"(\a)"), R"(\)");
  EXPECT_EQ(FolderOf(R"(\)"), R"(\)");
  EXPECT_EQ(FolderOf("a"), "");
  EXPECT_EQ(FolderOf(""), "");
}

TEST(FolderOf, ANameInTheRootOfADriveOrAShareLiesInThatRoot) {
  EXPECT_EQ(FolderOf(R"(C:\a\b.txt)"), R"(C:\a)");
  EXPECT_EQ(FolderOf(R"(C:\a)"), R"(C:\)");
  EXPECT_EQ(FolderOf(R"(C:\)"), R"(C:\)");
  EXPECT_EQ(FolderOf(R"(\\server\share\a)"), R"(\\server\share\)");
  EXPECT_EQ(FolderOf(R"(\\server\share)"), R"(\\server\share)");
  EXPECT_EQ(FolderOf("C:a"), "");
}

TEST(RootSize, CountsTheDriveOrTheShare) {
  EXPECT_EQ(RootSize(R"(C:\)"), 3u);
  EXPECT_EQ(RootSize(R"(z:\a\b)"), 3u);
  EXPECT_EQ(RootSize(R"(\a)"), 1u);
  EXPECT_EQ(RootSize(R"(\\server\share)"), 14u);
  EXPECT_EQ(RootSize(R"(\\server\share\a)"), 15u);
  EXPECT_EQ(RootSize(R"(\\?\C:\a)"), 7u);
  EXPECT_EQ(RootSize(R"(\\?\UNC\server\share\a)"), 21u);
  for (const char* path : {"", "a", "C:", "C:a", R"(a\b)", R"(1:\a)", R"(CC:\a)"}) {
    EXPECT_EQ(RootSize(path), 0u) << path;
  }
}

}  // namespace
}  // namespace tarvo
