#include "actions/install_drivers.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "support/list_run.h"
#include "support/made_package.h"

namespace tarvo::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

// Keeps what would have been started.
class StartingPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    std::string call(FileNameOf(FolderOf(program)));
    call.append("/").append(FileNameOf(program));
    for (const std::string& argument : arguments) call += " " + argument;
    if (window == StartWindow::kMinimised) call += " (minimised)";
    started.push_back(call);
    return 1;
  }
  std::vector<std::string> started;
};

// Keeps every status text that was drawn, with the pointer of that moment.
class StatusFrontEnd : public RecordingFrontEnd {
 public:
  void Repaint(Form& form) override {
    const auto& window = dynamic_cast<MainWindow&>(form);
    texts.push_back(window.sbStatusBar.Panels[0].Text + (MousePointer() == 11 ? " (busy)" : ""));
  }
  std::vector<std::string> texts;
};

class Installing : public ListRun {
 protected:
  Installing() : starting(folder.Path()) {
    starting.specialFolders = platform.specialFolders;
    globals = std::make_unique<Globals>(starting, status, "");
    globals->OpenSettings();
    folder.MakeFolder(InData("Drivers"));
    Update();
  }

  std::string Package(const std::string& name, PackageFiles files = {}) {
    files.try_emplace("driver.inf", "[Driver]\r\n");
    return MakePackage(folder, InData(name), files);
  }

  bool Install(const std::vector<std::string>& packages, bool fromDialog = false) {
    InstallOrder order;
    order.index = fromDialog ? 0 : 1;
    order.fromDialog = fromDialog;
    order.firstPackage = packages.at(0);
    for (std::size_t i = 0; !fromDialog && i < packages.size(); ++i) {
      window.DriverFileList[static_cast<int>(i) + 1] = packages[i];
    }
    return InstallDrivers(*globals, window, order);
  }

  bool Exists(const std::string& name) { return std::filesystem::exists(folder / InDrivers(name)); }

  StartingPlatform starting;
  StatusFrontEnd status;
};

TEST(TheNameOfAPackage, GivesTheDriversName) {
  EXPECT_EQ(DriverNameOfPackage("/a/b_c/Meter_v2.drv"), "Meter");
  EXPECT_EQ(DriverNameOfPackage("Tide Gauge_2_1.drv"), "Tide Gauge");
  EXPECT_EQ(DriverNameOfPackage("a.drv"), "a");
  EXPECT_EQ(DriverNameOfPackage("_1.drv"), "");
  EXPECT_EQ(DriverNameOfPackage(".drv"), "");
  EXPECT_EQ(DriverNameOfPackage("...drv"), "..");
}

TEST(TheNameOfAPackage, OfLessThanFourCharactersIsAnError) {
  try {
    DriverNameOfPackage("/long/path/drv");
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidProcedureCall);
  }
}

TEST(TheNameOfADriver, IsANameInOneFolder) {
  EXPECT_TRUE(IsDriverName("A~B"));
  for (const char* name : {"", ".", "..", "a/b", "a\\b"}) EXPECT_FALSE(IsDriverName(name)) << name;
}

TEST_F(Installing, UnpacksThePackageIntoTheDriversFolderWithADataFolder) {
  EXPECT_TRUE(Install({Package("Meter_1.0.drv", {{"sub/x.txt", "text"}})}));
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/sub/x.txt")), "text");
  EXPECT_TRUE(std::filesystem::is_directory(folder / InDrivers("Meter/Data")));
  EXPECT_THAT(Names(), Contains("Meter"));
  EXPECT_EQ(status.MousePointer(), kDefaultPointer);
}

TEST_F(Installing, ShowsEachDriversNameWhileItWorks) {
  Install({Package("A_1.drv"), Package("B_1.drv")});
  EXPECT_THAT(status.texts, ElementsAre("A ... (busy)", "B ... (busy)", " (busy)"));
}

TEST_F(Installing, ReplacesThePackagesFilesAndTouchesNothingElse) {
  DriverFile("Meter/driver.inf", "old");
  DriverFile("Meter/Data/download.csv", "only here");
  Install({Package("meter_2.drv", {{"new.txt", "new"}})});
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/driver.inf")), "[Driver]\r\n");
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Data/download.csv")), "only here");
  EXPECT_FALSE(Exists("meter")) << "letter case does not make another driver";
}

TEST_F(Installing, LetsEveryProgramRecordItsVersionAndStartsTheOnlyNewDriversProperties) {
  Install({Package("Meter_1.drv", {{"Download.EXE", "x"}, {"PROPERTIES.exe", "x"}})});
  ASSERT_EQ(starting.started.size(), 3U);
  const std::string last = starting.started.back();
  starting.started.pop_back();
  EXPECT_THAT(starting.started, UnorderedElementsAre("Meter/Download.EXE /v (minimised)",
                                                     "Meter/PROPERTIES.exe /v (minimised)"));
  EXPECT_EQ(last, "Meter/PROPERTIES.exe");
}

TEST_F(Installing, StartsNoPropertiesAfterSeveralPackages) {
  Install({Package("A_1.drv", {{"Properties.EXE", "x"}}), Package("B_1.drv")});
  EXPECT_THAT(starting.started, ElementsAre("A/Properties.EXE /v (minimised)"));
}

TEST_F(Installing, StartsThePropertiesOfAPackageFromTheDialog) {
  Install({Package("A_1.drv", {{"Properties.EXE", "x"}})}, true);
  EXPECT_THAT(starting.started, Contains("A/Properties.EXE"));
}

TEST_F(Installing, StartsNoPropertiesWhileItRefreshes) {
  window.Refreshing = true;
  Install({Package("A_1.drv", {{"Properties.EXE", "x"}})});
  EXPECT_THAT(starting.started, Not(Contains("A/Properties.EXE")));
}

TEST_F(Installing, StopsAtTheFirstInvalidPackageWithTheStatusTextLeftStanding) {
  const std::string bad = folder.WriteFile(InData("B_1.drv"), "no package");
  EXPECT_FALSE(Install({Package("A_1.drv", {{"Download.EXE", "x"}}), bad, Package("C_1.drv")}));
  EXPECT_THAT(status.messages, ElementsAre("Tarvo: Invalid Driver file"));
  EXPECT_THAT(status.icons, ElementsAre(MessageIcon::kExclamation));
  EXPECT_THAT(status.pointersAtMessages, ElementsAre(kDefaultPointer));
  EXPECT_TRUE(Exists("A")) << "what was installed before stays";
  EXPECT_FALSE(Exists("B"));
  EXPECT_FALSE(Exists("C"));
  EXPECT_THAT(Names(), Not(Contains("A"))) << "the list is not rebuilt";
  EXPECT_EQ(window.sbStatusBar.Panels[0].Text, "B ...");
  EXPECT_EQ(status.MousePointer(), kDefaultPointer);
}

TEST_F(Installing, RefusesAPackageWithoutADescription) {
  const std::string package = MakePackage(folder, InData("A_1.drv"), {{"sub/driver.inf", "x"}});
  EXPECT_FALSE(Install({package}));
  EXPECT_FALSE(Exists("A"));
}

TEST_F(Installing, RefusesNamesThatAreNoFolder) {
  for (const char* name : {"_1.drv", ".drv", "..drv", "...drv"}) {
    status.messages.clear();
    EXPECT_FALSE(Install({Package(name)})) << name;
    EXPECT_THAT(status.messages, ElementsAre("Tarvo: Invalid Driver file")) << name;
  }
  EXPECT_EQ(folder.ReadFile(InData("_1.drv")).substr(0, 2), "PK") << "nothing was written there";
  EXPECT_TRUE(starting.started.empty());
}

TEST_F(Installing, FailsForANameThatIsTooShort) {
  const std::string package = folder.WriteFile(InData("drv"), "x");
  try {
    Install({package});
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidProcedureCall);
  }
}

TEST_F(Installing, EndsAfterTheHundredthPackage) {
  const std::string package = Package("A_1.drv");
  EXPECT_TRUE(Install(std::vector<std::string>(100, package)));
  EXPECT_EQ(status.texts.size(), 101U);
}

TEST_F(Installing, GoesOnWhenUnpackingFails) {
  folder.WriteFile(InDrivers("A"), "a file in the folder's place");
  EXPECT_TRUE(Install({Package("A_1.drv"), Package("B_1.drv")}));
  EXPECT_TRUE(Exists("B/driver.inf"));
  EXPECT_THAT(status.messages, IsEmpty());
}

TEST_F(Installing, DoesTheStepsAfterUnpackingAlsoWhenThatFails) {
  Driver("A/driver.inf/a folder in the file's place");
  DriverFile("A/Download.EXE", "old");
  EXPECT_TRUE(Install({Package("A_1.drv", {{"Upload.EXE", "x"}})}));
  EXPECT_FALSE(Exists("A/Upload.EXE"));
  EXPECT_TRUE(Exists("A/Data"));
  EXPECT_THAT(starting.started, ElementsAre("A/Download.EXE /v (minimised)"));
}

TEST_F(Installing, StartsHiddenProgramsToo) {
  DriverFile("A/.hidden.exe", "x");
  Install({Package("A_1.drv")});
  EXPECT_THAT(starting.started, ElementsAre("A/.hidden.exe /v (minimised)"));
}

TEST_F(Installing, TakesANameWithATildeThoughItHasNoVersionRecords) {
  EXPECT_TRUE(Install({Package("A~B_1.drv")}));
  EXPECT_TRUE(Exists("A~B/driver.inf"));
  EXPECT_EQ(Item("A~B").SubItems[3], "");
}

// Nothing may be made in `Drivers`.
class ReadOnlyDrivers : public StartingPlatform {
 public:
  using StartingPlatform::StartingPlatform;
  void MakeFolder(std::string_view path) override {
    if (path.find("/Drivers/") != std::string_view::npos) throw RuntimeError(kPermissionDenied);
    StartingPlatform::MakeFolder(path);
  }
};

TEST_F(Installing, PassesOverADriversDirectoryThatMayNotBeWritten) {
  ReadOnlyDrivers readOnly(folder.Path());
  readOnly.specialFolders = platform.specialFolders;
  globals = std::make_unique<Globals>(readOnly, status, "");
  globals->OpenSettings();
  EXPECT_TRUE(Install({Package("A_1.drv", {{"Download.EXE", "x"}})}));
  EXPECT_FALSE(Exists("A"));
  EXPECT_THAT(status.messages, IsEmpty());
  EXPECT_TRUE(readOnly.started.empty());
}

TEST_F(Installing, PassesOverADataThatIsAFile) {
  EXPECT_TRUE(Install({Package("A_1.drv", {{"Data", "a file"}})}));
  EXPECT_EQ(folder.ReadFile(InDrivers("A/Data")), "a file");
}

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
};

TEST_F(InstallingWithASample, AppendsFieldDefinitionsAtEveryInstall) {
  const std::string package = Meter();
  Install({package});
  Install({package});
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/driver.inf")),
            "[Driver]\r\n\"LEVEL\",\"Level\",\"TEXT\",\"m\"\r\n");
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

class CollectingPackages : public Installing {
 protected:
  int Collect() { return CollectPackagesOfInstalledDrivers(*globals, window); }
};

TEST_F(CollectingPackages, TakesThoseOfInstalledDriversSortedByName) {
  Driver("Tide Gauge");
  Driver("meter");
  folder.WriteFile(InData("Tide Gauge_2.drv"));
  folder.WriteFile(InData("Meter_1.DRV"));
  folder.WriteFile(InData("Unknown_1.drv"));
  folder.WriteFile(InData("notes_1.txt"));
  EXPECT_EQ(Collect(), 2);
  EXPECT_EQ(window.DriverFileList[1], folder / InData("Meter_1.DRV"));
  EXPECT_EQ(window.DriverFileList[2], folder / InData("Tide Gauge_2.drv"));
}

TEST_F(CollectingPackages, LeavesOldEntriesBehindTheNewOnes) {
  window.DriverFileList[1] = "old 1";
  window.DriverFileList[2] = "old 2";
  Driver("Meter");
  folder.WriteFile(InData("Meter_1.drv"));
  Collect();
  EXPECT_EQ(window.DriverFileList[2], "old 2");
}

TEST_F(CollectingPackages, PassesOverAFileThatNamesNoDriver) {
  folder.WriteFile(InData("_1.drv"));
  folder.WriteFile(InData(".._1.drv"));
  EXPECT_EQ(Collect(), 0);
}

TEST_F(CollectingPackages, FailsForAFileWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  try {
    Collect();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidProcedureCall);
  }
}

TEST_F(CollectingPackages, FailsForMoreThanAHundred) {
  Driver("Meter");
  for (int i = 0; i < 100; ++i) folder.WriteFile(InData("Meter_" + std::to_string(i) + ".drv"));
  EXPECT_EQ(Collect(), 100);
  folder.WriteFile(InData("Meter_x.drv"));
  try {
    Collect();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kSubscriptOutOfRange);
  }
}

}  // namespace
}  // namespace tarvo::test
