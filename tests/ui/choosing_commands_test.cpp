#include "base/runtime_error.h"
#include "support/working_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kEnter = 13;
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;

class ChoosingACommand : public WorkingRun {
 protected:
  ChoosingACommand() {
    frontEnd.whileWaiting = [this] { PassTurn(2); };
    frontEnd.answer = Answer::kNo;
  }

  std::vector<std::string> StartedBy(const std::string& buttonKey) {
    platform.started.clear();
    Press(buttonKey);
    return platform.started;
  }
};

TEST_F(ChoosingACommand, OpensTheDataFolderOfADriverByDoubleClickEnterAndMenu) {
  Driver("Meter/Data");
  Start();
  Click("Meter");
  Window().lvListView_DblClick();
  int key = kEnter;
  Window().lvListView_KeyPress(key);
  EXPECT_EQ(key, 0);
  Window().mnuFileOpen.Click();
  const std::string data = DriverPath("Meter/Data");
  EXPECT_THAT(platform.openedFolders, ElementsAre(data, data, data));
  EXPECT_THAT(frontEnd.waits, IsEmpty());
}

TEST_F(ChoosingACommand, OpensTheDriverFolderWhereThereIsNoDataFolder) {
  Driver("Tide Gauge 'x'");
  Start();
  Click("Tide Gauge 'x'");
  Window().lvListView_DblClick();
  EXPECT_THAT(platform.openedFolders, ElementsAre(DriverPath("Tide Gauge 'x'")));
}

TEST_F(ChoosingACommand, LeavesOtherKeysOfTheListAlone) {
  Driver("Meter");
  Start();
  Click("Meter");
  int key = 'm';
  Window().lvListView_KeyPress(key);
  EXPECT_EQ(key, 'm');
  EXPECT_THAT(platform.openedFolders, IsEmpty());
}

TEST_F(ChoosingACommand, FailsWhenNoFileManagerCanBeStarted) {
  Driver("Meter");
  Start();
  Click("Meter");
  platform.desktopError = RuntimeError(kFileNotFound);
  EXPECT_EQ(ErrorOf([&] { Window().lvListView_DblClick(); }), kFileNotFound);
}

TEST_F(ChoosingACommand, PopsUpTheFileMenuWithOpenInBoldForTheSelectedDriver) {
  Driver("Meter");
  Start();
  Click("Meter");
  Window().lvListView_MouseUp(kRightButton);
  EXPECT_THAT(frontEnd.popups, ElementsAre(Pair(&Window().mnuFile, &Window().mnuFileOpen)));
}

TEST_F(ChoosingACommand, PopsUpNoMenuForOtherButtonsTheAddItemOrNoSelection) {
  Driver("Meter");
  Start();
  Window().lvListView_MouseUp(kRightButton);
  Click("Meter");
  Window().lvListView_MouseUp(kLeftButton);
  Click("Add");
  Window().lvListView_MouseUp(kRightButton);
  EXPECT_THAT(frontEnd.popups, IsEmpty());
}

TEST_F(ChoosingACommand, RunsTheToolOfEachToolbarKey) {
  DriverTool("Meter/Download.EXE");
  DriverTool("Meter/Upload.EXE");
  DriverTool("Meter/Properties.EXE");
  Start();
  Click("Meter");
  EXPECT_THAT(StartedBy("Download"), ElementsAre(DriverPath("Meter/Download.EXE")));
  EXPECT_THAT(StartedBy("Upload"), ElementsAre(DriverPath("Meter/Upload.EXE")));
  EXPECT_THAT(StartedBy("Properties"), ElementsAre(DriverPath("Meter/Properties.EXE")));
  EXPECT_THAT(StartedBy("DriverProperties"), ElementsAre(DriverPath("Meter/Properties.EXE")));
  Press("Delete");
  EXPECT_THAT(frontEnd.messages, ElementsAre("Remove Driver: Are you sure?"));
}

TEST_F(ChoosingACommand, ComparesToolbarKeysWithTheirLetterCase) {
  DriverTool("Meter/Download.EXE");
  Start();
  Click("Meter");
  for (const char* key : {"download", "DOWNLOAD", "Download ", "delete", "properties",
                          "driverproperties", "viewlist", ""}) {
    EXPECT_THAT(StartedBy(key), IsEmpty()) << key;
    EXPECT_EQ(Window().lvListView.View(), kLargeIcons) << key;
  }
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(ChoosingACommand, SwitchesTheViewByToolbarKeys) {
  Start();
  const char* keys[] = {"ViewLarge", "ViewSmall", "ViewList", "ViewDetails"};
  for (int view : {kDetails, kList, kSmallIcons, kLargeIcons}) {
    Press(keys[view]);
    EXPECT_EQ(Window().lvListView.View(), view);
  }
}

// "DriverProperties" obeys the menu, "Properties" does not look at it, on purpose.
TEST_F(ChoosingACommand, StartsPropertiesByItsOneKeyThoughTheEntryIsDisabled) {
  DriverTool("Meter/Properties.EXE");
  Start();
  Click("Meter");
  Window().mnuFileProperties.Enabled = false;
  EXPECT_THAT(StartedBy("DriverProperties"), IsEmpty());
  EXPECT_THAT(StartedBy("Properties"), ElementsAre(DriverPath("Meter/Properties.EXE")));
}

// A rebuild disables the entries and leaves the buttons as they were until the next selection.
TEST_F(ChoosingACommand, LooksAtTheMenuWhenAButtonStillLooksEnabledAfterARebuild) {
  DriverTool("Meter/Download.EXE");
  DriverTool("Meter/Upload.EXE");
  Start();
  Click("Meter");
  Window().mnuViewRefresh_Click();
  Window().lvListView.Select(&Item("Meter"));
  EXPECT_TRUE(Window().tbToolBar.ButtonByKey("Download").Enabled);
  EXPECT_FALSE(Window().mnuFileDownload.Enabled);
  EXPECT_THAT(StartedBy("Download"), IsEmpty());
  EXPECT_THAT(StartedBy("Upload"), IsEmpty());
  Press("Delete");
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(ChoosingACommand, KeepsMobileInstallationAsTheLastItemClickLeftIt) {
  DriverFile("Meter/sample.hvd");
  Driver("Tide Gauge");
  Start();
  EXPECT_FALSE(Window().mnuFileInstallMobile.Enabled);
  Click("Meter");
  EXPECT_TRUE(Window().mnuFileInstallMobile.Enabled);
  Window().mnuViewRefresh_Click();
  EXPECT_TRUE(Window().mnuFileInstallMobile.Enabled) << "a rebuild leaves it";
  Click("Tide Gauge");
  EXPECT_FALSE(Window().mnuFileInstallMobile.Enabled);
}

}  // namespace
}  // namespace tarvo::test
