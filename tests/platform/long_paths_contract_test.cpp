#include <climits>
#include <filesystem>

#include "contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// Makes `levels` folders inside one another and gives the path of the innermost.
std::string MakeTree(Platform& platform, std::string path, int levels, const std::string& name) {
  for (int i = 0; i < levels; ++i) {
    path += "/" + name;
    platform.MakeFolder(path);
  }
  return path;
}

void ExpectThatEverythingWorksIn(Platform& platform, const std::string& deep) {
  platform.OpenFile(deep + "/file", OpenFor::kReadingAndWriting)->WriteAt(0, "deep");
  EXPECT_EQ(platform.OpenFile(deep + "/file", OpenFor::kReading)->ReadAt(0, 10), "deep");
  EXPECT_EQ(platform.Attributes(deep), kDirectory);
  EXPECT_EQ(platform.Attributes(deep + "/file"), kNormal);
  const auto entries = platform.Entries(deep);
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "file");
  platform.ChangeCurrentFolder(deep);
  EXPECT_EQ(platform.CurrentFolder(), deep);
  EXPECT_EQ(platform.Attributes("file"), kNormal);

  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(deep); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(deep, OpenFor::kReading); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(deep + "/gone", OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(deep + "/gone/x", OpenFor::kReading); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(deep + "/gone/x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.Entries(deep + "/gone"); }), 76);
  EXPECT_EQ(platform.Attributes(deep + "/gone"), std::nullopt);
}

TEST_P(PlatformContract, EverythingWorksAThousandLevelsDeep) {
  ExpectThatEverythingWorksIn(platform, MakeTree(platform, folder.Path(), 1000, "d"));
}

TEST_P(PlatformContract, EverythingWorksBeyondTheSystemsLongestPath) {
  const std::string deep = MakeTree(platform, folder.Path(), 50, std::string(255, 'n'));
  ASSERT_GT(deep.size(), 3u * PATH_MAX);
  ExpectThatEverythingWorksIn(platform, deep);
}

TEST_P(PlatformContract, EverythingWorksAroundTheSystemsLongestPath) {
  std::string deep = MakeTree(platform, folder.Path(), 16, std::string(250, 'n'));
  deep = MakeTree(platform, deep, 1, std::string(PATH_MAX - deep.size() - 20, 'm'));
  ASSERT_LT(deep.size(), static_cast<std::size_t>(PATH_MAX));
  while (deep.size() < PATH_MAX + 20) {
    EXPECT_EQ(platform.Attributes(deep), kDirectory) << deep.size();
    EXPECT_EQ(platform.Entries(deep).size(), 0u) << deep.size();
    deep = MakeTree(platform, deep, 1, "x");
  }
}

TEST_P(PlatformContract, LongPathsMayGoThroughLinksAndBackUp) {
  const std::string deep = MakeTree(platform, folder.Path(), 20, std::string(255, 'n'));
  fs::create_symlink(std::string(255, 'n'), folder / "link");
  platform.OpenFile(deep + "/file", OpenFor::kReadingAndWriting);
  const std::string throughLink = folder / "link" + deep.substr(folder.Path().size() + 256);
  ASSERT_GT(throughLink.size(), static_cast<std::size_t>(PATH_MAX));
  EXPECT_EQ(platform.Entries(throughLink).size(), 1u);
  std::string upAgain = deep;
  for (int i = 0; i < 20; ++i) upAgain += "/..";
  EXPECT_EQ(platform.Entries(upAgain).size(), 2u);
  EXPECT_EQ(platform.Attributes(deep + std::string(5000, '/') + "file"), kNormal);
  EXPECT_EQ(platform.Entries(folder.Path() + std::string(5000, '/')).size(), 2u);
}

TEST_P(PlatformContract, ALongPathWithAMissingMiddleIsAMissingPath) {
  std::string path = folder.Path();
  for (int i = 0; i < 30; ++i) path += "/" + std::string(250, 'n');
  EXPECT_EQ(ErrorOf([&] { platform.Entries(path); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(path); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(path, OpenFor::kReading); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentFolder(path); }), 76);
  EXPECT_EQ(platform.Attributes(path), std::nullopt);
}

TEST_P(PlatformContract, ANameLongerThanAnyPathIsABadName) {
  for (const std::string& path : {std::string(5000, 'x'), "/" + std::string(5000, 'x')}) {
    EXPECT_EQ(ErrorOf([&] { platform.Entries(path); }), 52);
    EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(path); }), 52);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(path, OpenFor::kReading); }), 52);
  }
}

}  // namespace
}  // namespace tarvo::test
