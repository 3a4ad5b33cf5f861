#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

#include "actions/install_drivers.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "support/killed_process.h"
#include "support/list_run.h"
#include "support/made_package.h"
#include "support/memory_folders.h"
#include "support/watched_platform.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using Tree = std::map<std::string, std::string>;  // path and content; folders have kFolder

constexpr const char* kFolder = "<folder>";
constexpr const char* kAbsent = "<absent>";

Tree TreeOf(const fs::path& folder) {
  Tree tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    tree[entry.path().lexically_relative(folder).string()] =
        entry.is_directory() ? kFolder : ReadFileAt(entry.path().string());
  }
  return tree;
}

std::string ContentIn(const Tree& tree, const std::string& path) {
  const auto found = tree.find(path);
  return found == tree.end() ? kAbsent : found->second;
}

bool IsHidden(const std::string& path) { return FileNameOf(path).starts_with('.'); }

std::uint_fast32_t Seed() {
  const char* chosen = std::getenv("TARVO_TEST_SEED");
  return chosen ? static_cast<std::uint_fast32_t>(std::strtoul(chosen, nullptr, 10))
                : std::random_device{}();
}

class NothingStartedPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  int StartProcess(std::string_view, const std::vector<std::string>&, StartWindow) override {
    return 1;
  }
};

// A driver with downloads is installed, and the package of its next version lies beside the data.
// Hand-held components are newer than the installed ones, too.
class InterruptedInstall : private MemoryFolders, public ProgramRun {
 protected:
  InterruptedInstall() : plain(folder.Path()) {
    plain.specialFolders = platform.specialFolders;
    plain.secondsPerReading = 0.25;
    oldPackage = PackOf("1.0", {{"gone.txt", "old only"}});
    PackHandHeld("old");
    EXPECT_TRUE(Install(plain, oldPackage));
    for (const char* name : {"2024-01.csv", "2024-02.hvd", "Site A/2024-03.csv"}) {
      DriverFile(std::string("Meter/Data/") + name, "downloaded");
    }
    DriverFile("Meter/notes.txt", "the user's own");
    DriverFile("Tide Gauge/driver.inf", "another driver");
    newPackage = PackOf("2.0", {{"more.txt", "new only"}, {"Maps/Far/away.bmp", "new only"}});
    PackHandHeld("new");
    fs::copy(Root(), saved.Path(), fs::copy_options::recursive);
    before = TreeOf(Root());
    EXPECT_TRUE(Install(plain, newPackage));
    after = TreeOf(Root());
  }

  static std::string Description(const std::string& version) {
    return "[Driver]\r\nVersion=" + version + "\r\n";
  }

  std::string Sample(const std::string& version) {
    return "Title\r\nFIELDNAME\r\nLevel " + version + " (m)\r\nWater temperature (C)\r\n";
  }

  std::string PackOf(const std::string& version, PackageFiles files) {
    for (const char* name : {"Download.EXE", "upload.exe", "Properties.EXE", "help.html",
                             "small.bmp", "large.bmp", "Maps/near.bmp", "Maps/Near/harbour.bmp"}) {
      files[name] = std::string(name).append(" ").append(version);
    }
    files["firmware.bin"] = std::string(70'000, version[0]);
    files["driver.inf"] = Description(version);
    files["Sample.hvd"] = Sample(version);
    return MakePackage(folder, InData("Meter_" + version + ".drv"), files);
  }

  void PackHandHeld(const std::string& content) {
    MakePackage(folder, InData("Tarvoexe.pkg"), {{"deep/Tool.exe", content}});
    MakePackage(folder, InData("Win32Installer.pkg"), {{"PDATarvo.exe", content}});
  }

  std::string Root() const { return folder / "documents/Halvex Limited"; }

  // The state before the install again. The data folder itself stays, since it is current.
  void Restore() {
    for (const auto& entry : fs::directory_iterator(folder / kDataFolder)) fs::remove_all(entry);
    fs::copy(saved.Path(), Root(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }

  // One run of the program that installs one package.
  static bool Install(Platform& system, const std::string& package) {
    RecordingFrontEnd frontEndOfRun;
    Globals globals(system, frontEndOfRun, "");
    globals.OpenSettings();
    struct PlainWindow : MainWindow {};
    PlainWindow window;
    window.dataPath = system.CurrentFolder();
    window.DriverFileList[1] = package;
    InstallOrder order;
    order.firstPackage = package;
    return !InstallDrivers(globals, window, order);
  }

  // The moments of an install that nothing interrupts.
  std::vector<FaultPoint> PointsOfAnInstall() {
    Restore();
    std::vector<FaultPoint> points;
    WatchedPlatform watched(plain, [&](const FaultPoint& point) { points.push_back(point); });
    EXPECT_TRUE(Install(watched, newPackage));
    EXPECT_EQ(TreeOf(Root()), after);
    return points;
  }

  void ExpectEveryFileOldOrNew(const Tree& found) {
    Tree known = before;
    known.insert(after.begin(), after.end());
    for (const auto& [path, content] : known) {
      EXPECT_THAT(ContentIn(found, path), AnyOf(ContentIn(before, path), ContentIn(after, path)))
          << path;
    }
    for (const auto& [path, content] : found) {
      if (known.contains(path)) continue;
      EXPECT_TRUE(IsHidden(path)) << path << " belongs to no version";
      EXPECT_EQ(path.find("/Data/"), std::string::npos) << path;
    }
  }

  void ExpectTheNextInstallToLeaveTheNewState() {
    EXPECT_TRUE(Install(plain, newPackage));
    EXPECT_TRUE(TreeOf(Root()) == after) << "old files or leftovers";
  }

  NothingStartedPlatform plain;
  TemporaryFolder saved;
  std::string oldPackage;
  std::string newPackage;
  Tree before;
  Tree after;
};

TEST_F(InterruptedInstall, KilledAtAnyOperationLeavesEveryFileOldOrNew) {
  const std::vector<FaultPoint> points = PointsOfAnInstall();
  ASSERT_GT(points.size(), 100U);
  std::size_t operations = 0;
  for (const FaultPoint& fatal : points) {
    SCOPED_TRACE(fatal.operation + ", moment " + std::to_string(static_cast<int>(fatal.moment)));
    if (fatal.moment == Moment::kBefore) ++operations;
    Restore();
    const int signal = SignalThatEnds([&] {
      WatchedPlatform watched(plain, [&](const FaultPoint& point) {
        if (point.number == fatal.number) ::kill(::getpid(), SIGKILL);
      });
      Install(watched, newPackage);
    });
    ASSERT_EQ(signal, SIGKILL);
    ExpectEveryFileOldOrNew(TreeOf(Root()));
    ExpectTheNextInstallToLeaveTheNewState();
    if (HasFailure()) return;
  }
  std::cout << operations << " operations, " << points.size() << " kills\n";
}

TEST_F(InterruptedInstall, KilledAtRandomMomentsLeavesEveryFileOldOrNew) {
  const auto twoInstalls = [&] {
    Install(plain, newPackage);
    Install(plain, oldPackage);
  };
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  EXPECT_EQ(SignalThatEnds(twoInstalls), 0);
  const auto duration = std::chrono::nanoseconds(Clock::now() - start).count();

  const std::uint_fast32_t seed = Seed();
  SCOPED_TRACE("TARVO_TEST_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<std::int64_t> moment(0, duration);
  int unfinished = 0;
  for (int i = 0; i < 200 && !HasFailure(); ++i) {
    Restore();
    const std::chrono::nanoseconds time(moment(random));
    const int signal = SignalThatEnds([&] {
      HaveMyselfKilledAfter(time);
      for (int pairs = 0; pairs < 1000; ++pairs) twoInstalls();
    });
    ASSERT_EQ(signal, SIGKILL);
    const Tree found = TreeOf(Root());
    ExpectEveryFileOldOrNew(found);
    for (const auto& [path, content] : found) {
      if (!IsHidden(path)) continue;
      ++unfinished;
      break;
    }
    ExpectTheNextInstallToLeaveTheNewState();
  }
  std::cout << "200 kills within " << duration / 1000 << " us, " << unfinished
            << " of them with unfinished files, TARVO_TEST_SEED=" << seed << "\n";
}

class InstallOnAFullDisk : public InterruptedInstall {
 protected:
  void FailAtEveryOperation(bool everAfter) {
    const std::vector<FaultPoint> points = PointsOfAnInstall();
    int failures = 0;
    for (const FaultPoint& failing : points) {
      if (failing.moment == Moment::kAfter) continue;
      SCOPED_TRACE(failing.operation);
      Restore();
      bool hasFailed = false;
      WatchedPlatform full(plain, [&](const FaultPoint& point) {
        const bool isFailing =
            point.number == failing.number || (everAfter && point.number > failing.number);
        if (!isFailing || point.moment == Moment::kAfter) return;
        hasFailed = true;
        throw RuntimeError(kDiskFull);
      });
      EXPECT_TRUE(Install(full, newPackage)) << "a full disk is no fault of the package";
      EXPECT_TRUE(hasFailed);
      const Tree found = TreeOf(Root());
      ExpectEveryFileOldOrNew(found);
      for (const auto& [path, content] : found) EXPECT_TRUE(everAfter || !IsHidden(path)) << path;
      ExpectTheNextInstallToLeaveTheNewState();
      if (HasFailure()) return;
      ++failures;
    }
    std::cout << failures << " failures of " << points.size() << " points\n";
  }
};

TEST_F(InstallOnAFullDisk, LeavesEveryFileOldOrNewAndNothingUnfinishedWhenOneOperationFails) {
  FailAtEveryOperation(false);
}

TEST_F(InstallOnAFullDisk, LeavesEveryFileOldOrNewWhenAllOperationsFailFromOneOn) {
  FailAtEveryOperation(true);
}

}  // namespace
}  // namespace tarvo::test
