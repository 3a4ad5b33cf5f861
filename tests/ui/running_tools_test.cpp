#include <chrono>
#include <stdexcept>

#include "base/runtime_error.h"
#include "support/working_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Le;
using ::testing::SizeIs;

// The clock moves by the time that is waited for, so that a download takes as many turns as it
// needs. A tool that is to run until the test says so waits for a file to vanish.
class RunningATool : public WorkingRun {
 protected:
  RunningATool() {
    frontEnd.whileWaiting = [this] {
      if (std::chrono::steady_clock::now() > deadline_) {
        throw std::runtime_error("the tool does not end");
      }
      PassTurn(frontEnd.waits.back());
      if (meanwhile) meanwhile();
    };
  }

  std::string RunUntilReleased() const {
    folder.WriteFile("hold");
    return "while [ -e '" + folder / "hold" + "' ]; do sleep 0.01; done";
  }
  void Release() const { fs::remove(folder / "hold"); }

  // Selects a driver and downloads from it.
  void Download(const std::string& driver) {
    Click(driver);
    Window().mnuFileDownload_Click();
  }

  std::function<void()> meanwhile;

 private:
  std::chrono::steady_clock::time_point deadline_ =
      std::chrono::steady_clock::now() + std::chrono::seconds(60);
};

TEST_F(RunningATool, DownloadsIntoDataAndShowsTheNewFileAndTheNewCount) {
  Driver("Meter/Data");
  DriverTool("Meter/Download.EXE", "echo 1 > \"$(dirname \"$0\")/Data/new.csv\"");
  Start();
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath("Meter/Data/new.csv")));
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
  EXPECT_EQ(Window().lvListView.SelectedItem(), &Item("Meter"));
  EXPECT_FALSE(Window().TARVO1.IsOn());
}

TEST_F(RunningATool, WatchesTheDriverFolderWhereThereIsNoDataFolder) {
  DriverTool("Meter/Download.EXE", "echo 1 > \"$(dirname \"$0\")/new.txt\"");
  Start();
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath("Meter/new.txt")));
  EXPECT_EQ(Item("Meter").SubItems[2], "1");
}

TEST_F(RunningATool, FindsToolAndDataFolderInAnyLetterCase) {
  Driver("Meter/DATA");
  DriverTool("Meter/download.exe", "echo 1 > \"$(dirname \"$0\")/DATA/new.csv\"");
  Start();
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath("Meter/DATA/new.csv")));
}

TEST_F(RunningATool, ShowsNoFileWhenTheDownloadWroteNone) {
  DriverFile("Meter/Data/old.csv");
  DriverTool("Meter/Download.EXE");
  Start();
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, IsEmpty());
}

TEST_F(RunningATool, WaitsInTurnsOfTwoSecondsAndBringsTheDownloadToTheFrontAfterEach) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Start();
  int turns = 0;
  meanwhile = [&] {
    if (++turns == 4) Release();
  };
  const double start = platform.secondsOfDay;
  Download("Meter");
  EXPECT_GE(platform.broughtToFront.size(), 3);
  EXPECT_THAT(platform.broughtToFront, Each(platform.lastProcess));
  EXPECT_THAT(frontEnd.waits, Each(Le(2.0)));
  EXPECT_EQ(platform.secondsOfDay - start, 2.0 * static_cast<double>(frontEnd.waits.size()));
}

TEST_F(RunningATool, KeepsWaitingThroughEventsUntilTheTurnIsOver) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Start();
  std::size_t frontsBefore = 99;
  frontEnd.whileWaiting = [&] {
    PassTurn(0.25);  // an event came
    if (frontEnd.waits.size() == 7) frontsBefore = platform.broughtToFront.size();
    if (frontEnd.waits.size() == 8) Release();
  };
  Download("Meter");
  EXPECT_GE(frontEnd.waits.size(), 8);
  EXPECT_EQ(frontsBefore, 0) << "a turn lasts eight such events";
}

TEST_F(RunningATool, NoticesAToolThatEndsAtOnce) {
  DriverTool("Meter/Download.EXE", "kill -9 $$");
  Start();
  Download("Meter");
  EXPECT_FALSE(Window().TARVO1.IsOn());
}

TEST_F(RunningATool, EndsTheWaitWithTheStartedProcessThoughItsChildLivesOn) {
  DriverTool("Meter/Download.EXE", "(" + RunUntilReleased() + ") &\nexit 0");
  Start();
  Download("Meter");
  EXPECT_TRUE(fs::exists(folder / "hold"));
  EXPECT_FALSE(Window().TARVO1.IsOn());
  Release();
}

// The watch stays on: the next download moves it, and its result is then that one's.
TEST_F(RunningATool, LeavesTheWatchOnAndRefreshesWhenTheDownloadCannotStart) {
  Driver("Meter/Data");
  DriverFile("Meter/Download.EXE", "no program");
  Start();
  DriverFile("Meter/Data/new.csv");
  Download("Meter");
  EXPECT_TRUE(Window().TARVO1.IsOn());
  EXPECT_THAT(platform.shownFiles, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_THAT(frontEnd.waits, IsEmpty());
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
}

TEST_F(RunningATool, RefreshesTheItemThatIsSelectedWhenTheDownloadEnds) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Driver("Tide Gauge");
  Start();
  meanwhile = [&] {
    DriverFile("Meter/new.csv");
    DriverFile("Tide Gauge/other.csv");
    Click("Tide Gauge");
    Release();
  };
  Download("Meter");
  EXPECT_EQ(Item("Meter").SubItems[0], "0");
  EXPECT_EQ(Item("Tide Gauge").SubItems[0], "1");
  EXPECT_EQ(Window().lvListView.SelectedItem(), &Item("Tide Gauge"));
}

TEST_F(RunningATool, LetsASecondDownloadRunInsideTheFirstWhichEndsAfterIt) {
  DriverTool("Meter/Download.EXE", "exit 0");
  DriverTool("Tide Gauge/Download.EXE", RunUntilReleased());
  Start();
  std::vector<std::string> ends;
  int turns = 0;
  meanwhile = [&] {
    ++turns;
    if (turns == 1) {
      Download("Tide Gauge");
      ends.push_back("inner");
    }
    if (turns == 3) Release();
  };
  Download("Meter");
  ends.push_back("outer");
  EXPECT_THAT(ends, ElementsAre("inner", "outer"));
  EXPECT_THAT(platform.started,
              ElementsAre(DriverPath("Meter/Download.EXE"), DriverPath("Tide Gauge/Download.EXE")));
}

// Both share one monitor, which the second moved and stopped; for the first there is nothing left.
TEST_F(RunningATool, ShowsOneFileForTwoDownloadsAtOnce) {
  DriverTool("Meter/Download.EXE", "exit 0");
  DriverTool("Tide Gauge/Download.EXE", "echo 1 > \"$(dirname \"$0\")/inner.csv\"");
  Start();
  bool isFirst = true;
  meanwhile = [&] {
    if (std::exchange(isFirst, false)) {
      Download("Tide Gauge");
      DriverFile("Meter/outer.csv");
    }
  };
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath("Tide Gauge/inner.csv")));
}

TEST_F(RunningATool, ReturnsAtOnceAndTouchesNothingWhenTheWindowIsClosedMeanwhile) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Start();
  meanwhile = [&] {
    DriverFile("Meter/new.csv");
    frontEnd.Unload(Window());
  };
  Download("Meter");
  EXPECT_EQ(frontEnd.waits.size(), 1);
  EXPECT_THAT(platform.shownFiles, IsEmpty());
  EXPECT_EQ(Item("Meter").SubItems[0], "0");
  EXPECT_TRUE(platform.ProcessLives(platform.lastProcess));
  Release();
}

// The clock begins anew at midnight and nothing corrects for that: the turn goes on, and the window
// lives, until it is closed.
TEST_F(RunningATool, GoesOnWaitingLiveWhenATurnBeginsLessThanTwoSecondsBeforeMidnight) {
  DriverTool("Meter/Download.EXE", "exit 0");
  Start();
  platform.secondsOfDay = 86400 - 1.5;
  int turns = 0;
  frontEnd.whileWaiting = [&] {
    platform.PassSeconds(2);
    if (++turns == 1000) frontEnd.Unload(Window());
  };
  Download("Meter");
  EXPECT_EQ(turns, 1000);
  EXPECT_THAT(frontEnd.waits, Each(Le(2.0)));
  EXPECT_THAT(platform.broughtToFront, IsEmpty());
}

TEST_F(RunningATool, SurvivesADriverFolderThatDisappearsMeanwhile) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Start();
  meanwhile = [&] {
    fs::remove_all(DriverPath("Meter"));
    Release();
  };
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_EQ(Window().lvListView.SelectedItem(), &Item("Meter"));
}

// Nothing of a download is ever shown as an error.
TEST_F(RunningATool, PassesOverADownloadWhoseDataFolderHasVanished) {
  DriverTool("Meter/Download.EXE");
  Start();
  Click("Meter");
  fs::remove_all(folder / kDataFolder);
  Window().mnuFileDownload_Click();
  EXPECT_THAT(platform.started, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_FALSE(Window().TARVO1.IsOn());
}

TEST_F(RunningATool, DownloadsWithoutAWatchWhereNoneCanBeSet) {
  DriverTool("Meter/Download.EXE", "echo 1 > \"$(dirname \"$0\")/new.csv\"");
  platform.refusesToWatch = true;
  Start();
  Download("Meter");
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
  EXPECT_THAT(platform.shownFiles, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(RunningATool, PassesOverAListThatCannotBeRefreshedAfterADownload) {
  DriverTool("Meter/Download.EXE", RunUntilReleased());
  Start();
  meanwhile = [&] {
    fs::remove_all(folder / kDataFolder);
    Release();
  };
  EXPECT_EQ(ErrorOf([&] { Download("Meter"); }), 0);
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(RunningATool, FindsTheDriverAgainAfterAListThatCouldNotBeRefreshed) {
  DriverTool("Meter/Download.EXE", "echo 1 >> \"$(dirname \"$0\")/new.csv\"");
  Start();
  platform.refusesToList = folder / InData("Drivers");
  Download("Meter");
  platform.refusesToList.clear();
  Download("Meter");
  EXPECT_THAT(platform.shownFiles, SizeIs(2));
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
}

// Tools write into a folder; a file of its name is none.
TEST_F(RunningATool, TakesAFileCalledDataForNoDataFolder) {
  DriverFile("Meter/Data");
  DriverTool("Meter/Download.EXE", "echo 1 > \"$(dirname \"$0\")/new.csv\"");
  Start();
  Download("Meter");
  Window().mnuFileOpen_Click();
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath("Meter/new.csv")));
  EXPECT_THAT(platform.openedFolders, ElementsAre(DriverPath("Meter")));
}

TEST_F(RunningATool, SurvivesAFileManagerThatIsMissing) {
  DriverTool("Meter/Download.EXE", "echo 1 > \"$(dirname \"$0\")/new.csv\"");
  Start();
  platform.desktopError = RuntimeError(kFileNotFound);
  Download("Meter");
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
}

TEST_F(RunningATool, StartsUploadAndPropertiesWithoutWaitingOrRefreshing) {
  DriverTool("Meter/Upload.EXE");
  DriverTool("Meter/Properties.EXE");
  Start();
  Click("Meter");
  DriverFile("Meter/new.csv");
  Window().mnuFileUpload_Click();
  Window().mnuFileProperties_Click();
  EXPECT_THAT(platform.started,
              ElementsAre(DriverPath("Meter/Upload.EXE"), DriverPath("Meter/Properties.EXE")));
  EXPECT_THAT(frontEnd.waits, IsEmpty());
  EXPECT_EQ(Item("Meter").SubItems[0], "0");
}

TEST_F(RunningATool, StartsToolsWithTheDataFolderAsTheirWorkingFolder) {
  DriverTool("Meter/Download.EXE", "pwd > \"$(dirname \"$0\")/where.txt\"");
  Start();
  Download("Meter");
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/where.txt")), folder / kDataFolder + "\n");
}

TEST_F(RunningATool, RunsToolsOfDriversWithBlanksAndQuotesInTheirNames) {
  const std::string name = "Tide 'Gauge' \"2\" $(x)";
  DriverTool(name + "/Download.EXE", "echo 1 > \"$(dirname \"$0\")/new.csv\"");
  Start();
  Download(name);
  EXPECT_THAT(platform.shownFiles, ElementsAre(DriverPath(name + "/new.csv")));
}

TEST_F(RunningATool, FailsWhenUploadOrPropertiesCannotStart) {
  DriverFile("Meter/Upload.EXE", "no program");
  Start();
  Click("Meter");
  EXPECT_NE(ErrorOf([&] { Window().mnuFileUpload_Click(); }), 0);
  EXPECT_EQ(ErrorOf([&] { Window().mnuFileProperties_Click(); }), kFileNotFound);
  EXPECT_THAT(platform.started, IsEmpty());
}

// The toolbar's key "Properties" does not look at the menu; the "Add" item's folder does not exist.
TEST_F(RunningATool, FailsWithAMissingFileForThePropertiesOfTheAddItem) {
  Start();
  Click("Add");
  EXPECT_EQ(ErrorOf([&] { Press("Properties"); }), kFileNotFound);
  Press("DriverProperties");
  EXPECT_THAT(platform.started, IsEmpty());
}

TEST_F(RunningATool, DoesNothingWithoutASelection) {
  DriverTool("Meter/Download.EXE");
  Start();
  Window().mnuFileDownload_Click();
  Window().mnuFileUpload_Click();
  Window().mnuFileProperties_Click();
  Window().mnuFileOpen_Click();
  Window().mnuFileDelete_Click();
  Window().mnuFileInstallMobile_Click();
  EXPECT_THAT(platform.started, IsEmpty());
  EXPECT_THAT(platform.openedFolders, IsEmpty());
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_FALSE(Window().TARVO1.IsOn());
}

}  // namespace
}  // namespace tarvo::test
