#include <filesystem>

#include "contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

constexpr OpenFor kBothUses[] = {OpenFor::kReading, OpenFor::kReadingAndWriting};

TEST_P(PlatformContract, AMissingFileIsNotOpenedForReadingAndNotMade) {
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("driver.inf", OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(folder / "driver.inf", OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("", OpenFor::kReading); }), 53);
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_P(PlatformContract, AMissingFolderOnTheWayToAFileIsAMissingPath) {
  folder.WriteFile("plain");
  for (const OpenFor use : kBothUses) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile("nowhere/driver.inf", use); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(folder / "a/b/c", use); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile("plain/driver.inf", use); }), 76);
  }
}

TEST_P(PlatformContract, AMissingFileIsMadeEmptyForWriting) {
  EXPECT_EQ(platform.OpenFile("new", OpenFor::kReadingAndWriting)->Size(), 0u);
  EXPECT_EQ(folder.ReadFile("new"), "");
}

TEST_P(PlatformContract, AnExistingFileIsKeptWhenOpened) {
  folder.WriteFile("store", "content");
  for (const OpenFor use : kBothUses) {
    const auto file = platform.OpenFile("store", use);
    EXPECT_EQ(file->Size(), 7u);
    EXPECT_EQ(file->ReadAt(0, 7), "content");
  }
  EXPECT_EQ(folder.ReadFile("store"), "content");
}

TEST_P(PlatformContract, AFolderIsNoFile) {
  folder.MakeFolder("Data");
  for (const OpenFor use : kBothUses) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile("Data", use); }), 75);
  }
}

TEST_P(PlatformContract, ImpossibleFileNamesAreBadNames) {
  for (const OpenFor use : kBothUses) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(std::string(256, 'x'), use); }), 52);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(std::string_view("a\0b", 3), use); }), 52);
  }
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_P(PlatformContract, ReadingStopsWhereTheFileEnds) {
  folder.WriteFile("file", "0123456789");
  const auto file = platform.OpenFile("file", OpenFor::kReading);
  EXPECT_EQ(file->ReadAt(0, 10), "0123456789");
  EXPECT_EQ(file->ReadAt(3, 4), "3456");
  EXPECT_EQ(file->ReadAt(8, 10), "89");
  EXPECT_EQ(file->ReadAt(10, 1), "");
  EXPECT_EQ(file->ReadAt(1000, 10), "");
  EXPECT_EQ(file->ReadAt(5, 0), "");
}

TEST_P(PlatformContract, WritingReplacesBytesInPlace) {
  folder.WriteFile("file", "0123456789");
  platform.OpenFile("file", OpenFor::kReadingAndWriting)->WriteAt(2, "xy");
  EXPECT_EQ(folder.ReadFile("file"), "01xy456789");
}

TEST_P(PlatformContract, WritingBehindTheEndLeavesZerosBetween) {
  const auto file = platform.OpenFile("file", OpenFor::kReadingAndWriting);
  file->WriteAt(3, "ab");
  file->WriteAt(5, "");
  EXPECT_EQ(file->Size(), 5u);
  EXPECT_EQ(file->ReadAt(0, 5), std::string("\0\0\0ab", 5));
  EXPECT_EQ(folder.ReadFile("file"), std::string("\0\0\0ab", 5));
}

TEST_P(PlatformContract, AppendingWritesAtTheEndWhereverThatIsAndTellsIt) {
  folder.WriteFile("file", "0123");
  const auto one = platform.OpenFile("file", OpenFor::kReadingAndWriting);
  const auto two = platform.OpenFile("file", OpenFor::kReadingAndWriting);
  EXPECT_EQ(one->Append("one"), 4u);
  EXPECT_EQ(two->Append("two"), 7u);
  EXPECT_EQ(two->Append(""), 10u);
  two->WriteAt(0, "ab");
  EXPECT_EQ(one->Append("!"), 10u);
  EXPECT_EQ(folder.ReadFile("file"), "ab23onetwo!");
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("file", OpenFor::kReading)->Append("x"); }), 54);
}

TEST_P(PlatformContract, AFileMayBeOpenManyTimesWithoutALock) {
  const auto one = platform.OpenFile("file", OpenFor::kReadingAndWriting);
  const auto two = platform.OpenFile("file", OpenFor::kReadingAndWriting);
  one->WriteAt(0, "one");
  EXPECT_EQ(two->Size(), 3u);
  two->WriteAt(3, "two");
  EXPECT_EQ(one->ReadAt(0, 6), "onetwo");
}

TEST_P(PlatformContract, AFileOpenForReadingCannotBeWritten) {
  folder.WriteFile("file", "old");
  const auto file = platform.OpenFile("file", OpenFor::kReading);
  EXPECT_EQ(ErrorOf([&] { file->WriteAt(0, "new"); }), 54);
  EXPECT_EQ(folder.ReadFile("file"), "old");
}

}  // namespace
}  // namespace tarvo::test
