#include "base/runtime_error.h"
#include "support/started_run.h"

namespace tarvo::test {
namespace {

class TheStart : public StartedRun {
 protected:
  // Each failing run has a front end of its own, which still holds the windows that were loaded.
  int ErrorNumber() {
    RecordingFrontEnd ownFrontEnd;
    Tarvo own(platform, ownFrontEnd, "");
    try {
      own.Start();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  bool SettingsFileExists() { return std::filesystem::exists(folder / kSettingsFile); }
};

TEST_F(TheStart, ShowsTheMainWindowAndNothingElse) {
  EXPECT_EQ(Start(), AfterStart::kEventLoop);
  EXPECT_THAT(frontEnd.LoadedForms(), ::testing::ElementsAre(&Window()));
  EXPECT_TRUE(Window().Visible);
}

TEST_F(TheStart, InReportModeTouchesNothing) {
  EXPECT_EQ(Start("/V"), AfterStart::kEnd);
  EXPECT_TRUE(frontEnd.LoadedForms().empty());
  EXPECT_FALSE(SettingsFileExists());
}

TEST_F(TheStart, WithMoreThanTheSwitchIsAnOrdinaryOne) {
  EXPECT_EQ(Start("/v /r"), AfterStart::kEventLoop);
}

TEST_F(TheStart, WithABlankBehindTheSwitchIsAnOrdinaryOne) {
  EXPECT_EQ(Start("/v "), AfterStart::kEventLoop);
}

TEST_F(TheStart, InRefreshModeLoadsTheMainWindowAndNeverShowsIt) {
  Driver("Meter");
  EXPECT_EQ(Start("/r"), AfterStart::kEnd);
  EXPECT_TRUE(frontEnd.IsLoaded(Window()));
  EXPECT_FALSE(Window().Visible);
  EXPECT_EQ(Window().lvListView.Count(), 2);
}

TEST_F(TheStart, FailsWhenTheDataFolderSettingPointsNowhereAndMakesNothing) {
  Store("Tarvo_Settings_Directory", folder / "nowhere/at all");
  EXPECT_EQ(ErrorNumber(), kPathNotFound);
  EXPECT_FALSE(std::filesystem::exists(folder / "nowhere"));
}

TEST_F(TheStart, RoundsAStoredViewModeHalvesToEven) {
  Store("TarvoSettings_ViewMode", "1.5");
  Start();
  EXPECT_EQ(Window().lvListView.View(), kList);
}

TEST_F(TheStart, RoundsTwoAndAHalfDown) {
  Store("TarvoSettings_ViewMode", "2.5");
  Start();
  EXPECT_EQ(Window().lvListView.View(), kList);
}

TEST_F(TheStart, FailsForAStoredViewModeOutOfRange) {
  for (const char* mode : {"7", "3.5", "-1"}) {
    Store("TarvoSettings_ViewMode", mode);
    EXPECT_EQ(ErrorNumber(), kInvalidPropertyValue) << mode;
  }
}

TEST_F(TheStart, TakesAViewModeThatIsNoNumberForLargeIcons) {
  Store("TarvoSettings_ViewMode", "details");
  Start();
  EXPECT_EQ(Window().lvListView.View(), kLargeIcons);
}

TEST_F(TheStart, FailsForADamagedDictionary) {
  folder.WriteFile("start/TARVO.DIC", "no dictionary");
  EXPECT_EQ(ErrorNumber(), kInvalidFileFormat);
}

TEST_F(TheStart, RunsWithDefaultsWhenTheSettingsFileCannotBeUsed) {
  folder.MakeFolder(kSettingsFile);
  EXPECT_EQ(Start(), AfterStart::kEventLoop);
  EXPECT_EQ(run->RunGlobals().LocalRegistry().RegistryDataFile(), "");
  EXPECT_EQ(Window().Place.Width, 6500);
}

// A user who closes the main window while it is still loading.
class ClosingFrontEnd : public RecordingFrontEnd {
 public:
  void Yield() override {
    if (close) close();
  }
  std::function<void()> close;
};

TEST_F(TheStart, EndsWhenTheWindowIsClosedWhileItLoads) {
  ClosingFrontEnd closing;
  run = std::make_unique<Tarvo>(platform, closing, "");
  closing.close = [&] { closing.Unload(run->MainForm()); };
  EXPECT_EQ(run->Start(), AfterStart::kEnd);
  EXPECT_TRUE(closing.LoadedForms().empty());
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1000");
}

// The walk of the closing window passes over the splash window, which was loaded first, and over
// itself.
TEST_F(TheStart, LeavesTheSplashToItselfWhenTheWindowIsClosedWhileItLoads) {
  ClosingFrontEnd closing;
  run = std::make_unique<Tarvo>(platform, closing, "");
  std::size_t left = 99;
  closing.close = [&] {
    closing.Unload(run->MainForm());
    left = closing.LoadedForms().size();
  };
  run->Start();
  EXPECT_EQ(left, 1U);
}

// The settings file cannot be opened several times in a row, from one opening on.
class HesitantSettings : public RootedPlatform {
 public:
  HesitantSettings(std::string root, int first, int failures)
      : RootedPlatform(std::move(root)), first_(first), failures_(failures) {}
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    if (path.ends_with("localregistry.dat") && ++openings >= first_ &&
        openings < first_ + failures_) {
      throw RuntimeError(kPermissionDenied);
    }
    return RootedPlatform::OpenFile(path, use);
  }
  int openings = 0;

 private:
  int first_;
  int failures_;
};

TEST_F(TheStart, KeepsTheFolderThatWasChosenForTheDataThoughItCannotBeReadForAMoment) {
  const std::string chosen = folder.MakeFolder("chosen");
  Store("Tarvo_Settings_Directory", chosen);
  constexpr int kMostFailures = 12;
  for (int failures = 1; failures <= kMostFailures; ++failures) {
    bool hasFailed = true;
    for (int first = 1; hasFailed; ++first) {
      std::filesystem::current_path(folder / "start");
      HesitantSettings hesitant(folder.Path(), first, failures);
      hesitant.specialFolders = platform.specialFolders;
      RecordingFrontEnd user;
      Tarvo program(hesitant, user, "");
      program.Start();
      ASSERT_EQ(Stored("Tarvo_Settings_Directory"), chosen)
          << failures << " failures from opening " << first << " on";
      hasFailed = hesitant.openings >= first;
    }
  }
}

}  // namespace
}  // namespace tarvo::test
