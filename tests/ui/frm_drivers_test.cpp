#include "ui/frm_drivers.h"

#include "base/runtime_error.h"
#include "support/made_dictionary.h"
#include "support/started_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

class TheMainWindow : public StartedRun {
 protected:
  void Close() { frontEnd.Unload(Window()); }
};

TEST_F(TheMainWindow, OpensAtItsDefaultPlaceInLargeIconsSortedByName) {
  Driver("b");
  Driver("A");
  Start();
  EXPECT_EQ(Window().Place.Left, 1000);
  EXPECT_EQ(Window().Place.Top, 1000);
  EXPECT_EQ(Window().Place.Width, 6500);
  EXPECT_EQ(Window().Place.Height, 6500);
  EXPECT_EQ(Window().lvListView.View(), kLargeIcons);
  EXPECT_TRUE(Window().lvListView.Sorted());
  EXPECT_EQ(Window().lvListView.ItemAt(1).Text, "A");
}

TEST_F(TheMainWindow, HasSevenColumnsAsWideAsTheirTextsButTheFirst) {
  Start();
  std::vector<std::string> texts;
  for (const ColumnHeader& column : Window().lvListView.ColumnHeaders) texts.push_back(column.Text);
  EXPECT_THAT(texts, ElementsAre("Name", "CSV Downloads", "ASC Downloads", "TXT Downloads",
                                 "Download Version", "Upload Version", "Properties Version"));
  EXPECT_EQ(Window().lvListView.ColumnHeaders[1].Width, frontEnd.TextWidth("CSV Downloads"));
  EXPECT_GT(Window().lvListView.ColumnHeaders[0].Width, frontEnd.TextWidth("Name"));
}

TEST_F(TheMainWindow, WorksInTheDataFolderAndSavesIt) {
  Start();
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
  EXPECT_EQ(Window().dataPath, folder / kDataFolder + "/");
  EXPECT_EQ(Stored("Tarvo_Settings_Directory"), folder / kDataFolder + "/");
}

TEST_F(TheMainWindow, SavesItsPlaceAndViewWhenClosed) {
  Start();
  Window().Place = {15, 30.5F, 4500, 3000.25F};
  Window().mnuListViewMode_Click(kDetails);
  Close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "15");
  EXPECT_EQ(Stored("Tarvo_Settings_MainTop"), "30.5");
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "4500");
  EXPECT_EQ(Stored("Tarvo_Settings_MainHeight"), "3000.25");
  EXPECT_EQ(Stored("Tarvo_Settings_ViewMode"), "3");
  EXPECT_TRUE(frontEnd.LoadedForms().empty());
}

// The view is written under a key with an underscore and read under one without it.
TEST_F(TheMainWindow, OpensInLargeIconsAgainThoughDetailsWereSaved) {
  Start();
  Window().mnuListViewMode_Click(kDetails);
  Close();
  Start();
  EXPECT_EQ(Window().lvListView.View(), kLargeIcons);
  EXPECT_EQ(Stored("TarvoSettings_ViewMode"), "absent");
}

TEST_F(TheMainWindow, OpensInTheViewThatIsStoredWithoutTheUnderscore) {
  Store("TarvoSettings_ViewMode", "3");
  Start();
  EXPECT_EQ(Window().lvListView.View(), kDetails);
  EXPECT_TRUE(Window().mnuListViewMode[kDetails].Checked);
  EXPECT_TRUE(Window().tbToolBar.ButtonByKey("ViewDetails").Pressed);
}

TEST_F(TheMainWindow, RestoresWhatItSavedWithADecimalComma) {
  platform.decimalSign = ",";
  Start();
  Window().Place.Left = 1234.5F;
  Close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1234,5");
  Start();
  EXPECT_EQ(Window().Place.Left, 1234.5F);
}

TEST_F(TheMainWindow, SavesOnlyTheViewWhenMinimised) {
  Start();
  Window().State = WindowState::kMinimised;
  Close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "absent");
  EXPECT_EQ(Stored("Tarvo_Settings_ViewMode"), "0");
}

TEST_F(TheMainWindow, SavesItsMaximisedBoundsWhenMaximised) {
  Start();
  Window().State = WindowState::kMaximised;
  Window().Place = {0, 0, 15000, 9000};
  Close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "15000");
}

TEST_F(TheMainWindow, SnapsToAWidthOf3000Twips) {
  Store("Tarvo_Settings_MainWidth", "abc");
  Start();
  EXPECT_EQ(Window().Place.Width, 3000);
  Window().Place.Width = 2999;
  Window().Form_Resize();
  EXPECT_EQ(Window().Place.Width, 3000);
  Window().Place.Width = 3001;
  Window().Form_Resize();
  EXPECT_EQ(Window().Place.Width, 3001);
}

TEST_F(TheMainWindow, GivesTheListTheRoomBetweenTheBars) {
  Start();
  const Bounds& list = Window().lvListView.Place;
  const float inner = frontEnd.ScaleHeight(Window());
  EXPECT_EQ(list.Left, 0);
  EXPECT_EQ(list.Width, 6500);
  EXPECT_EQ(list.Top, 420);
  EXPECT_EQ(list.Height, inner - 420 - 330);
  Window().mnuViewToolbar.Click();
  EXPECT_EQ(list.Top, 0);
  EXPECT_EQ(list.Height, inner - 330);
  Window().mnuViewStatusBar.Click();
  EXPECT_EQ(list.Height, inner);
}

TEST_F(TheMainWindow, KeepsTheListsHeightWhereItWouldBeNegativeButMovesTheRest) {
  Start();
  const float before = Window().lvListView.Place.Height;
  Window().Place.Height = RecordingFrontEnd::kFrameHeight + 100;
  Window().Place.Width = 9000;
  Window().Form_Resize();
  EXPECT_EQ(Window().lvListView.Place.Height, before);
  EXPECT_EQ(Window().lvListView.Place.Width, 9000);
}

TEST_F(TheMainWindow, StartsWithBothBarsCheckedAndTogglesThem) {
  Start();
  EXPECT_TRUE(Window().mnuViewToolbar.Checked);
  EXPECT_TRUE(Window().mnuViewStatusBar.Checked);
  Window().mnuViewToolbar_Click();
  EXPECT_FALSE(Window().mnuViewToolbar.Checked);
  EXPECT_FALSE(Window().tbToolBar.Visible);
  Window().mnuViewToolbar_Click();
  EXPECT_TRUE(Window().mnuViewToolbar.Checked);
  EXPECT_TRUE(Window().tbToolBar.Visible);
  Window().mnuViewStatusBar_Click();
  EXPECT_FALSE(Window().mnuViewStatusBar.Checked);
  EXPECT_FALSE(Window().sbStatusBar.Visible);
}

TEST_F(TheMainWindow, ChecksAndPressesExactlyTheChosenView) {
  Start();
  for (int mode = 0; mode < MainWindow::kViewModes; ++mode) {
    Window().mnuListViewMode[static_cast<std::size_t>(mode)].Click();
    EXPECT_EQ(Window().lvListView.View(), mode);
    for (int other = 0; other < MainWindow::kViewModes; ++other) {
      const auto at = static_cast<std::size_t>(other);
      EXPECT_EQ(Window().mnuListViewMode[at].Checked, other == mode);
      EXPECT_EQ(Window().tbToolBar.Buttons[at + 4].Pressed, other == mode);
    }
  }
}

TEST_F(TheMainWindow, SwitchesViewsByItsToolbarButtons) {
  Start();
  const std::pair<const char*, int> buttons[] = {
      {"ViewDetails", 3}, {"ViewList", 2}, {"ViewSmall", 1}, {"ViewLarge", 0}};
  for (const auto& [key, mode] : buttons) {
    Window().tbToolBar.ButtonClick(Window().tbToolBar.ButtonByKey(key));
    EXPECT_EQ(Window().lvListView.View(), mode);
  }
}

TEST_F(TheMainWindow, ComparesToolbarKeysWithTheirLetterCase) {
  Start();
  ToolbarButton button;
  button.Key = "viewdetails";
  Window().tbToolBar.ButtonClick(button);
  EXPECT_EQ(Window().lvListView.View(), kLargeIcons);
}

TEST_F(TheMainWindow, HasItsViewButtonsAtNumbers5To8BehindTwoSeparators) {
  Start();
  std::vector<std::string> keys;
  for (const ToolbarButton& button : Window().tbToolBar.Buttons) keys.push_back(button.Key);
  EXPECT_THAT(keys,
              ElementsAre("Delete", "Properties", "", "", "ViewLarge", "ViewSmall", "ViewList",
                          "ViewDetails", "", "Download", "Upload", "DriverProperties"));
}

TEST_F(TheMainWindow, LinesUpIconsToTheTop) {
  Start();
  Window().mnuViewLineUpIcons.Click();
  EXPECT_EQ(Window().lvListView.Arrange, Arrangement::kAutoTop);
}

TEST_F(TheMainWindow, ListsAnewOnRefresh) {
  Start();
  Driver("New");
  Window().mnuViewRefresh.Click();
  EXPECT_EQ(Window().lvListView.ItemAt(1).Text, "New");
}

TEST_F(TheMainWindow, SaysThatThereAreNoOptionsAndNoRenaming) {
  Start();
  Window().mnuViewOptions.Click();
  Window().mnuFileRename.Click();
  EXPECT_THAT(frontEnd.messages, ElementsAre("Tarvo: Options Dialog Code goes here!",
                                             "Tarvo: Rename Code goes here!"));
}

TEST_F(TheMainWindow, IsUnloadedByClose) {
  Start();
  Window().mnuFileClose.Click();
  EXPECT_TRUE(frontEnd.LoadedForms().empty());
}

TEST_F(TheMainWindow, ShowsDateAndTimeInPanels2And3) {
  Start();
  EXPECT_EQ(Window().tmrStuff.Interval, 10000);
  Window().sbStatusBar.Panels[1].Style = PanelStyle::kText;
  Window().sbStatusBar.Panels[2].Style = PanelStyle::kText;
  Window().tmrStuff.Tick();
  EXPECT_EQ(Window().sbStatusBar.Panels[1].Style, PanelStyle::kDate);
  EXPECT_EQ(Window().sbStatusBar.Panels[2].Style, PanelStyle::kTime);
}

TEST_F(TheMainWindow, ClearsItsFirstActivationAtTheShow) {
  Start();
  EXPECT_FALSE(Window().FirstActivate);
  EXPECT_TRUE(frontEnd.IsLoaded(Window()));
}

TEST_F(TheMainWindow, ClosesWhenItIsActivatedDuringARefresh) {
  Start();
  Window().Refreshing = true;
  Window().Form_Activate();
  EXPECT_FALSE(frontEnd.IsLoaded(Window()));
}

TEST_F(TheMainWindow, ReadsTheTwoSettingsThatItKeeps) {
  Store("Tarvo_Settings_oldtarvo.exe", "old");
  Store("Tarvo_Settings_tarvo.exe", "new");
  Start();
  EXPECT_EQ(Window().OldExeSetting, "old");
  EXPECT_EQ(Window().ExeSetting, "new");
}

TEST_F(TheMainWindow, PrefixesItsKeysWithTheTitleThatTheFirstWindowFound) {
  MakeDictionary(folder, PoText({{"Tarvo", "First"}, {"First", "Second"}}), {}, "start/TARVO.DIC");
  Store("First_Settings_MainLeft", "1500");
  Start();
  EXPECT_EQ(Window().Place.Left, 1500);
  Close();
  EXPECT_EQ(Stored("First_Settings_MainTop"), "1000");
  EXPECT_EQ(Stored("First_Settings_ViewMode"), "0");
}

TEST_F(TheMainWindow, MakesItsColumnsAsWideAsTheirTranslatedTexts) {
  MakeDictionary(folder,
                 PoText({{"%1 Downloads", "Dateien mit der Endung %1"}, {"Upload Version", "U"}}),
                 {}, "start/TARVO.DIC");
  Start();
  const auto& columns = Window().lvListView.ColumnHeaders;
  EXPECT_EQ(columns[2].Text, "Dateien mit der Endung ASC");
  for (std::size_t i = 1; i < columns.size(); ++i) {
    EXPECT_EQ(columns[i].Width, frontEnd.TextWidth(columns[i].Text)) << columns[i].Text;
  }
}

// A window that counts how often it is unloaded.
class Counted : public Form {
 public:
  explicit Counted(std::string name) : Form(std::move(name), "") {}
  void Form_Unload() override {
    ++unloads;
    if (whenUnloaded) whenUnloaded();
  }
  int unloads = 0;
  std::function<void()> whenUnloaded;
};

TEST_F(TheMainWindow, UnloadsEveryOtherWindowOnceExceptTheOneLoadedFirst) {
  Counted first("first");
  Counted second("second");
  Counted third("third");
  frontEnd.Load(first);
  Start();
  frontEnd.Load(second);
  frontEnd.Load(third);
  Close();
  EXPECT_EQ(first.unloads, 0);
  EXPECT_EQ(second.unloads, 1);
  EXPECT_EQ(third.unloads, 1);
  EXPECT_THAT(frontEnd.LoadedForms(), ElementsAre(&first));
  EXPECT_EQ(Stored("Tarvo_Settings_ViewMode"), "0");
}

TEST_F(TheMainWindow, UnloadsTheOthersFromTheLastLoadedOnDown) {
  Counted first("first");
  Counted second("second");
  Counted third("third");
  Start();
  std::vector<std::string> order;
  for (Counted* form : {&first, &second, &third}) {
    form->whenUnloaded = [&order, form] { order.push_back(form->Name); };
    frontEnd.Load(*form);
  }
  Close();
  EXPECT_THAT(order, ElementsAre("third", "second", "first"));
}

TEST_F(TheMainWindow, UnloadsNothingTwiceWhenOneWindowTakesOthersWithIt) {
  Counted first("first");
  Counted second("second");
  Counted third("third");
  Start();
  for (Counted* form : {&first, &second, &third}) frontEnd.Load(*form);
  third.whenUnloaded = [&] {
    frontEnd.Unload(first);
    frontEnd.Unload(second);
  };
  Close();
  for (const Counted* form : {&first, &second, &third}) EXPECT_EQ(form->unloads, 1) << form->Name;
}

TEST_F(TheMainWindow, HasItsFirstActivationBeforeItWhenItIsNotShown) {
  Start("/r");
  EXPECT_TRUE(Window().FirstActivate);
}

TEST_F(TheMainWindow, CannotBeLargerThanSinglePrecisionAllows) {
  Store("Tarvo_Settings_MainWidth", "1E39");
  EXPECT_THROW(Start(), RuntimeError);
}

TEST_F(TheMainWindow, StartsWithItsBarsAgainThoughTheyWereHidden) {
  Start();
  Window().mnuViewToolbar_Click();
  Close();
  Start();
  EXPECT_TRUE(Window().mnuViewToolbar.Checked);
  EXPECT_TRUE(Window().tbToolBar.Visible);
}

}  // namespace
}  // namespace tarvo::test
