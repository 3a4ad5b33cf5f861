#include <algorithm>
#include <filesystem>

#include "base/runtime_error.h"
#include "fault_trial.h"

namespace tarvo::test {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class DriverFaults : public FaultTrial {
 protected:
  void Prepare(FailingPlatform& failing) override {
    run.reset();
    run = StartedRun(failing);
  }

  // The run for work that nothing disturbs.
  void RenewRun(bool isSameRun) {
    if (isSameRun) {
      // A folder that could not be entered again is found by a refresh.
      if (hasLostFolder) run->Window().mnuViewRefresh_Click();
      EXPECT_EQ(system.CurrentFolder(), folder / kDataFolder) << "the run goes on elsewhere";
      return;
    }
    run.reset();
    std::filesystem::current_path(folder / "start");
    run = StartedRun();
  }

  std::string Counted(const std::string& driver) {
    run->Select(driver);
    return run->Window().lvListView.SelectedItem()->SubItems[0];
  }

  std::unique_ptr<SiteRun> run;
};

class InstallingWithFaults : public DriverFaults {
 protected:
  void Work() override { isValid = run->Install(newPackage); }

  // All failures are passed over, but where the current folder is cannot be guessed.
  bool MayRaise(const FailingPlatform& failing) const override {
    return failing.HasFailed("CurrentFolder");
  }

  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault& fault) override {
    EXPECT_THAT(run->user.messages, AnyOf(IsEmpty(), ElementsAre("Tarvo: Invalid Driver file")));
    ExpectOldOrNew(found, before, after, fault.length > 1);
  }

  void CheckNextWork(bool isSameRun) override {
    RenewRun(isSameRun);
    EXPECT_TRUE(run->Install(newPackage));
    EXPECT_TRUE(Everything() == after) << "old files or leftovers";
    EXPECT_EQ(Counted(kDriver), after.contains(InMeter("Data/2024-01.csv")) ? "2" : "0");
    EXPECT_EQ(Counted("Tide Gauge"), "1");
  }

  void TryEveryFaultOfAnInstall(std::string_view figure) {
    Restore(before);
    run = StartedRun();
    ASSERT_TRUE(run->Install(newPackage));
    after = Everything();
    TryEveryFault(figure, before, 31);
  }

  bool isValid = false;
  FileTree before;
  FileTree after;
};

TEST_F(InstallingWithFaults, LeavesNothingOfADriverOrWholeFilesOfIt) {
  before = Without(site, InDrivers(kDriver));
  TryEveryFaultOfAnInstall("faults.install");
}

TEST_F(InstallingWithFaults, LeavesEachFileOfAnInstalledDriverOldOrNewAndItsDataAsTheyAre) {
  before = site;
  TryEveryFaultOfAnInstall("faults.reinstall");
}

class RemovingWithFaults : public DriverFaults {
 protected:
  void Prepare(FailingPlatform& failing) override {
    DriverFaults::Prepare(failing);
    run->Select(kDriver);
  }
  void Work() override { run->Window().mnuFileDelete_Click(); }

  // Counting the downloads and rebuilding the list raise what they meet.
  bool MayRaise(const FailingPlatform&) const override { return true; }

  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault&) override {
    const std::size_t removed = ExpectWholeOrGone(found);
    if (removed > 0) {
      EXPECT_THAT(run->user.messages, SizeIs(2)) << "removed without both questions";
    }
  }

  void CheckNextWork(bool isSameRun) override {
    RenewRun(isSameRun);
    run->Window().mnuViewRefresh_Click();  // what could not be counted is shown as empty till then
    if (Everything().contains(InDrivers(kDriver))) {
      run->Select(kDriver);
      Work();
    }
    EXPECT_TRUE(Everything() == Without(site, InDrivers(kDriver)));
    EXPECT_EQ(Counted("Tide Gauge"), "1");
  }
};

TEST_F(RemovingWithFaults, LeavesWholeFilesAndNothingElseTouched) {
  TryEveryFault("faults.removal", site, 11);
}

// A driver that is a link to a folder elsewhere.
class RemovingALinkWithFaults : public DriverFaults {
 protected:
  RemovingALinkWithFaults() {
    folder.WriteFile("elsewhere/Data/2022-08.csv", "kept elsewhere");
    std::filesystem::create_symlink(folder / "elsewhere", folder / kLink);
    site = Everything();
  }
  void Prepare(FailingPlatform& failing) override {
    DriverFaults::Prepare(failing);
    run->Select("Linked");
  }
  void Work() override { run->Window().mnuFileDelete_Click(); }
  bool MayRaise(const FailingPlatform&) const override { return true; }

  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault&) override {
    EXPECT_TRUE(Without(found, kLink) == Without(site, kLink)) << "more than the link has gone";
  }
  void CheckNextWork(bool isSameRun) override {
    RenewRun(isSameRun);
    run->Window().mnuViewRefresh_Click();
    if (Everything().contains(kLink)) {
      run->Select("Linked");
      Work();
    }
    EXPECT_TRUE(Everything() == Without(site, kLink));
  }

  const std::string kLink = InDrivers("Linked");
};

TEST_F(RemovingALinkWithFaults, LeavesWhatItLeadsToAlone) {
  TryEveryFault("faults.link_removal", site, 7);
}

class DownloadingWithFaults : public DriverFaults {
 protected:
  DownloadingWithFaults() {
    system.atStart = [this](std::string_view program) {
      if (program.ends_with("Download.EXE")) {
        folder.WriteFile(InMeter("Data/2024-0" + std::to_string(++downloads) + ".csv"), "new");
      }
    };
  }

  void Prepare(FailingPlatform& failing) override {
    DriverFaults::Prepare(failing);
    run->Select(kDriver);
    system.started.clear();
    system.shownFiles.clear();
    downloads = 5;
  }
  void Work() override { run->Window().mnuFileDownload_Click(); }
  bool MayRaise(const FailingPlatform&) const override { return false; }

  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault&) override {
    FileTree expected = site;
    if (!system.started.empty()) {
      const std::string path = InMeter("Data/2024-06.csv");
      ASSERT_TRUE(found.contains(path));
      expected[path] = found.at(path);
      EXPECT_EQ(expected[path].content, "new");
    }
    EXPECT_TRUE(found == expected);
    EXPECT_THAT(run->user.messages, IsEmpty());
  }

  void CheckNextWork(bool isSameRun) override {
    const bool isDownloaded = !system.started.empty();
    RenewRun(isSameRun);
    run->Select(kDriver);
    Work();
    EXPECT_EQ(Counted(kDriver), isDownloaded ? "4" : "3");
    EXPECT_EQ(system.shownFiles.back(),
              folder / InMeter(isDownloaded ? "Data/2024-07.csv" : "Data/2024-06.csv"));
  }

  int downloads = 5;
};

TEST_F(DownloadingWithFaults, KeepsOldAndNewDataAndTheDriverReadyForTheNextDownload) {
  TryEveryFault("faults.download", site, 7);
}

}  // namespace
}  // namespace tarvo::test
