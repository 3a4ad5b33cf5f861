#include <filesystem>

#include "base/runtime_error.h"
#include "fault_trial.h"
#include "settings_records.h"
#include "support/made_dictionary.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// Windows of a technician who keeps the data in a folder of his own choice and works in German.
class WindowFaults : public FaultTrial {
 protected:
  WindowFaults() {
    fs::rename(folder / kDataFolder, folder / kChosenFolder);
    folder.MakeFolder(InData("Drivers"));
    MakeDictionary(folder, PoText({{"Name", "Name"}, {"Add Driver", "Treiber anfügen"}}), {},
                   "start/TARVO.DIC");
    RegistryReplacement store(system);
    store.OpenLocalRegistry(kCompanyName);
    store.SaveSetting("Tarvo_Settings_Directory", folder / kChosenFolder);
    store.SaveSetting("Vista", "yes");
    site = Everything();
  }

  // What the windows save themselves may have changed, but not the folder that was chosen. Where
  // this could not be read, the usual one may have been made.
  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault&) override {
    for (const auto& [path, entry] : site) {
      if (path == kSettingsFile) continue;
      EXPECT_TRUE(found.contains(path) && found.at(path) == entry) << path << " is damaged";
    }
    for (const auto& [path, entry] : found) {
      const bool isOfTheUsualFolder =
          (path + "/").starts_with(std::string(kDataFolder) + "/") || path.starts_with("personal/");
      EXPECT_TRUE(site.contains(path) || isOfTheUsualFolder) << path << " is new";
    }
    ExpectOtherRecordsSame(
        found.at(kSettingsFile).content, site.at(kSettingsFile).content,
        {"Tarvo_Settings_MainLeft", "Tarvo_Settings_MainTop", "Tarvo_Settings_MainWidth",
         "Tarvo_Settings_MainHeight", "Tarvo_Settings_ViewMode"});
  }

  void CheckNextWork(bool) override {
    fs::current_path(folder / "start");
    run.reset();
    run = StartedRun(system);
    run->Select(kDriver);
    EXPECT_EQ(run->Window().lvListView.SelectedItem()->SubItems[0], "2");
    EXPECT_EQ(run->Window().lvListView.ItemAt(0).Text, "(Treiber anfügen)");
  }

  static constexpr const char* kChosenFolder = "field data";
  std::unique_ptr<SiteRun> run;
};

class OpeningWithFaults : public WindowFaults {
 protected:
  void Prepare(FailingPlatform& failing) override {
    run = std::make_unique<SiteRun>(system, failing);
  }
  void Work() override { run->Start(); }

  // Whatever the start cannot do ends the program.
  bool MayRaise(const FailingPlatform&) const override { return true; }
};

TEST_F(OpeningWithFaults, OfSplashAndMainWindowChangesNothingThatIsKept) {
  TryEveryFault("faults.open", site, 13);
}

// The Add Driver window, the About window and the end of the run.
class LaterWindowsWithFaults : public WindowFaults {
 protected:
  void Prepare(FailingPlatform& failing) override {
    run.reset();
    run = StartedRun(failing);
  }
  void Work() override {
    frmDrivers& window = run->Window();
    window.lvListView.Select(&window.lvListView.ItemAt(0));
    window.lvListView_DblClick();
    window.mnuHelpAbout_Click();
    window.mnuFileClose_Click();
    EXPECT_FALSE(run->user.IsLoaded(window));
  }
  bool MayRaise(const FailingPlatform&) const override { return false; }
};

TEST_F(LaterWindowsWithFaults, OpenOrStayAwayAndTheEndKeepsWhatItCannotSave) {
  TryEveryFault("faults.close", site, 13);
}

}  // namespace
}  // namespace tarvo::test
