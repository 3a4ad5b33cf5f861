#include "adding_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

// The chooser lists what lies in the data folder only, so it is left out when that is gone; the
// package list still names it.
TEST_F(AddingDrivers, TriesWhatTheLastUseLeftThoughItIsGone) {
  const std::string package = Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { Choose(chooser, {0}); };
  ActivateAddItem();
  ASSERT_THAT(Installed(), ElementsAre("A"));
  std::filesystem::remove(package);
  std::filesystem::remove_all(folder / InDrivers("A"));
  ActivateAddItem();
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_THAT(user.dialogs, IsEmpty());
  EXPECT_THAT(user.messages, ElementsAre("Tarvo: Invalid Driver file"));
  EXPECT_EQ(Window().sbStatusBar.Panels[0].Text, "A ...");
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_EQ(Window().lvListView.Count(), 2) << "the list is not rebuilt";
}

TEST_F(AddingDrivers, DoesNothingAfterACancelWhenNoPackageIsLeft) {
  const std::string package = Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { chooser.cmd_cancel.Click(); };
  ActivateAddItem();
  std::filesystem::remove(package);
  ActivateAddItem();
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_THAT(user.dialogs, IsEmpty());
  EXPECT_THAT(user.messages, IsEmpty());
  EXPECT_EQ(Packages()[1], "CANCEL");
}

TEST_F(AddingDrivers, AsksForADiskAgainWhenTheLastUseDidAndNoPackageIsLeft) {
  const std::string package = Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { chooser.cmd_havedisk.Click(); };
  ActivateAddItem();
  std::filesystem::remove(package);
  ActivateAddItem();
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_EQ(user.dialogs.size(), 2U);
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

// What ends the chooser while it collects its selection.
struct Ending {
  std::string name;
  std::function<void(frmStdDrivers& chooser, FrontEnd& frontEnd)> act;
  std::string firstEntry;
};

void PrintTo(const Ending& ending, std::ostream* out) { *out << ending.name; }

class EndingTheCollection : public AddingDrivers, public ::testing::WithParamInterface<Ending> {};

TEST_P(EndingTheCollection, LeavesADefinedResult) {
  Package("A_1.drv");
  Package("B_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    int yields = 0;
    user.whenYielding = [&] {
      if (++yields == 2) GetParam().act(chooser, user);
    };
    Choose(chooser, {0, 1});
    EXPECT_FALSE(user.IsLoaded(chooser));
    user.whenYielding = nullptr;
  };
  ActivateAddItem();
  EXPECT_EQ(Packages()[1], GetParam().firstEntry);
  EXPECT_EQ(Packages()[2], "");
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_THAT(user.messages, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    By, EndingTheCollection,
    ::testing::Values(
        Ending{"Cancel", [](auto& chooser, auto&) { chooser.cmd_cancel.Click(); }, "CANCEL"},
        Ending{"CloseBox", [](auto& chooser, auto& user) { user.Unload(chooser); }, "CANCEL"},
        Ending{"HaveDisk", [](auto& chooser, auto&) { chooser.cmd_havedisk.Click(); }, ""}),
    [](const auto& ending) { return ending.param.name; });

TEST_F(AddingDrivers, CollectsOnceWhenTheButtonIsPressedAgainMeanwhile) {
  Package("A_1.drv");
  Package("B_1.drv");
  Start();
  user.choose = [this](frmStdDrivers& chooser) {
    int yields = 0;
    user.whenYielding = [&] {
      if (++yields == 2) chooser.cmd_adddriver.Click();
    };
    Choose(chooser, {0, 1});
    user.whenYielding = nullptr;
  };
  ActivateAddItem();
  EXPECT_THAT(Installed(), ElementsAre("A", "B"));
  EXPECT_EQ(Packages()[3], "");
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

}  // namespace
}  // namespace tarvo::test
