#include "catalogue/command_state.h"

#include "support/list_run.h"

namespace tarvo::test {
namespace {

class TheCommands : public ListRun {
 protected:
  void Click(std::string_view key) { AllowCommandsOf(platform, window, Item(key)); }
  bool ButtonEnabled(std::string_view key) { return window.tbToolBar.ButtonByKey(key).Enabled; }
};

TEST_F(TheCommands, FollowTheToolsOfTheSelectedDriverInAnyLetterCase) {
  DriverFile("Meter/download.exe");
  DriverFile("Meter/PROPERTIES.exe");
  Update();
  Click("Meter");
  EXPECT_TRUE(window.mnuFileDownload.Enabled);
  EXPECT_FALSE(window.mnuFileUpload.Enabled);
  EXPECT_TRUE(window.mnuFileProperties.Enabled);
  EXPECT_TRUE(window.mnuFileDelete.Enabled);
  EXPECT_TRUE(ButtonEnabled("Download"));
  EXPECT_FALSE(ButtonEnabled("Upload"));
  EXPECT_TRUE(ButtonEnabled("DriverProperties"));
}

TEST_F(TheCommands, FollowTheFolderOfADriverWhoseLetterCaseHasChanged) {
  DriverFile("meter/Download.EXE");
  Update();
  Item("meter").Text = "METER";
  Click("meter");
  EXPECT_TRUE(window.mnuFileDownload.Enabled);
}

TEST_F(TheCommands, AreOffWhenTheDataFolderHasVanished) {
  DriverFile("Meter/Download.EXE");
  Update();
  Click("Meter");
  std::filesystem::remove_all(folder / kDataFolder);
  Click("Meter");
  EXPECT_FALSE(window.mnuFileDownload.Enabled);
  EXPECT_FALSE(window.mnuFileInstallMobile.Enabled);
  EXPECT_TRUE(window.mnuFileDelete.Enabled);
}

TEST_F(TheCommands, KeepMobileInstallationAsItWasOnARebuild) {
  DriverFile("Meter/a.hvd");
  Update();
  Click("Meter");
  Update();
  EXPECT_TRUE(window.mnuFileInstallMobile.Enabled) << "only the other driver commands are reset";
}

TEST_F(TheCommands, OfADriverWithAFolderInAToolsPlaceStayOff) {
  Driver("Meter/Download.EXE");
  Update();
  Click("Meter");
  EXPECT_FALSE(window.mnuFileDownload.Enabled);
}

TEST_F(TheCommands, AllowMobileInstallationOfDriversWithSampleFilesHiddenOnesIncluded) {
  DriverFile("Meter/sample.HVD");
  DriverFile("Other/Data/deep.hvd");
  DriverFile("Hidden/.x.hvd");
  Update();
  Click("Meter");
  EXPECT_TRUE(window.mnuFileInstallMobile.Enabled);
  Click("Other");
  EXPECT_FALSE(window.mnuFileInstallMobile.Enabled);
  Click("Hidden");
  EXPECT_TRUE(window.mnuFileInstallMobile.Enabled);
}

TEST_F(TheCommands, AreOffForTheAddItem) {
  Update();
  window.mnuFileDelete.Enabled = true;
  Click("Add");
  EXPECT_FALSE(window.mnuFileDelete.Enabled);
  EXPECT_FALSE(window.mnuFileDownload.Enabled);
  EXPECT_FALSE(window.mnuFileInstallMobile.Enabled);
}

TEST_F(TheCommands, OfTheAddItemLookIntoAFolderCalledAdd) {
  DriverFile("Add/Upload.EXE");
  Update();
  Click("Add");
  EXPECT_TRUE(window.mnuFileUpload.Enabled);
}

TEST_F(TheCommands, LeaveTheButtonsAsTheyWereAfterARebuild) {
  DriverFile("Meter/Download.EXE");
  Update();
  Click("Meter");
  Update();
  EXPECT_FALSE(window.mnuFileDownload.Enabled);
  EXPECT_TRUE(ButtonEnabled("Download")) << "only the next selection changes the buttons";
}

TEST_F(TheCommands, LeaveOtherButtonsAlone) {
  Update();
  window.tbToolBar.ButtonByKey("Delete").Enabled = false;
  ButtonControl(window);
  EXPECT_FALSE(ButtonEnabled("Delete"));
  EXPECT_TRUE(ButtonEnabled("Properties"));
}

TEST_F(TheCommands, ShowTheMobileDeviceOnlyWithItsFolderInTheBaseDirectory) {
  Update();
  EXPECT_FALSE(window.mnuFileMobileDevice.Visible);
  folder.WriteFile(InData("win32device"), "a file, not a folder");
  Update();
  EXPECT_FALSE(window.mnuFileMobileDevice.Visible);
  std::filesystem::remove(folder / InData("win32device"));
  folder.MakeFolder(InData("win32device"));
  Update();
  EXPECT_TRUE(window.mnuFileMobileDevice.Visible);
}

}  // namespace
}  // namespace tarvo::test
