#include "actions/mobile_device.h"
#include "actions/remove_driver.h"
#include "install_run.h"
#include "support/tree_record.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

// Links in the data folder that lead to a tree outside.
class LinkedFolders : public Installing {
 protected:
  LinkedFolders() {
    folder.WriteFile("outside/driver.inf", "another program's");
    folder.WriteFile("outside/Sample.hvd", "T\nFIELDNAME\nLevel (m)\n");
    folder.WriteFile("outside/.tarvo-new-0", "another program's");
    before = RecordTree(folder / "outside");
    status.answer = Answer::kYes;
  }

  void Link(const std::string& name) {
    fs::create_directory_symlink(folder / "outside", folder / InData(name));
  }
  std::string Meter() {
    return Package("Meter_1.drv", {{"Sample.hvd", "T\nFIELDNAME\nLevel (m)\n"}, {"a.exe", "x"}});
  }
  void PackHandHeld() {
    for (const char* package : {"Tarvoexe", "DeviceInstaller", "PalmKestrel", "Win32Installer"}) {
      MakePackage(folder, InData(package + std::string(".pkg")), {{"Tool.exe", "x"}});
    }
  }
  void ExpectNothingChangedOutside() {
    EXPECT_THAT(Differences(before, RecordTree(folder / "outside")), IsEmpty());
  }

  TreeRecord before;
};

TEST_F(LinkedFolders, AreNotInstalledInto) {
  Link("Drivers/Meter");
  PackHandHeld();
  EXPECT_TRUE(Install({Meter()})) << "passed over like every failure to unpack";
  ExpectNothingChangedOutside();
  EXPECT_THAT(starting.started, IsEmpty()) << "no program there is the driver's";
  EXPECT_EQ(status.MousePointer(), kDefaultPointer);
}

TEST_F(LinkedFolders, MayHoldTheDrivers) {
  fs::remove(folder / InData("Drivers"));
  folder.MakeFolder("elsewhere");
  fs::create_directory_symlink(folder / "elsewhere", folder / InData("Drivers"));
  PackHandHeld();
  Install({Meter()});
  EXPECT_EQ(folder.ReadFile("elsewhere/Meter/driver.inf"),
            "[Driver]\r\n\"LEVEL\",\"Level\",\"TEXT\",\"m\"\r\n");
  EXPECT_TRUE(fs::is_directory(folder / "elsewhere/Meter/Data"));
  EXPECT_TRUE(fs::exists(folder / "elsewhere/Meter/Tool.exe"));
  EXPECT_TRUE(fs::exists(folder / InData("Win32Device/Sample.hvd")));
  folder.MakeFolder(InData("DeviceInstaller"));
  InstallMobileDriver(starting, window.dataPath, "Meter");
  EXPECT_TRUE(fs::exists(folder / InData("DeviceInstaller/Sample.hvd")));
}

TEST_F(LinkedFolders, AreNoPlacesForHandHeldComponents) {
  Link("DeviceInstaller");
  Link("Win32Device");
  PackHandHeld();
  Install({Meter()});
  ExpectNothingChangedOutside();
  EXPECT_TRUE(Exists("Meter/Tool.exe")) << "what goes elsewhere is installed";
  InstallMobileDriver(starting, window.dataPath, "Meter");
  ExpectNothingChangedOutside();
}

TEST_F(LinkedFolders, InTheFolderOfInstallersAreNotUnpackedInto) {
  folder.MakeFolder(InData("DeviceInstaller"));
  Link("DeviceInstaller/Palm Kestrel");
  PackHandHeld();
  Install({Meter()});
  ExpectNothingChangedOutside();
  EXPECT_TRUE(fs::exists(folder / InData("DeviceInstaller/Tool.exe")));
}

TEST_F(LinkedFolders, KeepTheModeOfAReadOnlyFileThatHasAnotherNameInARemovedDriver) {
  DriverFile("Meter/driver.inf");
  fs::permissions(folder / "outside/driver.inf", fs::perms(0444));
  before = RecordTree(folder / "outside");
  fs::create_hard_link(folder / "outside/driver.inf", folder / InDrivers("Meter/one"));
  fs::create_hard_link(folder / "outside/driver.inf", folder / InDrivers("Meter/.two"));
  RemoveDriver(*globals, window, "Meter");
  EXPECT_FALSE(Exists("Meter"));
  EXPECT_EQ(fs::status(folder / "outside/driver.inf").permissions(), fs::perms(0444));
  EXPECT_EQ(folder.ReadFile("outside/driver.inf"), "another program's");
}

}  // namespace
}  // namespace tarvo::test
