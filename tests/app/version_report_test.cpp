#include "app/start/version_report.h"

#include <sys/stat.h>

#include "support/started_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// A drive whose root is a folder of the test's own.
class RootPlatform : public RootedPlatform {
 public:
  explicit RootPlatform(std::string root) : RootedPlatform(root), drive_(std::move(root)) {}
  std::vector<FolderEntry> Entries(std::string_view path) override {
    return RootedPlatform::Entries(OnDrive(path));
  }
  std::optional<unsigned> Attributes(std::string_view path) override {
    return RootedPlatform::Attributes(OnDrive(path));
  }
  int StartProcess(std::string_view path, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    if (frontEnd) pointerAtStart = frontEnd->MousePointer();
    return RootedPlatform::StartProcess(OnDrive(path), arguments, window);
  }

  FrontEnd* frontEnd = nullptr;
  int pointerAtStart = -1;

 private:
  std::string OnDrive(std::string_view path) const {
    return path.starts_with("/drivers") || path == "/" ? drive_ + std::string(path)
                                                       : std::string(path);
  }

  std::string drive_;
};

class ReportingVersions : public ProgramRun {
 protected:
  std::string Tool(const std::string& name) const {
    return folder.WriteProgram("drivers/" + name, "");
  }
  void Report(std::string path = {}) {
    ReportToolVersions(drive, frontEnd, path);
    completed = path;
  }

  RootPlatform drive{folder.Path()};
  std::string completed;
};

TEST_F(ReportingVersions, StartsEveryToolOfEveryDriverMinimisedWithTheSwitch) {
  const std::string a = Tool("Meter/Download.exe");
  const std::string b = Tool("Meter/upload.EXE");
  const std::string c = Tool("Meter/.hidden.exe");
  const std::string d = Tool("Tide Gauge/Properties.exe");
  Tool("Meter/driver.inf");
  Tool("Meter/Data/deep.exe");
  Tool("beside.exe");
  Report();
  EXPECT_THAT(drive.started, UnorderedElementsAre(a + " /v (minimised)", b + " /v (minimised)",
                                                  c + " /v (minimised)", d + " /v (minimised)"));
}

TEST_F(ReportingVersions, CompletesThePathThatItIsGiven) {
  Report();
  EXPECT_EQ(completed, "/drivers/");
  Report(folder.Path());
  EXPECT_EQ(completed, folder / "drivers/");
  Report(folder / "drivers");
  EXPECT_EQ(completed, folder / "drivers/");
  Report(folder / "DRIVERS/");
  EXPECT_EQ(completed, folder / "DRIVERS/");
  Report(folder / "olddrivers");
  EXPECT_EQ(completed, folder / "olddrivers/") << "the last eight characters decide";
}

TEST_F(ReportingVersions, FindsTheFolderInAnyLetterCase) {
  folder.WriteProgram("Drivers/Meter/Download.exe", "");
  Report(folder.Path());
  EXPECT_THAT(drive.started, ElementsAre(folder / "Drivers/Meter/Download.exe /v (minimised)"));
}

TEST_F(ReportingVersions, EndsAtOnceWhereTheRootHoldsNoDrivers) {
  Report();
  EXPECT_THAT(drive.started, IsEmpty());
}

// Only folders whose one attribute is that they are folders.
TEST_F(ReportingVersions, SkipsFoldersThatAreHiddenReadOnlyOrLinks) {
  Tool(".hidden/Download.exe");
  Tool("locked/Download.exe");
  const std::string kept = Tool("kept/Download.exe");
  folder.WriteProgram("elsewhere/Download.exe", "");
  fs::create_symlink(folder / "elsewhere", folder / "drivers/link");
  fs::permissions(folder / "drivers/locked", fs::perms(0555));
  Report();
  fs::permissions(folder / "drivers/locked", fs::perms(0755));
  EXPECT_THAT(drive.started, ElementsAre(kept + " /v (minimised)"));
}

TEST_F(ReportingVersions, PassesOverToolsThatCannotBeStarted) {
  folder.WriteFile("drivers/Meter/a.exe", "no program");
  folder.WriteFile("drivers/Meter/b.exe");
  folder.MakeFolder("drivers/Meter/folder.exe");
  fs::create_symlink("nowhere", folder / "drivers/Meter/broken.exe");
  const std::string good = Tool("Meter/good.exe");
  Report();
  EXPECT_THAT(drive.started, ElementsAre(good + " /v (minimised)"));
}

TEST_F(ReportingVersions, ReportsAHundredAndOneDrivers) {
  for (int i = 0; i < 101; ++i) folder.MakeFolder("drivers/" + std::to_string(i));
  Tool("100/Download.exe");
  Report();
  EXPECT_EQ(drive.started.size(), 1);
}

TEST_F(ReportingVersions, FailsWithASubscriptErrorForMoreDriversBeforeItStartsAnything) {
  for (int i = 0; i < 102; ++i) Tool(std::to_string(i) + "/Download.exe");
  try {
    Report();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kSubscriptOutOfRange);
  }
  EXPECT_THAT(drive.started, IsEmpty());
}

TEST_F(ReportingVersions, ShowsTheHourglassMeanwhile) {
  Tool("Meter/Download.exe");
  drive.frontEnd = &frontEnd;
  Report();
  EXPECT_EQ(drive.pointerAtStart, kHourglassPointer);
  EXPECT_EQ(frontEnd.MousePointer(), kDefaultPointer);
}

TEST_F(ReportingVersions, TellsOfEveryStartedProcess) {
  Tool("Meter/Download.exe");
  folder.WriteFile("drivers/Meter/bad.exe", "no program");
  std::vector<int> processes;
  std::string path;
  ReportToolVersions(drive, frontEnd, path, [&](int process) { processes.push_back(process); });
  EXPECT_THAT(processes, ElementsAre(drive.lastProcess));
}

TEST_F(ReportingVersions, WaitsForNoTool) {
  folder.WriteFile("hold");
  folder.WriteProgram("drivers/Meter/Download.exe",
                      "while [ -e '" + folder / "hold" + "' ]; do sleep 0.01; done");
  Report();
  EXPECT_TRUE(drive.ProcessLives(drive.lastProcess));
  fs::remove(folder / "hold");
}

TEST_F(ReportingVersions, FindsNothingInAPlainFileOrAFolderThatCannotBeListed) {
  const std::string path = folder.WriteFile("drivers");
  Report();
  fs::remove(path);
  Tool("Meter/Download.exe");
  drive.refusesToList = path + "/";
  Report(folder.Path());
  EXPECT_THAT(drive.started, IsEmpty());
  drive.refusesToList = folder / "drivers/Meter";
  const std::string other = Tool("Tide Gauge/Download.exe");
  Report(folder.Path());
  EXPECT_THAT(drive.started, ElementsAre(other + " /v (minimised)"));
}

// No settings file, no dictionary, no window: the data folder may not even be reachable.
class ARunThatReports : public StartedRun {};

TEST_F(ARunThatReports, TouchesNoStoreNoDictionaryAndNoDisplay) {
  folder.WriteFile("start/TARVO.DIC", "no dictionary: loading it would fail");
  for (const char* arguments : {"/v", "/V"}) {
    EXPECT_EQ(Start(arguments), AfterStart::kEnd);
    EXPECT_TRUE(frontEnd.LoadedForms().empty());
  }
  EXPECT_FALSE(fs::exists(folder / kSettingsFile));
}

TEST_F(ARunThatReports, IsNotMeantByTheSwitchWithAnythingBesideIt) {
  EXPECT_EQ(Start("/v /r"), AfterStart::kEventLoop);
  EXPECT_EQ(Start(" /v"), AfterStart::kEventLoop);
}

}  // namespace
}  // namespace tarvo::test
