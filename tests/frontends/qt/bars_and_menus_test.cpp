#include <QAccessible>
#include <QLabel>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

#include "screen_run.h"
#include "ui/commands.h"

namespace tarvo::test {
namespace {

using BarsAndMenusTest = ScreenRun;

std::vector<MenuItem*> AllEntries(MainWindow& window) {
  std::vector<MenuItem*> entries;
  for (MenuItem* menu : window.MenuBar) {
    for (MenuItem* entry : menu->Items) {
      if (!entry->IsSeparator) entries.push_back(entry);
    }
  }
  return entries;
}

TEST_F(BarsAndMenusTest, EveryMenuEntryIsShownAsItsStateSays) {
  Start();
  for (MenuItem* entry : AllEntries(State())) {
    const QAction& action = Entry(entry->Name.c_str());
    EXPECT_EQ(action.text().toStdString(), entry->Caption);
    EXPECT_EQ(action.isEnabled(), entry->Enabled && entry->Visible) << entry->Name;
    EXPECT_EQ(action.isVisible(), entry->Visible) << entry->Name;
    EXPECT_EQ(action.isChecked(), entry->Checked) << entry->Name;
  }
}

TEST_F(BarsAndMenusTest, EveryEnabledMenuEntryRunsItsHandler) {
  Start();
  for (MenuItem* entry : AllEntries(State())) {
    int runs = 0;
    entry->Click = [&runs] { ++runs; };
    Entry(entry->Name.c_str()).trigger();
    EXPECT_EQ(runs, entry->Enabled && entry->Visible ? 1 : 0) << entry->Name;
  }
}

TEST_F(BarsAndMenusTest, EveryEnabledToolbarButtonRunsTheHandlerWithItsKey) {
  Start();
  std::vector<std::string> keys;
  State().tbToolBar.ButtonClick = [&](const ToolbarButton& button) { keys.push_back(button.Key); };
  for (ToolbarButton& button : State().tbToolBar.Buttons) button.Enabled = true;
  State().tbToolBar.ButtonByKey("Upload").Enabled = false;
  screen.RunGuarded([] {});
  std::vector<std::string> expected;
  for (const ToolbarButton& button : State().tbToolBar.Buttons) {
    if (button.IsSeparator) continue;
    if (button.Enabled) expected.push_back(button.Key);
    Tool(button.Key.c_str()).click();
  }
  EXPECT_EQ(keys, expected);
}

TEST_F(BarsAndMenusTest, AToolbarButtonIsReadByItsToolTip) {
  Start();
  State().tbToolBar.ButtonByKey("Download").ToolTipText = "Herunterladen & mehr";
  screen.RunGuarded([] {});
  EXPECT_EQ(Tool("Download").accessibleName(), "Herunterladen & mehr");
  EXPECT_EQ(Tool("Download").toolTip(), "Herunterladen & mehr");
}

TEST_F(BarsAndMenusTest, ChoosingAViewPressesItsButtonAndChecksItsEntry) {
  Start();
  Tool("ViewDetails").click();
  EXPECT_EQ(State().lvListView.View(), kDetails);
  EXPECT_TRUE(Entry("mnuListViewMode3").isChecked());
  EXPECT_FALSE(Entry("mnuListViewMode0").isChecked());
  Entry("mnuListViewMode1").trigger();
  EXPECT_TRUE(Tool("ViewSmall").isChecked());
  EXPECT_FALSE(Tool("ViewDetails").isChecked());
}

TEST_F(BarsAndMenusTest, ThePressedViewButtonStaysPressedWhenItIsClickedAgain) {
  Start();
  Tool("ViewLarge").click();
  EXPECT_TRUE(Tool("ViewLarge").isChecked());
}

TEST_F(BarsAndMenusTest, ACaptionIsShownWithoutAnyMeaningButTheAccessKey) {
  Start();
  State().mnuFileOpen.Caption =
      "A very long caption <b>in another language</b>\twith a tab && &more";
  screen.RunGuarded([] {});
  EXPECT_EQ(Entry("mnuFileOpen").text(),
            "A very long caption <b>in another language</b> with a tab && &more");
}

TEST_F(BarsAndMenusTest, TheListTakesTheRoomOfAHiddenToolbar) {
  Start();
  QWidget& list = Find<QWidget>("lvListView");
  const QRect before = list.geometry();
  Entry("mnuViewToolbar").trigger();
  EXPECT_FALSE(Find<QToolBar>("tbToolBar").isVisible());
  EXPECT_EQ(list.geometry().top(), 0);
  EXPECT_EQ(list.geometry().height(), before.height() + before.top());
  Entry("mnuViewToolbar").trigger();
  EXPECT_EQ(list.geometry(), before);
}

TEST_F(BarsAndMenusTest, TheListTakesTheRoomOfAHiddenStatusBar) {
  Start();
  QWidget& list = Find<QWidget>("lvListView");
  QWidget& bar = Find<QWidget>("sbStatusBar");
  EXPECT_EQ(bar.geometry().top(), list.geometry().bottom() + 1);
  Entry("mnuViewStatusBar").trigger();
  EXPECT_FALSE(bar.isVisible());
  EXPECT_EQ(list.geometry().bottom() + 1, Window().centralWidget()->height());
}

TEST_F(BarsAndMenusTest, ThePanelsShowDateTimeAndPlainText) {
  Start();
  State().sbStatusBar.Panels[0].Text = "<b>x & y";
  screen.RunGuarded([] {});
  EXPECT_EQ(Find<QLabel>("sbStatusBar1").text(), "<b>x & y");
  EXPECT_EQ(Find<QLabel>("sbStatusBar1").textFormat(), Qt::PlainText);
  EXPECT_EQ(Find<QLabel>("sbStatusBar2").text(),
            QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat));
  EXPECT_TRUE(QLocale::system()
                  .toTime(Find<QLabel>("sbStatusBar3").text(),
                          QLocale::system().timeFormat(QLocale::ShortFormat))
                  .isValid());
}

TEST_F(BarsAndMenusTest, ATimerRunsItsHandlerUntilItIsSwitchedOff) {
  Start();
  int ticks = 0;
  State().tmrStuff.Tick = [&] {
    if (++ticks == 2) State().tmrStuff.Interval = 0;
  };
  State().tmrStuff.Interval = 1;
  screen.RunGuarded([] {});
  EXPECT_TRUE(WaitFor([&] { return ticks == 2; }));
}

TEST_F(BarsAndMenusTest, EveryWidgetOfTheWindowIsReadByAName) {
  Start();
  for (const char* name : {"tbToolBar", "sbStatusBar", "Delete", "ViewList"}) {
    QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(&Find<QWidget>(name));
    ASSERT_TRUE(read) << name;
    EXPECT_NE(read->text(QAccessible::Name), "") << name;
  }
  EXPECT_NE(List().accessibleName(), "");
}

}  // namespace
}  // namespace tarvo::test
