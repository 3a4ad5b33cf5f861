#include <algorithm>
#include <functional>

#include "base/runtime_error.h"
#include "support/made_package.h"
#include "support/started_run.h"
#include "ui/frm_std_drivers.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A user in front of the Add Driver window and the open-file dialog.
class ChoosingFrontEnd : public RecordingFrontEnd {
 public:
  void RunModally(Form& form, Form& owner) override {
    auto* chooser = dynamic_cast<frmStdDrivers*>(&form);
    if (!chooser) return RecordingFrontEnd::RunModally(form, owner);
    ++choosersShown;
    if (choose) choose(*chooser);
    Unload(form);  // the close box, when the user has not closed it otherwise
  }
  void ShowOpen(CommonDialog& dialog) override {
    dialogs.push_back(dialog.DialogTitle + "|" + dialog.FileName + "|" + dialog.InitDir);
    if (fileOnDisk.empty()) throw RuntimeError(kDialogCancelled);
    dialog.FileName = fileOnDisk;
  }
  void Yield() override {
    if (whenYielding) whenYielding();
  }

  std::function<void(frmStdDrivers&)> choose;
  std::function<void()> whenYielding;
  std::string fileOnDisk;
  int choosersShown = 0;
  std::vector<std::string> dialogs;
};

class AddingDrivers : public StartedRun {
 protected:
  AfterStart Start(const std::string& arguments = {}) {
    run = std::make_unique<Tarvo>(platform, user, arguments);
    return run->Start();
  }
  std::string Package(const std::string& name) {
    return MakePackage(folder, InData(name), {{"driver.inf", "[Driver]\r\n"}});
  }
  void ActivateAddItem() {
    Window().lvListView.Select(&Window().lvListView.ItemAt(0));
    Window().lvListView.DblClick();
  }
  static void Choose(frmStdDrivers& chooser, const std::vector<std::size_t>& entries) {
    for (const std::size_t entry : entries) chooser.file_stddrvs.Entries[entry].Selected = true;
    chooser.file_stddrvs.ListIndex = static_cast<int>(entries.back());
    chooser.cmd_adddriver.Click();
  }
  std::vector<std::string> Installed() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / InData("Drivers"))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  PackageList& Packages() { return Window().DriverFileList; }

  ChoosingFrontEnd user;
};

TEST_F(AddingDrivers, InstallsWhatTheUserChooses) {
  Package("B_1.drv");
  Package("A_1.drv");
  Package("C_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) {
    std::vector<std::string> names;
    for (const auto& entry : chooser.file_stddrvs.Entries) names.push_back(entry.Name);
    EXPECT_THAT(names, ElementsAre("A_1.drv", "B_1.drv", "C_1.drv"));
    EXPECT_EQ(chooser.file_stddrvs.ListIndex, -1);
    Choose(chooser, {0, 2});
  };
  ActivateAddItem();
  EXPECT_THAT(Installed(), ElementsAre("A", "C"));
  EXPECT_EQ(Packages()[1], folder / InData("A_1.drv"));
  EXPECT_EQ(Packages()[2], folder / InData("C_1.drv"));
  EXPECT_EQ(Packages()[3], "");
  EXPECT_EQ(Window().lvListView.Count(), 3);
}

TEST_F(AddingDrivers, InstallsTheDoubleClickedPackage) {
  Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) {
    chooser.file_stddrvs.Entries[0].Selected = true;
    chooser.file_stddrvs.ListIndex = 0;
    chooser.file_stddrvs.DblClick();
  };
  ActivateAddItem();
  EXPECT_THAT(Installed(), ElementsAre("A"));
}

TEST_F(AddingDrivers, IsReachedByEnterAndByOpenToo) {
  Package("A_1.drv");
  Start();
  Window().lvListView.Select(&Window().lvListView.ItemAt(0));
  int key = 13;
  Window().lvListView.KeyPress(key);
  EXPECT_EQ(key, 0) << "the key is swallowed";
  EXPECT_EQ(user.choosersShown, 1);
  Window().mnuFileOpen.Click();
  EXPECT_EQ(user.choosersShown, 2);
  key = 'x';
  Window().lvListView.KeyPress(key);
  EXPECT_EQ(key, 'x');
  EXPECT_EQ(user.choosersShown, 2);
}

TEST_F(AddingDrivers, DoesNothingWithoutASelection) {
  Package("A_1.drv");
  Start();
  Window().lvListView.DblClick();
  EXPECT_EQ(user.choosersShown, 0);
}

TEST_F(AddingDrivers, InstallsNothingAndShowsNothingWhenCancelled) {
  Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { chooser.cmd_cancel.Click(); };
  ActivateAddItem();
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_THAT(user.messages, IsEmpty());
  EXPECT_EQ(Packages()[1], "CANCEL");
}

TEST_F(AddingDrivers, TakesTheCloseBoxForCancel) {
  Package("A_1.drv");
  Start();
  ActivateAddItem();
  EXPECT_EQ(Packages()[1], "CANCEL");
  EXPECT_THAT(Installed(), IsEmpty());
}

TEST_F(AddingDrivers, StaysOpenWithoutACurrentEntry) {
  Package("A_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    chooser.file_stddrvs.Entries[0].Selected = true;
    chooser.cmd_adddriver.Click();
    EXPECT_TRUE(user.IsLoaded(chooser));
  };
  ActivateAddItem();
  EXPECT_THAT(Installed(), IsEmpty());
}

TEST_F(AddingDrivers, LeavesCancelForACurrentEntryWithNoneSelected) {
  Package("A_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    chooser.file_stddrvs.ListIndex = 0;
    chooser.cmd_adddriver.Click();
    EXPECT_FALSE(user.IsLoaded(chooser));
  };
  ActivateAddItem();
  EXPECT_EQ(Packages()[1], "CANCEL");
}

TEST_F(AddingDrivers, AsksForAFileOnAnotherDisk) {
  Package("A_1.drv");
  const std::string other = MakePackage(folder, "stick/Far_1.drv", {{"driver.inf", ""}});
  Start();
  user.choose = [](frmStdDrivers& chooser) { chooser.cmd_havedisk.Click(); };
  user.fileOnDisk = other;
  ActivateAddItem();
  EXPECT_THAT(user.dialogs,
              ElementsAre("Add Driver|*.drv|::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"));
  EXPECT_THAT(Installed(), ElementsAre("Far"));
  EXPECT_EQ(Packages()[1], "");
}

TEST_F(AddingDrivers, InstallsNothingWhenTheDialogIsCancelled) {
  Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { chooser.cmd_havedisk.Click(); };
  ActivateAddItem();
  EXPECT_THAT(Installed(), IsEmpty());
}

// The chooser is left out, so the package list holds what the last use left in it.
TEST_F(AddingDrivers, ShowsNoChooserWithoutPackagesAndTakesWhatTheLastUseLeft) {
  const std::string package = Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { Choose(chooser, {0}); };
  ActivateAddItem();
  ASSERT_THAT(Installed(), ElementsAre("A"));
  std::filesystem::rename(package, folder / "away_1.drv");
  Packages()[1] = folder / "away_1.drv";
  ActivateAddItem();
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_THAT(Installed(), ElementsAre("A", "away"));
  Packages()[1] = "CANCEL";
  ActivateAddItem();
  EXPECT_THAT(user.dialogs, IsEmpty()) << "after a cancel nothing happens";
}

TEST_F(AddingDrivers, AsksForADiskAtOnceWhenNoPackageLiesBesideTheData) {
  Start();
  ActivateAddItem();
  EXPECT_EQ(user.choosersShown, 0);
  EXPECT_EQ(user.dialogs.size(), 1U);
}

TEST_F(AddingDrivers, ClearsThePackageListUpToItsFirstEmptyEntryOnly) {
  Package("A_1.drv");
  Start();
  for (const int entry : {1, 2, 4}) Packages()[entry] = "old";
  ActivateAddItem();
  EXPECT_EQ(Packages()[2], "");
  EXPECT_EQ(Packages()[4], "old");
}

TEST_F(AddingDrivers, FailsForThe101stSelectedPackage) {
  for (int i = 0; i < 101; ++i) folder.WriteFile(InData("A" + std::to_string(i) + "_1.drv"));
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    for (auto& entry : chooser.file_stddrvs.Entries) entry.Selected = true;
    chooser.file_stddrvs.ListIndex = 0;
    try {
      chooser.cmd_adddriver.Click();
      FAIL() << "no error was raised";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kSubscriptOutOfRange);
    }
    Packages()[1] = PackageList::kCancel;
  };
  ActivateAddItem();
}

TEST_F(AddingDrivers, HoldsToACancelThatComesWhileTheSelectionIsCollected) {
  Package("A_1.drv");
  Package("B_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    int yields = 0;
    user.whenYielding = [&] {
      if (++yields == 2) chooser.cmd_cancel.Click();
    };
    Choose(chooser, {0, 1});
    user.whenYielding = nullptr;
  };
  ActivateAddItem();
  EXPECT_EQ(Packages()[1], "CANCEL");
  EXPECT_EQ(Packages()[2], "");
  EXPECT_THAT(Installed(), IsEmpty());
}

TEST_F(AddingDrivers, TouchesNothingWhenTheMainWindowGoesWhileTheUserChooses) {
  Package("A_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    user.Unload(Window());
    Choose(chooser, {0});
  };
  ActivateAddItem();
  EXPECT_THAT(Installed(), IsEmpty());
}

class Refreshing : public AddingDrivers {};

TEST_F(Refreshing, ReinstallsThePackagesOfInstalledDriversWithoutAsking) {
  Driver("Meter");
  Package("Meter_1.drv");
  Package("Unknown_1.drv");
  EXPECT_EQ(Start("/R"), AfterStart::kEnd);
  EXPECT_TRUE(std::filesystem::exists(folder / InDrivers("Meter/driver.inf")));
  EXPECT_THAT(Installed(), ElementsAre("Meter"));
  EXPECT_EQ(user.choosersShown, 0);
  EXPECT_FALSE(Window().Refreshing);
  EXPECT_FALSE(Window().Visible);
  EXPECT_EQ(user.MousePointer(), kDefaultPointer);
}

TEST_F(Refreshing, ShowsTheMessageOfAnInvalidPackageWithoutAnyWindow) {
  Driver("Meter");
  folder.WriteFile(InData("Meter_1.drv"), "damaged");
  Start("/r");
  EXPECT_THAT(user.messages, ElementsAre("Tarvo: Invalid Driver file"));
}

TEST_F(Refreshing, EndsTheProgramForAPackageWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  EXPECT_THROW(Start("/r"), RuntimeError);
}

TEST_F(Refreshing, IsFollowedByAddingInTheWindowThatStartsWithIt) {
  Driver("Meter");
  Package("Meter_1.drv");
  Package("New_1.drv");
  bool splashIsLoaded = true;
  user.choose = [&](frmStdDrivers& chooser) {
    splashIsLoaded = std::any_of(user.LoadedForms().begin(), user.LoadedForms().end(),
                                 [](const Form* form) { return form->Name == "frmSplash"; });
    Choose(chooser, {1});
  };
  EXPECT_EQ(Start("/A"), AfterStart::kEventLoop);
  EXPECT_FALSE(splashIsLoaded);
  EXPECT_THAT(Installed(), ElementsAre("Meter", "New"));
  EXPECT_THAT(user.LoadedForms(), ElementsAre(&Window()));
}

TEST_F(Refreshing, EndsWhenTheWindowGoesDuringTheStartThatAdds) {
  Package("New_1.drv");
  user.choose = [this](frmStdDrivers&) { user.Unload(Window()); };
  EXPECT_EQ(Start("/a"), AfterStart::kEnd);
  EXPECT_FALSE(Window().Visible);
}

}  // namespace
}  // namespace tarvo::test
