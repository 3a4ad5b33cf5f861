#include <sys/stat.h>

#include <climits>
#include <vector>

#include "child_process.h"
#include "contract.h"

namespace tarvo::test {
namespace {

// The permissions that a test sets; in the end everything may be removed again.
class Permissions {
 public:
  explicit Permissions(const TemporaryFolder& folder) : folder_(folder) { Set("", 0755); }
  ~Permissions() {
    for (const std::string& path : changed_) ::chmod(path.c_str(), 0700);
  }
  Permissions(const Permissions&) = delete;
  Permissions& operator=(const Permissions&) = delete;

  void Set(const std::string& name, mode_t mode) {
    changed_.push_back(folder_ / name);
    if (::chmod(changed_.back().c_str(), mode) != 0) throw std::runtime_error("cannot chmod");
  }

 private:
  const TemporaryFolder& folder_;
  std::vector<std::string> changed_;  // parents before what they hold
};

TEST_P(PlatformContract, AFileThatMayNotBeReadOrWrittenIsDenied) {
  Permissions permissions(folder);
  folder.WriteFile("secret", "x");
  folder.WriteFile("fixed", "x");
  permissions.Set("secret", 0);
  permissions.Set("fixed", 0444);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("secret", OpenFor::kReading); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("fixed", OpenFor::kReading); }), 0);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("fixed", OpenFor::kReadingAndWriting); }),
            70);
}

TEST_P(PlatformContract, NothingIsMadeInAFolderThatMayNotBeWritten) {
  Permissions permissions(folder);
  folder.MakeFolder("fixed");
  permissions.Set("fixed", 0555);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.MakeFolder("fixed/a"); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("fixed/a", OpenFor::kReadingAndWriting); }),
            70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("fixed/a", OpenFor::kReading); }), 53);
}

TEST_P(PlatformContract, AFolderThatMayNotBeReadCanBeEnteredButNotListed) {
  Permissions permissions(folder);
  folder.WriteFile("blind/file", "x");
  permissions.Set("blind", 0111);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.Entries("blind"); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.ChangeCurrentFolder("blind"); }), 0);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("blind/file", OpenFor::kReading); }), 0);
}

TEST_P(PlatformContract, AFolderThatMayNotBeEnteredHidesWhatItHolds) {
  Permissions permissions(folder);
  folder.WriteFile("closed/file", "x");
  permissions.Set("closed", 0);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.ChangeCurrentFolder("closed"); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile("closed/file", OpenFor::kReading); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.MakeFolder("closed/new"); }), 70);
  constexpr int kReached = 1;
  EXPECT_EQ(ErrorAsOrdinaryUser([&] {
              if (platform.Attributes("closed/file")) throw RuntimeError(kReached);
            }),
            0);
}

TEST_P(PlatformContract, ALongPathNeedsNoRightToListTheFoldersOnItsWay) {
  Permissions permissions(folder);
  std::string path = "blind";
  for (int i = 0; i < 20; ++i) {
    platform.MakeFolder(path);
    path += "/" + std::string(250, 'n');
  }
  platform.OpenFile(path, OpenFor::kReadingAndWriting);
  ASSERT_GT(path.size(), static_cast<std::size_t>(PATH_MAX));
  permissions.Set("blind", 0111);
  std::string middle = "blind";
  for (int i = 0; i < 16; ++i) {
    middle += "/" + std::string(250, 'n');
    permissions.Set(middle, 0111);
  }
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile(path, OpenFor::kReading); }), 0);
  permissions.Set("blind", 0700);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.OpenFile(path, OpenFor::kReading); }), 70);
}

}  // namespace
}  // namespace tarvo::test
