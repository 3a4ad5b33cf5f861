#include "catalogue/drivers_folder.h"

#include "base/runtime_error.h"
#include "catalogue/driver_list.h"
#include "support/list_run.h"

namespace tarvo::test {
namespace {

using ::testing::Contains;
using ::testing::Not;

class TheDriversDirectory : public ListRun {};

TEST_F(TheDriversDirectory, IsFoundInAnyLetterCase) {
  folder.MakeFolder(InData("dRIVERS/Meter"));
  Update();
  EXPECT_THAT(Names(), Contains("Meter"));
  EXPECT_FALSE(std::filesystem::exists(folder / InData("Drivers")));
}

TEST_F(TheDriversDirectory, IsFoundInAnAncestorWhichStaysTheCurrentFolder) {
  folder.MakeFolder("documents/drivers/Meter");
  Update();
  EXPECT_THAT(Names(), Contains("Meter"));
  EXPECT_EQ(platform.CurrentFolder(), folder / "documents");
  EXPECT_EQ(window.dataPath, folder / kDataFolder);
  EXPECT_EQ(DriverFolderPath(platform, "Meter"), folder / "documents/drivers/Meter");
}

TEST_F(TheDriversDirectory, InTheRootIsNeverUsed) {
  folder.MakeFolder("drivers/Stranger");
  Update();
  EXPECT_THAT(Names(), Not(Contains("Stranger")));
  EXPECT_TRUE(std::filesystem::is_directory(folder / InData("Drivers")));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(TheDriversDirectory, IsMadeInTheBaseDirectoryNotWhereTheSearchBegan) {
  std::filesystem::current_path(folder.MakeFolder("elsewhere/deep"));
  Update();
  EXPECT_TRUE(std::filesystem::is_directory(folder / InData("Drivers")));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(TheDriversDirectory, MayBeALinkAndIsLeftTheWayItWasEntered) {
  folder.MakeFolder("elsewhere/Meter");
  std::filesystem::create_directory_symlink(folder / "elsewhere", folder / InData("drivers"));
  Update();
  Update();
  EXPECT_THAT(Names(), Contains("Meter"));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(TheDriversDirectory, IsNotMadeBesideAFileOfThatNameInAnotherLetterCase) {
  folder.WriteFile(InData("drivers"));
  EXPECT_THROW(Update(), RuntimeError);
  EXPECT_FALSE(std::filesystem::exists(folder / InData("Drivers")));
}

TEST_F(TheDriversDirectory, IsMadeAnewInTheBaseDirectoryAfterTheCurrentFolderHasVanished) {
  Update();
  std::filesystem::remove_all(folder / kDataFolder);
  folder.MakeFolder(kDataFolder);
  Update();
  EXPECT_THAT(Names(), ::testing::ElementsAre("(Add Driver)"));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

// As with a disk that was taken out and put back.
TEST_F(TheDriversDirectory, IsFoundAgainInABaseDirectoryThatHasComeBack) {
  Update();
  std::filesystem::remove_all(folder / kDataFolder);
  Driver("Meter");
  Update();
  EXPECT_THAT(Names(), Contains("Meter"));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(TheDriversDirectory, OfABaseDirectoryThatHasVanishedRaisesAnErrorThatNamesIt) {
  Update();
  std::filesystem::remove_all(folder / kDataFolder);
  try {
    Update();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kPathNotFound);
    EXPECT_THAT(error.Description(), ::testing::HasSubstr("Halvex Tarvo"));
  }
}

TEST_F(TheDriversDirectory, IsMadeInABaseDirectoryGivenInAnotherLetterCase) {
  window.dataPath = folder / "DOCUMENTS/halvex limited/HALVEX TARVO/";
  std::filesystem::current_path(folder.MakeFolder("elsewhere"));
  Update();
  EXPECT_TRUE(std::filesystem::is_directory(folder / InData("Drivers")));
}

// Found by the search it would have been used; the search began elsewhere, so it is to be made.
TEST_F(TheDriversDirectory, OfTheBaseDirectoryIsAnErrorWhenTheSearchDoesNotPassIt) {
  Driver("Meter");
  std::filesystem::current_path(folder.MakeFolder("elsewhere"));
  try {
    Update();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kPathFileAccessError);
  }
}

TEST_F(TheDriversDirectory, ThatCannotBeMadeRaisesTheErrorAndLeavesTheCurrentFolder) {
  folder.WriteFile(InData("Drivers"), "a file in its place");
  std::filesystem::current_path(folder.MakeFolder("elsewhere"));
  try {
    Update();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kPathFileAccessError);
  }
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder) << "the search had come this far";
}

class UnlistableDrivers : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  std::vector<FolderEntry> Entries(std::string_view path) override {
    if (path.ends_with("/Drivers")) throw RuntimeError(kPermissionDenied);
    return RootedPlatform::Entries(path);
  }
};

TEST_F(TheDriversDirectory, ThatCannotBeListedLeavesItselfAsTheCurrentFolder) {
  Driver("Meter");
  UnlistableDrivers unlistable(folder.Path());
  Globals other(unlistable, frontEnd, "");
  EXPECT_THROW(UpdateDriverList(other, window), RuntimeError);
  EXPECT_EQ(platform.CurrentFolder(), folder / InData("Drivers"));
}

TEST_F(TheDriversDirectory, ThatCannotBeListedIsLeftAgainWhereTheRunGoesOn) {
  Driver("Meter");
  UnlistableDrivers unlistable(folder.Path());
  Globals other(unlistable, frontEnd, "");
  TryUpdateDriverList(other, window);
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

}  // namespace
}  // namespace tarvo::test
