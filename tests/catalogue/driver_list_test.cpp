#include "catalogue/driver_list.h"

#include <fstream>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "support/list_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class TheDriverList : public ListRun {};

TEST_F(TheDriverList, HoldsOnlyTheAddItemWithoutDrivers) {
  Update();
  EXPECT_THAT(Names(), ElementsAre("(Add Driver)"));
  EXPECT_EQ(Item("Add").Icon, 1);
  EXPECT_EQ(Item("Add").SmallIcon, 1);
}

TEST_F(TheDriverList, MakesDriversInTheBaseDirectoryWhenNoneIsFound) {
  Update();
  EXPECT_TRUE(std::filesystem::is_directory(folder / InData("Drivers")));
}

TEST_F(TheDriverList, ShowsEveryFolderAndEveryPlainFileInDrivers) {
  Driver("Meter");
  Driver("no-dot");
  DriverFile("notes.txt");
  Update();
  EXPECT_THAT(Names(), UnorderedElementsAre("(Add Driver)", "Meter", "no-dot", "notes.txt"));
}

TEST_F(TheDriverList, LeavesHiddenNamesOut) {
  Driver(".hidden");
  DriverFile(".file");
  Update();
  EXPECT_THAT(Names(), ElementsAre("(Add Driver)"));
}

TEST_F(TheDriverList, ListsALinkToAFolderAsADriverButDoesNotWalkThroughIt) {
  folder.WriteFile("elsewhere/one.csv");
  Driver("Meter");
  std::filesystem::create_directory_symlink(folder / "elsewhere", folder / InDrivers("Linked"));
  Update();
  EXPECT_THAT(Item("Linked").SubItems, ElementsAre("", "", "", "-", "-", "-"));
}

TEST_F(TheDriverList, CountsDataFilesAtAnyDepthAndInAnyLetterCase) {
  DriverFile("Meter/one.csv");
  DriverFile("Meter/Data/two.CSV");
  DriverFile("Meter/Data/2026/03/three.Csv");
  DriverFile("Meter/Data/a.asc");
  DriverFile("Meter/Data/csv");
  DriverFile("Meter/Data/x.csvx");
  Update();
  EXPECT_THAT(Item("Meter").SubItems, ElementsAre("3", "1", "", "-", "-", "-"));
}

TEST_F(TheDriverList, ShowsAZeroForCsvOnly) {
  Driver("Empty");
  Update();
  EXPECT_THAT(Item("Empty").SubItems, ElementsAre("0", "", "", "-", "-", "-"));
}

TEST_F(TheDriverList, GivesAPlainFileAnEmptyCsvColumn) {
  DriverFile("notes.csv");
  Update();
  EXPECT_THAT(Item("notes.csv").SubItems, ElementsAre("", "", "", "-", "-", "-"));
}

TEST_F(TheDriverList, ShowsTheVersionsThatTheToolsRecorded) {
  Driver("Tide Gauge");
  globals->LocalRegistry().SaveSetting("tarvo.versions_Tide Gauge_DOWNLOAD", "2.1");
  globals->LocalRegistry().SaveSetting("TARVO.VERSIONS_TIDE GAUGE_UPLOAD", "2.2");
  globals->LocalRegistry().SaveSetting("tarvo.versions_Tide Gauge_PROPERTIES", "");
  Update();
  EXPECT_THAT(Item("Tide Gauge").SubItems, ElementsAre("0", "", "", "2.1", "2.2", ""));
}

TEST_F(TheDriverList, LeavesTheVersionColumnsOfANameWithATildeEmpty) {
  DriverFile("A~B/one.csv");
  Update();
  EXPECT_THAT(Item("A~B").SubItems, ElementsAre("1", "", "", "", "", ""));
}

TEST_F(TheDriverList, LeavesTheCountsOfADriverWith102SubfoldersEmpty) {
  for (int i = 0; i < 101; ++i) Driver("Wide/" + std::to_string(i));
  DriverFile("Wide/one.csv");
  Update();
  EXPECT_EQ(Item("Wide").SubItems[0], "1") << "101 subfolders are counted";
  Driver("Wide/101");
  Update();
  EXPECT_THAT(Item("Wide").SubItems, ElementsAre("", "", "", "-", "-", "-"));
}

TEST_F(TheDriverList, KeepsTheOldCountsOfTheSelectedDriverWhenTheyCannotBeReadAnew) {
  DriverFile("Wide/one.csv");
  DriverFile("Wide/one.txt");
  Update();
  window.lvListView.Select(&Item("Wide"));
  for (int i = 0; i < 102; ++i) Driver("Wide/" + std::to_string(i));
  globals->LocalRegistry().SaveSetting("tarvo.versions_Wide_UPLOAD", "9");
  Update(kCurrentDriver);
  EXPECT_THAT(Item("Wide").SubItems, ElementsAre("1", "", "1", "-", "9", "-"));
}

TEST_F(TheDriverList, DoesNotFollowLinksInsideADriver) {
  DriverFile("Meter/one.csv");
  std::filesystem::create_directory_symlink("..", folder / InDrivers("Meter/loop"));
  std::filesystem::create_directory_symlink(folder.MakeFolder("outside"),
                                            folder / InDrivers("Meter/out"));
  folder.WriteFile("outside/two.csv");
  std::filesystem::create_symlink(folder / "outside/two.csv", folder / InDrivers("Meter/two.csv"));
  std::filesystem::create_symlink("nowhere", folder / InDrivers("Meter/broken.csv"));
  std::filesystem::create_directory_symlink(folder / "outside",
                                            folder / InDrivers("Meter/dir.csv"));
  Update();
  EXPECT_EQ(Item("Meter").SubItems[0], "2") << "the file and the link to a file";
}

TEST_F(TheDriverList, CountsThroughAThousandLevelsBeyondTheLongestPath) {
  std::filesystem::current_path(Driver("Deep"));
  for (int i = 0; i < 1000; ++i) {
    std::filesystem::create_directory("subfolder");
    std::filesystem::current_path("subfolder");
  }
  std::ofstream("bottom.csv").put('x');
  std::filesystem::current_path(folder / kDataFolder);
  Update();
  EXPECT_EQ(Item("Deep").SubItems[0], "1");
}

TEST_F(TheDriverList, KeepsNamesOfEveryKind) {
  const std::string longest(255, 'n');
  for (const std::string name :
       {"Größe é", "it's \"quoted\"", "<b>x & y", "%1¦", longest.c_str()}) {
    DriverFile(name + "/one.csv");
    Update();
    EXPECT_EQ(Item(name).SubItems[0], "1") << name;
  }
}

TEST_F(TheDriverList, GivesAFolderCalledAddNoItemOfItsOwn) {
  DriverFile("Add/one.csv");
  Driver("Meter");
  Update();
  EXPECT_THAT(Names(), UnorderedElementsAre("(Add Driver)", "Meter"));
  EXPECT_THAT(Item("Add").SubItems, ElementsAre("", "", "", "", "", ""));
}

TEST_F(TheDriverList, RefreshesTheSelectedDriverOnly) {
  DriverFile("Meter/one.csv");
  DriverFile("Other/one.csv");
  Update();
  window.lvListView.Select(&Item("Meter"));
  window.mnuFileDownload.Enabled = true;
  DriverFile("Meter/two.csv");
  DriverFile("Other/two.csv");
  Update(kCurrentDriver);
  EXPECT_EQ(Item("Meter").SubItems[0], "2");
  EXPECT_EQ(Item("Other").SubItems[0], "1");
  EXPECT_EQ(window.lvListView.SelectedItem(), &Item("Meter"));
  EXPECT_TRUE(window.mnuFileDownload.Enabled) << "the commands keep their state";
}

TEST_F(TheDriverList, RefreshesASelectedItemThatDiffersInLetterCaseOnly) {
  DriverFile("Meter/one.csv");
  Update();
  Item("Meter").Text = "METER";
  window.lvListView.Select(&Item("Meter"));
  DriverFile("Meter/two.csv");
  Update(kCurrentDriver);
  EXPECT_EQ(Item("Meter").SubItems[0], "2");
}

TEST_F(TheDriverList, DoesNothingOnRefreshingWithoutASelection) {
  DriverFile("Meter/one.csv");
  Update();
  DriverFile("Meter/two.csv");
  Update(kCurrentDriver);
  EXPECT_EQ(Item("Meter").SubItems[0], "1");
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(TheDriverList, SelectsNothingAfterARebuildAndResetsTheCommands) {
  DriverFile("Meter/Download.EXE");
  Update();
  window.lvListView.Select(&Item("Meter"));
  window.mnuFileDownload.Enabled = true;
  Update();
  EXPECT_EQ(window.lvListView.SelectedItem(), nullptr);
  EXPECT_FALSE(window.mnuFileDownload.Enabled);
}

TEST_F(TheDriverList, PutsTheAddItemFirstAlsoBeforeNamesThatSortBeforeAParenthesis) {
  Driver("!first");
  Driver("b");
  Driver("A");
  window.lvListView.Sort();
  Update();
  EXPECT_THAT(Names(), ElementsAre("(Add Driver)", "!first", "A", "b"));
}

TEST_F(TheDriverList, RefreshesFromTheExactNameWhereTwoDifferInLetterCaseOnly) {
  DriverFile("METER/one.csv");
  DriverFile("METER/two.csv");
  Driver("Meter");
  Driver("meter");
  Update();
  ListItem& item = window.lvListView.ItemAt(1);
  for (const char* name : {"METER", "Meter", "meter"}) {
    item.Text = name;
    window.lvListView.Select(&item);
    Update(kCurrentDriver);
    EXPECT_EQ(item.SubItems[0], std::string(name) == "METER" ? "2" : "0") << name;
  }
}

TEST_F(TheDriverList, ChangesThePointerAsThreeCountsDo) {
  Driver("Meter/A");
  Driver("Meter/B");
  Update();
  frontEnd.pointers.clear();
  window.lvListView.Select(&Item("Meter"));
  Update(kCurrentDriver);
  // One count: the hourglass at the start of each of the three folders, the default at the end of
  // each, the inner ones before the outer one.
  EXPECT_THAT(frontEnd.pointers, ElementsAre(11, 0, 11, 0, 11, 0, 11, 0, 11, 0, 11, 0));
}

// A front end that knows what the disk is doing when.
class WatchingPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  std::vector<FolderEntry> Entries(std::string_view path) override {
    if (frontEnd && FileNameOf(path) == "Meter") pointerWhileReading = frontEnd->MousePointer();
    return RootedPlatform::Entries(path);
  }
  FrontEnd* frontEnd = nullptr;
  int pointerWhileReading = -1;
};

TEST_F(TheDriverList, ShowsTheHourglassWhileItReadsTheDisk) {
  Driver("Meter");
  WatchingPlatform watching(folder.Path());
  watching.specialFolders = platform.specialFolders;
  watching.frontEnd = &frontEnd;
  Globals other(watching, frontEnd, "");
  other.OpenSettings();
  UpdateDriverList(other, window);
  EXPECT_EQ(watching.pointerWhileReading, kHourglassPointer);
}

TEST_F(TheDriverList, DoesNotWalkDeeperThanTwoThousandLevels) {
  std::filesystem::current_path(Driver("Deep"));
  for (int i = 0; i < 2001; ++i) {
    std::filesystem::create_directory("d");
    std::filesystem::current_path("d");
  }
  std::filesystem::current_path(folder / kDataFolder);
  Update();
  EXPECT_EQ(Item("Deep").SubItems[0], "");
}

class AnUnreadableSubfolder : public ListRun {
 protected:
  class Unreadable : public RootedPlatform {
   public:
    using RootedPlatform::RootedPlatform;
    std::vector<FolderEntry> Entries(std::string_view path) override {
      if (FileNameOf(path) == "locked") throw RuntimeError(kPermissionDenied);
      return RootedPlatform::Entries(path);
    }
  };
};

TEST_F(AnUnreadableSubfolder, LeavesTheCountsEmptyAndTheImageCounterWhereItWas) {
  DriverFile("A/driver.ico", IconFile());
  DriverFile("B/driver.ico", IconFile());
  const auto listed = platform.Entries(folder / InData("Drivers"));
  const std::string first = listed[0].name;
  const std::string second = listed[1].name;
  DriverFile(first + "/locked/one.csv");
  Unreadable unreadable(folder.Path());
  unreadable.specialFolders = platform.specialFolders;
  Globals other(unreadable, frontEnd, "");
  other.OpenSettings();
  UpdateDriverList(other, window);
  EXPECT_THAT(Item(first).SubItems, ElementsAre("", "", "", "-", "-", "-"));
  EXPECT_EQ(Item(second).SubItems[0], "0");
  EXPECT_EQ(Item(first).Icon, Item(second).Icon);
  EXPECT_EQ(frontEnd.MousePointer(), kDefaultPointer);
}

}  // namespace
}  // namespace tarvo::test
