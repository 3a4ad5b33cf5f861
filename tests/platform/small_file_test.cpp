#include "platform/linux/small_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>
#include <string>

#include "support/killed_process.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

std::string WithLine(const std::string& text) { return text + "line\n"; }

TEST(SmallFiles, AreReadWhole) {
  const TemporaryFolder folder;
  const std::string bytes("a\0\xff\r\n", 5);
  EXPECT_EQ(ReadSmallFile(folder.WriteFile("file", bytes)).content, bytes);
  EXPECT_EQ(ReadSmallFile(folder.WriteFile("empty")).content, "");
}

TEST(SmallFiles, AreToldMissingFromUnreadable) {
  const TemporaryFolder folder;
  const SmallFile missing = ReadSmallFile(folder / "folder/missing");
  EXPECT_FALSE(missing.content);
  EXPECT_TRUE(missing.isMissing);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  folder.WriteFile("large");
  fs::resize_file(folder / "large", 16 * 1024 * 1024 + 1);
  for (const std::string& path : {folder.Path(), folder / "pipe", folder / "large"}) {
    const SmallFile unreadable = ReadSmallFile(path);
    EXPECT_FALSE(unreadable.content) << path;
    EXPECT_FALSE(unreadable.isMissing) << path;
    EXPECT_EQ(ReplaceSmallFile(path, WithLine), Replacing::kFailed) << path;
  }
}

TEST(SmallFiles, AreReplacedByWhatTheEditMakesOfThem) {
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("file", "old\n");
  EXPECT_EQ(ReplaceSmallFile(path, WithLine), Replacing::kDone);
  EXPECT_EQ(ReadFileAt(path), "old\nline\n");
}

TEST(SmallFiles, ThatTheEditLeavesAloneStayTheSameFile) {
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("file", "old\n");
  struct stat before;
  struct stat after;
  ASSERT_EQ(::stat(path.c_str(), &before), 0);
  EXPECT_EQ(ReplaceSmallFile(path, [](const std::string& text) { return text; }), Replacing::kDone);
  ASSERT_EQ(::stat(path.c_str(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST(SmallFiles, KeepWhatAnotherProgramWritesMeanwhile) {
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("file", "old\n");
  int edits = 0;
  const Replacing result = ReplaceSmallFile(path, [&](const std::string& text) {
    if (++edits == 1) folder.WriteFile("file", "another's\n");
    return WithLine(text);
  });
  EXPECT_EQ(result, Replacing::kDone);
  EXPECT_EQ(ReadFileAt(path), "another's\nline\n");
}

TEST(SmallFiles, ThatNeverRestAreLeftToTheOther) {
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("file", "0");
  int edits = 0;
  const Replacing result = ReplaceSmallFile(path, [&](const std::string& text) {
    folder.WriteFile("file", std::to_string(++edits));
    return WithLine(text);
  });
  EXPECT_EQ(result, Replacing::kFailed);
  EXPECT_EQ(ReadFileAt(path), std::to_string(edits));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
}

TEST(SmallFiles, StayAsTheyAreWhenTheirDiskIsFull) {
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("file", "old\n");
  const int signal = SignalThatEnds([&] {
    // No file may grow beyond four bytes in this process.
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit four{4, 4};
    if (::setrlimit(RLIMIT_FSIZE, &four) != 0) throw 1;
    if (ReplaceSmallFile(path, WithLine) != Replacing::kFailed) throw 2;
  });
  EXPECT_EQ(signal, 0);
  EXPECT_EQ(ReadFileAt(path), "old\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
}

// Killed at any moment, the file is the old or the new one, and the next run clears what is left.
TEST(SmallFiles, AreTheOldOrTheNewAfterAKill) {
  const TemporaryFolder folder;
  const std::string old(100'000, 'o');
  const std::string path = folder.WriteFile("file", old);
  std::mt19937 random(7);
  int killed = 0;
  for (int round = 0; round < 60; ++round) {
    const auto nanoseconds = std::uniform_int_distribution<int>(1, 2'000'000)(random);
    const int signal = SignalThatEnds([&] {
      HaveMyselfKilledAfter(std::chrono::nanoseconds(nanoseconds));
      for (;;)
        ReplaceSmallFile(path, [&](const std::string& text) {
          return text == old ? std::string(90'000, 'n') : old;
        });
    });
    if (signal == SIGKILL) ++killed;
    const std::string now = ReadFileAt(path);
    ASSERT_TRUE(now == old || now == std::string(90'000, 'n')) << "round " << round;
  }
  EXPECT_EQ(killed, 60);
  EXPECT_EQ(ReplaceSmallFile(path, WithLine), Replacing::kDone);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
}

}  // namespace
}  // namespace tarvo::test
