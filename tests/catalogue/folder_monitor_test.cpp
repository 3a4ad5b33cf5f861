#include "catalogue/folder_monitor.h"

#include "support/program_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WatchingAFolder : public ProgramRun {
 protected:
  std::string Watched(const std::string& name) const { return folder.MakeFolder(name); }

  FolderMonitor monitor;
};

TEST_F(WatchingAFolder, ShowsTheFileWrittenMeanwhileWhenItStops) {
  folder.WriteFile("data/old.csv");
  FileMonitor(platform, monitor, Watched("data"));
  folder.WriteFile("data/new.csv");
  FileMonitor(platform, monitor);
  EXPECT_THAT(platform.shownFiles, ElementsAre(folder / "data/new.csv"));
}

TEST_F(WatchingAFolder, ShowsNothingWhenNothingWasWritten) {
  folder.WriteFile("data/old.csv");
  FileMonitor(platform, monitor, Watched("data"));
  FileMonitor(platform, monitor);
  EXPECT_THAT(platform.shownFiles, IsEmpty());
}

TEST_F(WatchingAFolder, MovesWhenItIsStartedWhileItIsOn) {
  FileMonitor(platform, monitor, Watched("first"));
  FileMonitor(platform, monitor, Watched("second"));
  folder.WriteFile("second/b.csv");
  folder.WriteFile("first/a.csv");
  FileMonitor(platform, monitor);
  EXPECT_THAT(platform.shownFiles, ElementsAre(folder / "second/b.csv"));
}

TEST_F(WatchingAFolder, DoesNothingWhenItIsStoppedWhileItIsOff) {
  FileMonitor(platform, monitor);
  FileMonitor(platform, monitor, Watched("data"));
  folder.WriteFile("data/a.csv");
  FileMonitor(platform, monitor);
  FileMonitor(platform, monitor);
  EXPECT_THAT(platform.shownFiles, ElementsAre(folder / "data/a.csv"));
  EXPECT_FALSE(monitor.IsOn());
}

TEST_F(WatchingAFolder, FailsForAFolderThatIsNotThereAndIsOffThen) {
  FileMonitor(platform, monitor, Watched("data"));
  EXPECT_THROW(FileMonitor(platform, monitor, folder / "missing"), RuntimeError);
  EXPECT_FALSE(monitor.IsOn());
}

TEST_F(WatchingAFolder, PassesOverAFileManagerThatIsMissing) {
  platform.desktopError = RuntimeError(kFileNotFound);
  FileMonitor(platform, monitor, Watched("data"));
  folder.WriteFile("data/a.csv");
  EXPECT_NO_THROW(FileMonitor(platform, monitor));
  EXPECT_FALSE(monitor.IsOn());
}

}  // namespace
}  // namespace tarvo::test
