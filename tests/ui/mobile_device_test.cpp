#include "support/working_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class InstallingOnAMobileDevice : public WorkingRun {
 protected:
  std::string Installer(const std::string& commands = {}) const {
    return folder.WriteProgram(InData("DeviceInstaller/DeviceInstaller.exe"), commands);
  }
  void Install() {
    Click("Meter");
    Window().mnuFileInstallMobile_Click();
  }
  std::string Copy(const std::string& name) const {
    return folder.ReadFile(InData("DeviceInstaller/" + name));
  }
};

TEST_F(InstallingOnAMobileDevice, CopiesEverySampleUnderItsNameBeforeTheInstallerStarts) {
  DriverFile("Meter/One.hvd", "1");
  DriverFile("Meter/two.HVD", "2");
  DriverFile("Meter/other.csv");
  const std::string installer = Installer("cat \"$(dirname \"$0\")\"/*.[hH][vV][dD] > \"$0.seen\"");
  folder.WriteFile(InData("DeviceInstaller/One.hvd"), "older and longer");
  Start();
  Install();
  EXPECT_THAT(platform.started, ElementsAre(installer));
  EXPECT_EQ(Copy("One.hvd"), "1");
  EXPECT_EQ(Copy("two.HVD"), "2");
  EXPECT_FALSE(Exists(folder / InData("DeviceInstaller/other.csv")));
  EXPECT_THAT(frontEnd.waits, IsEmpty());
}

TEST_F(InstallingOnAMobileDevice, SkipsASampleThatCannotBeCopied) {
  DriverFile("Meter/a.hvd", "a");
  DriverFile("Meter/b.hvd", "b");
  const std::string installer = Installer();
  folder.MakeFolder(InData("DeviceInstaller/a.hvd"));
  Start();
  Install();
  EXPECT_EQ(Copy("b.hvd"), "b");
  EXPECT_THAT(platform.started, ElementsAre(installer));
}

// A hidden sample makes the command available; it is not copied, as the listing of files leaves out
// hidden ones unless it is asked for them.
TEST_F(InstallingOnAMobileDevice, IsOfferedForAHiddenSampleThatIsNotCopied) {
  DriverFile("Meter/.a.hvd", "a");
  const std::string installer = Installer();
  Start();
  Click("Meter");
  EXPECT_TRUE(Window().mnuFileInstallMobile.Enabled);
  Window().mnuFileInstallMobile_Click();
  EXPECT_FALSE(Exists(folder / InData("DeviceInstaller/.a.hvd")));
  EXPECT_THAT(platform.started, ElementsAre(installer));
}

TEST_F(InstallingOnAMobileDevice, StartsTheInstallerWhenTheDriverCannotBeListed) {
  DriverFile("Meter/a.hvd", "a");
  const std::string installer = Installer();
  Start();
  Click("Meter");
  platform.refusesToList = DriverPath("Meter");
  Window().mnuFileInstallMobile_Click();
  EXPECT_THAT(platform.started, ElementsAre(installer));
}

TEST_F(InstallingOnAMobileDevice, PassesOverAMissingInstaller) {
  DriverFile("Meter/a.hvd", "a");
  Start();
  Install();
  folder.MakeFolder(InData("DeviceInstaller"));
  Install();
  EXPECT_EQ(Copy("a.hvd"), "a");
  EXPECT_THAT(platform.started, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(InstallingOnAMobileDevice, ReplacesALinkInTheInstallersFolderInsteadOfFollowingIt) {
  DriverFile("Meter/a.hvd", "a");
  Installer();
  folder.WriteFile("outside", "kept");
  fs::create_symlink(folder / "outside", folder / InData("DeviceInstaller/a.hvd"));
  Start();
  Install();
  EXPECT_EQ(Copy("a.hvd"), "a");
  EXPECT_EQ(folder.ReadFile("outside"), "kept");
}

TEST_F(InstallingOnAMobileDevice, OpensTheHandHeldProgramByTheShellInItsOwnFolder) {
  const std::string program = folder.WriteProgram(InData("Win32Device/PDATarvo.exe"), "");
  Start();
  EXPECT_TRUE(Window().mnuFileMobileDevice.Visible);
  Window().mnuFileMobileDevice_Click();
  EXPECT_THAT(platform.openedByVerb,
              ElementsAre(program + " in " + folder / InData("Win32Device")));
}

TEST_F(InstallingOnAMobileDevice, GivesNoFeedbackWhenTheHandHeldProgramIsMissing) {
  Start();
  EXPECT_FALSE(Window().mnuFileMobileDevice.Visible);
  platform.desktopError = RuntimeError(kFileNotFound);
  Window().mnuFileMobileDevice_Click();
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

}  // namespace
}  // namespace tarvo::test
