#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/paths.h"
#include "contract.h"
#include "file_times.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

TEST_P(PlatformContract, AWatchTellsOfNothingWhenNothingIsWritten) {
  folder.WriteFile("Data/old.csv", "x");
  const auto watch = platform.WatchFolder(folder / "Data");
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, AWatchTellsOfAFileThatIsMade) {
  folder.WriteFile("Data/old.csv", "x");
  const auto watch = platform.WatchFolder(folder / "Data");
  folder.WriteFile("Data/new.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/new.csv");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/new.csv") << "asked again";
  folder.WriteFile("Data/newer.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/newer.csv");
}

TEST_P(PlatformContract, AWatchTellsOfAnEmptyFile) {
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("empty.csv");
  EXPECT_EQ(watch->NewestFile(), folder / "empty.csv");
}

TEST_P(PlatformContract, AWatchTellsOfAFileThatIsWrittenInPlaceWithTheSameSizeAndTime) {
  const std::string path = folder.WriteFile("old.csv", "one");
  const auto time = fs::last_write_time(path);
  const auto watch = platform.WatchFolder(folder.Path());
  std::fstream(path, std::ios::in | std::ios::out) << "two";
  fs::last_write_time(path, time);
  EXPECT_EQ(watch->NewestFile(), path);
}

TEST_P(PlatformContract, AWatchTellsOfAFileThatIsStillOpen) {
  std::ofstream log(folder / "log.txt");
  const auto watch = platform.WatchFolder(folder.Path());
  log << "a line" << std::endl;
  EXPECT_EQ(watch->NewestFile(), folder / "log.txt");
}

TEST_P(PlatformContract, TheFileWrittenLastWinsWhateverItsNameAndItsTime) {
  const std::vector<std::string> orders[] = {{"a", "b", "c"}, {"c", "b", "a"}, {"b", "c", "a"}};
  for (const std::vector<std::string>& order : orders) {
    const auto watch = platform.WatchFolder(folder.Path());
    for (const std::string& name : order) folder.WriteFile(name, name);
    SetTime(folder / "a", 2000);
    SetTime(folder / "b", 2000);
    SetTime(folder / "c", 2000);
    EXPECT_EQ(watch->NewestFile(), folder / order.back());
  }
}

TEST_P(PlatformContract, TheFileWrittenLastWinsAgainstOnesThatAreOnlyClosedLater) {
  std::ofstream early(folder / "early");
  const auto watch = platform.WatchFolder(folder.Path());
  early << "x" << std::flush;
  folder.WriteFile("late", "x");
  early.close();
  EXPECT_EQ(watch->NewestFile(), folder / "late");
}

TEST_P(PlatformContract, AFileWithAnOldTimeCountsWhenItIsMade) {
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("other.csv", "x");
  folder.WriteFile("restored.csv", "x");
  SetTime(folder / "restored.csv", 1990);
  EXPECT_EQ(watch->NewestFile(), folder / "restored.csv");
}

TEST_P(PlatformContract, APathBeginsAsTheWatchedFolderWasGiven) {
  folder.MakeFolder("Drivers/my driver");
  for (const std::string& given :
       {InSystemForm("Drivers/my driver"), InSystemForm("Drivers/my driver/"),
        InSystemForm("./Drivers/../Drivers/my driver"), folder / "Drivers/my driver"}) {
    const auto watch = platform.WatchFolder(given);
    folder.WriteFile("Drivers/my driver/Data/a.csv", given);
    EXPECT_EQ(watch->NewestFile(), JoinPath(given, InSystemForm("Data/a.csv")));
  }
}

TEST_P(PlatformContract, AWatchStaysWithItsFolderWhenAnotherOneBecomesCurrent) {
  folder.MakeFolder("Data");
  folder.MakeFolder("elsewhere/Data");
  const auto watch = platform.WatchFolder("Data");
  platform.ChangeCurrentFolder("elsewhere");
  folder.WriteFile("Data/a.csv", "x");
  EXPECT_EQ(watch->NewestFile(), InSystemForm("Data/a.csv"));
}

TEST_P(PlatformContract, AWatchTellsOfFilesInEveryFolderBelow) {
  folder.MakeFolder("a/b/c/d");
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("a/b/c/d/deep.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "a/b/c/d/deep.csv");
  folder.WriteFile("a/shallow.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "a/shallow.csv");
}

TEST_P(PlatformContract, AWatchTellsOfFilesInFoldersThatAreMadeMeanwhile) {
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("log.txt", "x");
  folder.WriteFile("Data/2024/run.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/2024/run.csv");
  WaitForLaterFileTime();
  folder.WriteFile("log.txt", "xx");
  EXPECT_EQ(watch->NewestFile(), folder / "log.txt");
  WaitForLaterFileTime();
  folder.WriteFile("Data/2024/a run.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/2024/a run.csv");
}

TEST_P(PlatformContract, AnEmptyFolderIsNoFile) {
  const auto watch = platform.WatchFolder(folder.Path());
  folder.MakeFolder("Data");
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, AFileThatIsRenamedIntoPlaceCountsUnderItsFinalName) {
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("run.csv.tmp", "x");
  folder.WriteFile("log.txt", "x");
  fs::rename(folder / "run.csv.tmp", folder / "run.csv");
  EXPECT_EQ(watch->NewestFile(), folder / "run.csv");
  folder.WriteFile(".part", "x");
  fs::rename(folder / ".part", folder / "log.txt");
  EXPECT_EQ(watch->NewestFile(), folder / "log.txt");
}

TEST_P(PlatformContract, FilesAndFoldersThatAreMovedInCountHoweverOldTheyAre) {
  folder.WriteFile("outside/old.csv", "x");
  folder.WriteFile("outside/2023/older.csv", "x");
  SetTime(folder / "outside/old.csv", 2001);
  SetTime(folder / "outside/2023/older.csv", 2000);
  folder.WriteFile("Data/a.csv", "x");
  const auto watch = platform.WatchFolder(folder / "Data");
  fs::rename(folder / "outside/old.csv", folder / "Data/old.csv");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/old.csv");
  fs::rename(folder / "outside/2023", folder / "Data/2023");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/2023/older.csv");
}

TEST_P(PlatformContract, AFolderThatIsOnlyRenamedMakesItsFilesNoNewer) {
  folder.WriteFile("Data/a.csv", "x");
  const auto watch = platform.WatchFolder(folder.Path());
  fs::rename(folder / "Data", folder / "Data before");
  EXPECT_EQ(watch->NewestFile(), "");
  folder.WriteFile("Data before/a.csv", "xx");
  EXPECT_EQ(watch->NewestFile(), folder / "Data before/a.csv");
}

TEST_P(PlatformContract, AFileThatIsGoneAgainDoesNotCount) {
  folder.WriteFile("old.csv", "x");
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("kept.csv", "x");
  folder.WriteFile("lock", "x");
  folder.WriteFile("scratch/a", "x");
  fs::remove(folder / "lock");
  fs::remove_all(folder / "scratch");
  EXPECT_EQ(watch->NewestFile(), folder / "kept.csv");
  fs::remove(folder / "kept.csv");
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, WhatDoesNotWriteAFileDoesNotCount) {
  const std::string path = folder.WriteFile("old.csv", "x");
  const auto watch = platform.WatchFolder(folder.Path());
  EXPECT_EQ(ReadFileAt(path), "x");
  { std::fstream opened(path, std::ios::in | std::ios::out); }
  fs::permissions(path, fs::perms(0600));
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, AWatchedFolderThatDisappearsHasNoNewestFile) {
  folder.MakeFolder("Data");
  const auto watch = platform.WatchFolder(folder / "Data");
  folder.WriteFile("Data/a.csv", "x");
  fs::rename(folder / "Data", folder / "away");
  EXPECT_EQ(watch->NewestFile(), "");
  fs::remove_all(folder / "away");
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, AWatchedFolderThatIsReplacedCountsUnderItsPath) {
  folder.WriteFile("Data/a.csv", "x");
  const auto watch = platform.WatchFolder(folder / "Data");
  fs::remove_all(folder / "Data");
  folder.WriteFile("Data/b.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/b.csv");
}

TEST_P(PlatformContract, AWatchNeedsAFolder) {
  folder.WriteFile("file");
  for (const std::string& path : {folder / "missing", folder / "file", std::string()}) {
    EXPECT_EQ(ErrorOf([&] { platform.WatchFolder(path); }), kPathNotFound) << path;
  }
}

TEST_P(PlatformContract, AWatchBearsThousandsOfFiles) {
  constexpr int kFiles = 1000;
  for (int i = 0; i < kFiles; ++i) folder.WriteFile("many/" + std::to_string(i));
  const auto watch = platform.WatchFolder(folder.Path());
  EXPECT_EQ(watch->NewestFile(), "");
  for (int i = 0; i < kFiles; ++i) folder.WriteFile("more/" + std::to_string(i));
  folder.WriteFile("many/1", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "many/1");
}

TEST_P(PlatformContract, WatchesDoNotDisturbEachOther) {
  folder.MakeFolder("Data");
  auto first = platform.WatchFolder(folder.Path());
  folder.WriteFile("Data/a.csv", "x");
  const auto second = platform.WatchFolder(folder / "Data");
  EXPECT_EQ(second->NewestFile(), "");
  EXPECT_EQ(first->NewestFile(), folder / "Data/a.csv");
  first.reset();
  folder.WriteFile("Data/b.csv", "x");
  EXPECT_EQ(second->NewestFile(), folder / "Data/b.csv");
}

}  // namespace
}  // namespace tarvo::test
