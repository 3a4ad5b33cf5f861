#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <climits>
#include <filesystem>

#include "platform/contract.h"
#include "platform/linux/held_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// A held folder with a driver, and a tree outside with the same names.
class HeldFolders : public ::testing::Test {
 protected:
  HeldFolders() {
    for (const char* tree : {"Drivers/Meter/", "outside/"}) {
      for (const char* name : {"file", "Data/file"}) {
        folder.WriteFile(std::string(tree) + name, tree);
        fs::permissions(folder / (std::string(tree) + name), fs::perms(0444));
      }
      folder.MakeFolder(std::string(tree) + "Data/empty");
    }
    held = platform.HoldFolder(folder / "Drivers");
  }

  std::string Below(const std::string& name) const { return folder / ("Drivers/" + name); }

  // Puts a link to the tree outside in a folder's place.
  void Swap(const std::string& name, const std::string& target) const {
    fs::rename(folder / name, folder / "aside");
    fs::create_directory_symlink(folder / target, folder / name);
  }

  void ExpectEveryCallToFindNothing(const std::string& meter) {
    EXPECT_EQ(ErrorOf([&] { platform.Entries(meter); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.Entries(meter + "/Data"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.RemoveFile(meter + "/file"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.RemoveFile(meter + "/Data/file"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder(meter + "/Data/empty"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.SetAttributes(meter + "/file", kNormal); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(meter + "/new"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.MakeFile(meter + "/new", FileUse::kData); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(meter + "/new", OpenFor::kReadingAndWriting); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.RenameFile(meter + "/file", meter + "/new"); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentFolder(meter); }), 76);
    EXPECT_EQ(ErrorOf([&] { platform.HoldFolder(meter); }), 76);
    EXPECT_FALSE(platform.Attributes(meter + "/file"));
    EXPECT_FALSE(platform.HasOtherNames(meter + "/file"));
  }

  TemporaryFolder folder;
  Platform& platform = SystemPlatform();
  std::unique_ptr<HeldFolder> held;
};

TEST_F(HeldFolders, LeadToWhatWasHeldWhateverTakesItsPlace) {
  Swap("Drivers", "outside");
  EXPECT_EQ(platform.OpenFile(Below("Meter/file"), OpenFor::kReading)->ReadAt(0, 99),
            "Drivers/Meter/");
  platform.RemoveFile(Below("Meter/file"));
  platform.MakeFile(Below("new"), FileUse::kData);
  EXPECT_FALSE(fs::exists(folder / "aside/Meter/file"));
  EXPECT_TRUE(fs::exists(folder / "aside/new"));
  EXPECT_TRUE(fs::exists(folder / "outside/file"));
  held.reset();
  EXPECT_EQ(platform.OpenFile(Below("file"), OpenFor::kReading)->ReadAt(0, 99), "outside/");
}

TEST_F(HeldFolders, LetNothingThroughALinkInAFoldersPlace) {
  Swap("Drivers/Meter", "outside");
  ExpectEveryCallToFindNothing(Below("Meter"));
  EXPECT_EQ(fs::status(folder / "outside/file").permissions(), fs::perms(0444));
}

TEST_F(HeldFolders, LetNothingThroughALinkOnTheWay) {
  fs::rename(folder / "Drivers/Meter", folder / "aside");
  fs::create_directory_symlink("../outside", folder / "Drivers/Data");
  folder.MakeFolder("outside/Meter");
  fs::rename(folder / "outside/Data", folder / "outside/Meter/Data");
  ExpectEveryCallToFindNothing(Below("Data/Meter"));
}

TEST_F(HeldFolders, LetNothingThroughTheWayUpward) {
  ExpectEveryCallToFindNothing(Below("../outside"));
  ExpectEveryCallToFindNothing(Below("Meter/../../outside"));
  EXPECT_EQ(ErrorOf([&] { platform.Entries(Below("Meter/..")); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.Entries(Below("..")); }), 76);
}

TEST_F(HeldFolders, FollowALinkInAFilesPlaceOnlyForReading) {
  fs::create_symlink("../../outside/file", folder / "Drivers/Meter/link");
  fs::create_symlink("../../outside/new", folder / "Drivers/Meter/broken");
  EXPECT_EQ(platform.OpenFile(Below("Meter/link"), OpenFor::kReading)->ReadAt(0, 99), "outside/");
  EXPECT_TRUE(platform.Attributes(Below("Meter/link")));
  EXPECT_TRUE(platform.IsLink(Below("Meter/link")));
  for (const char* link : {"Meter/link", "Meter/broken"}) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(Below(link), OpenFor::kReadingAndWriting); }), 76);
  }
  EXPECT_FALSE(fs::exists(folder / "outside/new"));
  platform.RemoveFile(Below("Meter/link"));
  EXPECT_TRUE(fs::exists(folder / "outside/file"));
}

TEST_F(HeldFolders, TakeTheirOwnPathInEverySpelling) {
  EXPECT_EQ(platform.Entries(Below("")).size(), 1U);
  EXPECT_EQ(platform.Entries(Below("/Meter//Data/")).size(), 2U);
  EXPECT_EQ(platform.Entries(Below(".")).size(), 1U);
  const auto withSeparators = platform.HoldFolder(folder / "outside//");
  Swap("outside", "Drivers");
  EXPECT_EQ(platform.Entries(folder / "outside/Data").size(), 2U);
}

TEST_F(HeldFolders, HoldNothingThatOnlyBeginsLikeThem) {
  folder.WriteFile("Drivers2/file", "another");
  fs::create_directory_symlink("Drivers2", folder / "DriversLink");
  EXPECT_EQ(platform.OpenFile(folder / "DriversLink/file", OpenFor::kReading)->ReadAt(0, 99),
            "another");
}

TEST_F(HeldFolders, MayBeLinksThemselvesUnlessTheyLieInOne) {
  fs::create_directory_symlink("Meter", folder / "Drivers/link");
  EXPECT_EQ(ErrorOf([&] { platform.HoldFolder(Below("link")); }), 76);
  held.reset();
  const auto meter = platform.HoldFolder(Below("link"));
  fs::remove(folder / "Drivers/link");
  fs::create_directory_symlink("../outside", folder / "Drivers/link");
  EXPECT_EQ(platform.OpenFile(Below("link/file"), OpenFor::kReading)->ReadAt(0, 99),
            "Drivers/Meter/");
}

TEST_F(HeldFolders, OfWhichOneLiesInAnotherAreEachHeld) {
  auto meter = platform.HoldFolder(Below("Meter"));
  Swap("Drivers/Meter", "outside");
  EXPECT_EQ(platform.Entries(Below("Meter/Data")).size(), 2U);
  meter.reset();
  ExpectEveryCallToFindNothing(Below("Meter"));
}

TEST_F(HeldFolders, TakePathsLongerThanTheSystemTakes) {
  std::string deep = Below("Meter");
  while (deep.size() < 3 * std::size_t{PATH_MAX}) {
    deep += "/" + std::string(200, 'n');
    platform.MakeFolder(deep);
  }
  platform.MakeFile(deep + "/file", FileUse::kData)->WriteAt(0, "x");
  EXPECT_EQ(platform.Entries(deep).size(), 1U);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(Below(std::string(256, 'n'))); }), 52);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(Below(std::string(5000, 'n') + "/a")); }), 52);
  Swap("Drivers/Meter", "outside");
  EXPECT_EQ(ErrorOf([&] { platform.Entries(deep); }), 76);
}

using Enter = Descriptor (*)(int, std::string_view);

// The two ways to enter a folder without following links.
class EnteringAFolder : public ::testing::TestWithParam<Enter> {
 protected:
  EnteringAFolder() {
    folder.MakeFolder("a/b/c");
    folder.WriteFile("a/plain");
    fs::create_directory_symlink("a", folder / "link");
    fs::create_directory_symlink("b", folder / "a/link");
  }
  Descriptor Open(std::string_view names) {
    const Descriptor base(::open(folder.Path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return GetParam()(base.Get(), names);
  }

  TemporaryFolder folder;
};

TEST_P(EnteringAFolder, LeadsToTheFolder) {
  for (const char* names : {"a/b/c", "a//b/c", "a/./b/c/", "a/b/c//"}) {
    const Descriptor entered = Open(names);
    ASSERT_GE(entered.Get(), 0) << names;
    struct stat seen {};
    struct stat expected {};
    ASSERT_EQ(::fstat(entered.Get(), &seen), 0);
    ASSERT_EQ(::stat((folder / "a/b/c").c_str(), &expected), 0);
    EXPECT_EQ(seen.st_ino, expected.st_ino) << names;
  }
}

TEST_P(EnteringAFolder, FailsAtALinkAFileAWayUpwardAndWhatIsMissing) {
  for (const char* names : {"link", "link/b", "a/link", "a/link/c", "a/plain", "a/plain/x", "..",
                            "a/..", "a/../a", "../a", "missing", "a/missing/c"}) {
    EXPECT_LT(Open(names).Get(), 0) << names;
  }
}

INSTANTIATE_TEST_SUITE_P(Ways, EnteringAFolder, ::testing::Values(EnterBelow, EnterNameByName));

}  // namespace
}  // namespace tarvo::test
