#include "big_run.h"
#include "settings/registry_replacement.h"
#include "small_file_system.h"
#include "trial.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::StartsWith;

constexpr std::size_t kSize = std::size_t{3} * 1024 * 1024;
constexpr std::size_t kPage = 4096;
constexpr int kLevels = 20;
constexpr const char* kAbsent = "<absent>";

// A run whose files all lie on a small file system. It is made and used in the process of that.
class SmallRun : public Installing {
 public:
  SmallRun() { starting.secondsPerReading = 0.25; }
  void TestBody() override {}

  // Does a step at each level of free space, from none to all that the step needs, and then once
  // more with space enough. `needed` bytes are what it takes.
  template <typename Prepare, typename Step, typename Check>
  void AtEveryLevel(std::size_t needed, Prepare&& prepare, Step&& step, Check&& check) {
    for (int level = 0; level < kLevels; ++level) {
      const std::size_t pages = needed / kPage * static_cast<std::size_t>(level) / (kLevels - 1);
      SCOPED_TRACE(std::to_string(pages) + " pages left");
      prepare();
      {
        const Filler filler(folder / "filler", pages * kPage);
        ASSERT_EQ(FreeBytes(folder.Path()), pages * kPage);
        step();
      }
      check(false);
      step();
      check(true);
      if (HasFailure()) return;
    }
  }

  static PackageFiles Files(const std::string& version) {
    PackageFiles files;
    for (const char* name : {"Download.EXE", "Upload.EXE", "help.html", "Maps/near.bmp",
                             "Maps/Far/away.bmp", "small.bmp"}) {
      files[name] = std::string(20'000, version[0]) + name;
    }
    files["driver.inf"] = "[Driver]\r\nVersion=" + version + "\r\n";
    files["Sample.hvd"] = "T\r\nFIELDNAME\r\nLevel " + version + " (m)\r\n";
    return files;
  }

  std::string PackVersion(const std::string& version) {
    std::vector<MadeMember> members;
    for (const auto& [name, content] : Files(version)) {
      members.push_back({.name = name, .content = content});
    }
    return folder.WriteFile(InData("Meter_" + version + ".drv"), ArchiveOf(members));
  }

  using Contents = std::map<std::string, std::string>;  // by path

  Contents Tree() const {
    const std::string meter = folder / InDrivers("Meter");
    return fs::exists(meter) ? TreeOf(meter) : Contents();
  }

  // The driver as it is after an install with space enough.
  Contents TreeAfter(const std::string& package) {
    EXPECT_TRUE(Install({package}));
    return Tree();
  }

  void Reset() {
    fs::remove_all(folder / InDrivers("Meter"));
    for (const char* name : {"DeviceInstaller", "Win32Device"})
      fs::remove_all(folder / InData(name));
  }

  static std::string ContentIn(const Contents& tree, const std::string& path) {
    const auto found = tree.find(path);
    return found == tree.end() ? kAbsent : found->second;
  }

  void ExpectTree(const Contents& expected) const { EXPECT_EQ(Tree(), expected); }

  void ExpectEachFileOldOrNew(const Contents& before, const Contents& after) const {
    auto known = before;
    known.insert(after.begin(), after.end());
    const auto found = Tree();
    for (const auto& [path, content] : known) {
      EXPECT_THAT(ContentIn(found, path), AnyOf(ContentIn(before, path), ContentIn(after, path)))
          << path;
    }
    for (const auto& [path, content] : found) {
      EXPECT_TRUE(known.contains(path)) << path << " belongs to no version";
    }
  }

  void InstallAtEveryLevel() {
    const std::string package = PackVersion("1");
    const std::size_t free = FreeBytes(folder.Path());
    const auto after = TreeAfter(package);
    const std::size_t needed = free - FreeBytes(folder.Path()) + 2 * kPage;
    AtEveryLevel(
        needed, [&] { Reset(); },
        [&] { EXPECT_TRUE(Install({package})) << "a full disk is no fault of the package"; },
        [&](bool isRoomy) {
          ExpectEachFileOldOrNew({}, after);
          if (isRoomy) ExpectTree(after);
        });
    TellFigure("big.full_disk.install", Figure("an install"));
  }

  void ReinstallAtEveryLevel() {
    const std::string oldPackage = PackVersion("1");
    const std::string newPackage = PackVersion("2");
    const auto prepare = [&] {
      Reset();
      EXPECT_TRUE(Install({oldPackage}));
      DriverFile("Meter/Data/own.csv", "a download");
      DriverFile("Meter/notes.txt", "the user's own");
    };
    prepare();
    const auto before = Tree();
    std::size_t needed = 0;
    for (const auto& [name, content] : Files("2")) needed += content.size() / kPage * kPage + kPage;
    const auto after = TreeAfter(newPackage);
    AtEveryLevel(
        needed + 2 * kPage, prepare,
        [&] { EXPECT_TRUE(Install({newPackage})) << "a full disk is no fault of the package"; },
        [&](bool isRoomy) {
          ExpectEachFileOldOrNew(before, after);
          if (isRoomy) ExpectTree(after);
        });
    TellFigure("big.full_disk.reinstall", Figure("a re-install"));
  }

  // Values of sixty records and of one; the file grows by thirty pages for the long one.
  void SaveAtEveryLevel() {
    const std::string longValue(60 * 1024, 'v');
    const auto prepare = [&] {
      fs::remove(folder / kSettingsFile);
      for (int i = 0; i < 10; ++i) Store()->SaveSetting(Key(i), "value " + std::to_string(i));
    };
    AtEveryLevel(
        31 * kPage, prepare,
        [&] {
          const auto store = Store();
          store->SaveSetting(Key(3), "changed");
          store->SaveSetting("new", "one record");
          store->SaveSetting("long", longValue);
        },
        [&](bool isRoomy) {
          const auto store = Store();
          for (int i = 0; i < 10; ++i) {
            const std::string old = "value " + std::to_string(i);
            const std::string saved = i == 3 ? "changed" : old;
            EXPECT_THAT(store->GetSetting(Key(i), kAbsent), AnyOf(old, saved));
          }
          EXPECT_THAT(store->GetSetting("new", kAbsent), AnyOf(kAbsent, "one record"));
          const std::string part = store->GetSetting("long", {});
          EXPECT_THAT(longValue, StartsWith(part));
          EXPECT_EQ(part.size() % 1024, 0U) << "a part of a record";
          if (!isRoomy) return;
          EXPECT_EQ(store->GetSetting(Key(3), kAbsent), "changed");
          EXPECT_EQ(store->GetSetting("new", kAbsent), "one record");
          EXPECT_EQ(store->GetSetting("long", kAbsent), longValue);
        });
    TellFigure("big.full_disk.settings", Figure("saving three settings"));
  }

 private:
  static std::string Key(int number) { return "key " + std::to_string(number); }

  std::unique_ptr<RegistryReplacement> Store() {
    auto store = std::make_unique<RegistryReplacement>(starting);
    store->OpenLocalRegistry(kCompanyName);
    return store;
  }

  static std::string Figure(const std::string& what) {
    return what + " at " + Counted(kLevels) + " levels of free space, from none to enough: " +
           (HasFailure() ? "something was lost or damaged"
                         : "nothing old lost or damaged, and with room again it comes to its end");
  }
};

class AFullDisk : public ::testing::Test {
 protected:
  template <typename Work>
  void On(const char* figure, Work&& work) {
    const auto refusal = OnSmallFileSystem(folder.Path(), kSize, [&] {
      SmallRun run;
      work(run);
    });
    if (!refusal) return;
    TellFigure(figure, "not tried: " + *refusal);
    GTEST_SKIP() << *refusal;
  }

  const TemporaryFolder folder;
};

TEST_F(AFullDisk, LosesNoSettingAndTearsNoRecord) {
  On("big.full_disk.settings", [](SmallRun& run) { run.SaveAtEveryLevel(); });
}

TEST_F(AFullDisk, LeavesOnlyWholeFilesOfANewDriver) {
  On("big.full_disk.install", [](SmallRun& run) { run.InstallAtEveryLevel(); });
}

TEST_F(AFullDisk, LeavesEachFileOfADriverOldOrNewAndItsDataAsTheyWere) {
  On("big.full_disk.reinstall", [](SmallRun& run) { run.ReinstallAtEveryLevel(); });
}

}  // namespace
}  // namespace tarvo::test
