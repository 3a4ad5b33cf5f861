#include <sys/stat.h>

#include "base/runtime_error.h"
#include "install_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class InstallingWithASample : public Installing {
 protected:
  InstallingWithASample() {
    folder.MakeFolder(InData("elsewhere"));
    window.dataPath += "/";
  }
  std::string Meter(PackageFiles more = {}) {
    more.emplace("Sample.hvd", "Title\r\nFIELDNAME\r\nLevel (m)\r\n");
    return Package("Meter_1.drv", more);
  }
  std::string Description(const std::string& driver = "Meter") {
    return folder.ReadFile(InDrivers(driver + "/driver.inf"));
  }

  static constexpr const char* kLine = "\"LEVEL\",\"Level\",\"TEXT\",\"m\"\r\n";
};

TEST_F(InstallingWithASample, AppendsFieldDefinitionsAtEveryInstall) {
  const std::string package = Meter();
  Install({package});
  Install({package});
  EXPECT_EQ(Description(), std::string("[Driver]\r\n") + kLine);
}

TEST_F(InstallingWithASample, BeginsALineOfItsOwnBehindADescriptionWithoutALineEnd) {
  Install(
      {Package("Meter_1.drv", {{"driver.inf", "no end"}, {"s.hvd", "T\nFIELDNAME\nLevel (m)"}})});
  EXPECT_EQ(Description(), std::string("no end\r\n") + kLine);
}

TEST_F(InstallingWithASample, TakesTheSampleOfTheInstalledDriverWhenThePackageHasNone) {
  DriverFile("Meter/old.hvd", "T\nFIELDNAME\nLevel (m)\n");
  Install({Package("Meter_1.drv")});
  EXPECT_EQ(Description(), std::string("[Driver]\r\n") + kLine);
}

TEST_F(InstallingWithASample, TakesThePackagesVersionOfASampleThatIsThereInAnotherLetterCase) {
  DriverFile("Meter/SAMPLE.HVD", "T\nFIELDNAME\nold\n");
  Install({Meter()});
  EXPECT_EQ(Description(), std::string("[Driver]\r\n") + kLine);
}

TEST_F(InstallingWithASample, TakesOfSeveralTheFirstByName) {
  DriverFile("Meter/B.hvd", "T\nFIELDNAME\nB\n");
  const std::string package =
      Meter({{"c.hvd", "T\nFIELDNAME\nc\n"}, {".a.hvd", "T\nFIELDNAME\nhidden\n"}});
  Install({package});
  EXPECT_EQ(Description(), "[Driver]\r\n\"B\",\"B\",\"TEXT\",\"\"\r\n");
  std::filesystem::remove(folder / InDrivers("Meter/B.hvd"));
  Install({package});
  EXPECT_EQ(Description(), "[Driver]\r\n\"C\",\"c\",\"TEXT\",\"\"\r\n");
  EXPECT_TRUE(std::filesystem::exists(folder / InData("Win32Device/c.hvd")));
}

TEST_F(InstallingWithASample, PassesOverWhatHasASamplesNameAndIsNoFile) {
  Driver("Meter/a folder.hvd");
  std::filesystem::create_symlink("nowhere", folder / InDrivers("Meter/a link.hvd"));
  ASSERT_EQ(::mkfifo((folder / InDrivers("Meter/a pipe.hvd")).c_str(), 0600), 0);
  Install({Meter()});
  EXPECT_EQ(Description(), std::string("[Driver]\r\n") + kLine);
  EXPECT_TRUE(std::filesystem::exists(folder / InData("Win32Device/Sample.hvd")));
}

TEST_F(InstallingWithASample, PassesOverASampleThatGivesNoDefinitions) {
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary += static_cast<char>(i * 7 % 251);
  for (const std::string& sample : {std::string(), std::string("no header"),
                                    std::string(4096, '\0'), std::string(2 * 1024 * 1024, '\n')}) {
    EXPECT_TRUE(Install({Package("Meter_1.drv", {{"Sample.hvd", sample}})}));
    EXPECT_EQ(Description(), "[Driver]\r\n") << sample.size();
    EXPECT_TRUE(folder.ReadFile(InData("Win32Device/Sample.hvd")) == sample) << sample.size();
  }
  EXPECT_TRUE(Install({Package("Meter_1.drv", {{"Sample.hvd", binary}})}));
  EXPECT_TRUE(Description().starts_with("[Driver]\r\n"));
  EXPECT_TRUE(folder.ReadFile(InData("Win32Device/Sample.hvd")) == binary);
}

TEST_F(InstallingWithASample, TakesAFieldOfFiftyThousandCharactersWithoutALineEnd) {
  const std::string field(50'000, 'x');
  Install({Package("Meter_1.drv", {{"Sample.hvd", "T\nFIELDNAME|CSVNAME\n" + field + "|k"}})});
  EXPECT_TRUE(Description() == "[Driver]\r\n\"K\",\"" + field + "\",\"TEXT\",\"\"\r\n");
}

TEST_F(InstallingWithASample, AppendsToADescriptionThatStaysWhenUnpackingFails) {
  DriverFile("Meter/driver.inf", "[Old]\r\n");
  DriverFile("Meter/old.hvd", "T\nFIELDNAME\nLevel (m)\n");
  Driver("Meter/tool.txt/a folder in a file's place");
  const std::string package = Meter({{"tool.txt", "x"}});
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(Install({package}));
    EXPECT_EQ(Description(), std::string("[Old]\r\n") + kLine) << "and not once more";
  }
}

// The driver's folder can be listed again when its new files are unpacked.
class HesitantPlatform : public StartingPlatform {
 public:
  using StartingPlatform::StartingPlatform;
  std::vector<FolderEntry> Entries(std::string_view path) override {
    constexpr int kLooksForASample = 2;
    if (path.ends_with("/Meter") && ++listings_ <= kLooksForASample) {
      throw RuntimeError(kDeviceIoError);
    }
    return StartingPlatform::Entries(path);
  }

 private:
  int listings_ = 0;
};

TEST_F(InstallingWithASample, AppendsDefinitionsAlsoWhenTheyCouldNotBeMadeBeforeUnpacking) {
  DriverFile("Meter/driver.inf", "[Old]\r\n");
  HesitantPlatform hesitant(folder.Path());
  hesitant.specialFolders = platform.specialFolders;
  globals = std::make_unique<Globals>(hesitant, status, "");
  globals->OpenSettings();
  Install({Meter()});
  EXPECT_EQ(Description(), std::string("[Driver]\r\n") + kLine);
}

TEST_F(InstallingWithASample, LeavesNothingUnfinishedOfAKilledRun) {
  DriverFile("Plain/.tarvo-new-0", "what was to become the description");
  Install({Package("Plain_1.drv")});
  EXPECT_FALSE(Exists("Plain/.tarvo-new-0"));
}

TEST_F(InstallingWithASample, MakesTheHandHeldFoldersAlsoWithoutPackages) {
  Install({Meter()});
  EXPECT_TRUE(std::filesystem::is_directory(folder / InData("DeviceInstaller/Palm Kestrel")));
  EXPECT_EQ(folder.ReadFile(InData("Win32Device/Sample.hvd")).substr(0, 5), "Title");
  EXPECT_TRUE(window.mnuFileMobileDevice.Visible) << "the rebuilt menu offers the device";
}

TEST_F(InstallingWithASample, UnpacksHandHeldPackagesFlatBeforeTheProgramsAreStarted) {
  MakePackage(folder, InData("Tarvoexe.pkg"), {{"deep/Tool.exe", "x"}});
  MakePackage(folder, InData("DeviceInstaller.pkg"), {{"DeviceInstaller.exe", "x"}});
  MakePackage(folder, InData("PalmKestrel.pkg"), {{"palm/k.prc", "k"}});
  MakePackage(folder, InData("Win32Installer.pkg"), {{"PDATarvo.exe", "p"}});
  folder.WriteFile(InData("Kestrel.pkg"), "damaged");
  Install({Meter()});
  EXPECT_THAT(starting.started, ElementsAre("Meter/Tool.exe /v (minimised)"));
  EXPECT_EQ(folder.ReadFile(InData("DeviceInstaller/DeviceInstaller.exe")), "x");
  EXPECT_EQ(folder.ReadFile(InData("DeviceInstaller/Palm Kestrel/k.prc")), "k");
  EXPECT_EQ(folder.ReadFile(InData("Win32Device/PDATarvo.exe")), "p");
  EXPECT_THAT(status.messages, IsEmpty());
}

TEST_F(InstallingWithASample, OverwritesAnOlderCopyOfTheSample) {
  folder.WriteFile(InData("Win32Device/SAMPLE.HVD"), "old");
  Install({Meter()});
  EXPECT_EQ(folder.ReadFile(InData("Win32Device/SAMPLE.HVD")).substr(0, 5), "Title");
}

TEST_F(InstallingWithASample, InstallsNoHandHeldComponentsForADriverWithoutOne) {
  MakePackage(folder, InData("Tarvoexe.pkg"), {{"Tool.exe", "x"}});
  Install({Package("Plain_1.drv")});
  EXPECT_FALSE(Exists("Plain/Tool.exe"));
  EXPECT_FALSE(std::filesystem::exists(folder / InData("Win32Device")));
}

}  // namespace
}  // namespace tarvo::test
