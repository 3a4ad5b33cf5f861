#include "base/runtime_error.h"
#include "install_run.h"

namespace tarvo::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

TEST(TheNameOfAPackage, GivesTheDriversName) {
  EXPECT_EQ(DriverNameOfPackage("/a/b_c/Meter_v2.drv"), "Meter");
  EXPECT_EQ(DriverNameOfPackage("Tide Gauge_2_1.drv"), "Tide Gauge");
  EXPECT_EQ(DriverNameOfPackage("a.drv"), "a");
  EXPECT_EQ(DriverNameOfPackage("_1.drv"), "");
  EXPECT_EQ(DriverNameOfPackage(".drv"), "");
  EXPECT_EQ(DriverNameOfPackage("...drv"), "..");
}

TEST(TheNameOfAPackage, LosesItsLastFourCharactersAndNoPartOfAnother) {
  EXPECT_EQ(DriverNameOfPackage("Meter.dr\u00FC"), "Meter");
  EXPECT_EQ(DriverNameOfPackage("Messger\u00E4t\u20AC123"), "Messger\u00E4t");
  EXPECT_EQ(DriverNameOfPackage("a\u20AC\u20AC\u20AC\u20AC"), "a");
}

TEST(TheNameOfAPackage, OfLessThanFourCharactersIsAnError) {
  for (const char* path : {"/long/path/drv", "/long/path/d\u20ACv", "\u00E4\u00F6\u00FC", ""}) {
    try {
      DriverNameOfPackage(path);
      FAIL() << "no error was raised for " << path;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kInvalidProcedureCall);
    }
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
  EXPECT_EQ(refused->path, bad);
  EXPECT_EQ(refused->reason, "The package has no end record: it is cut off or no zip archive.");
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
    EXPECT_EQ(refused->reason, "The file's name begins with no driver's name.");
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

// Shows "properties.exe" as other systems hide it: by an attribute.
class HidingPlatform : public StartingPlatform {
 public:
  using StartingPlatform::StartingPlatform;
  std::vector<FolderEntry> Entries(std::string_view path) override {
    std::vector<FolderEntry> entries = StartingPlatform::Entries(path);
    for (FolderEntry& entry : entries) {
      if (entry.name == "PROPERTIES.exe") entry.isHidden = true;
    }
    return entries;
  }
};

TEST_F(Installing, StartsAHiddenPropertiesTool) {
  HidingPlatform hiding(folder.Path());
  hiding.specialFolders = platform.specialFolders;
  globals = std::make_unique<Globals>(hiding, status, "");
  globals->OpenSettings();
  Install({Package("A_1.drv", {{"PROPERTIES.exe", "x"}})});
  EXPECT_THAT(hiding.started, ElementsAre("A/PROPERTIES.exe /v (minimised)", "A/PROPERTIES.exe"));
}

TEST_F(Installing, TakesAProgramOfAnotherNameForNoPropertiesTool) {
  Install({Package("A_1.drv", {{".properties.exe", "x"}})});
  EXPECT_THAT(starting.started, ElementsAre("A/.properties.exe /v (minimised)"));
}

TEST_F(Installing, ADriverCalledAddMakesNoItemOfItsOwn) {
  EXPECT_TRUE(Install({Package("Add_1.drv"), Package("B_1.drv")}));
  EXPECT_TRUE(Exists("Add/driver.inf"));
  EXPECT_THAT(Names(), UnorderedElementsAre("(Add Driver)", "B"));
  EXPECT_EQ(Item("Add").Text, "(Add Driver)");
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

}  // namespace
}  // namespace tarvo::test
