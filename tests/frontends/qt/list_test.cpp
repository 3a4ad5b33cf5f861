#include <QHeaderView>
#include <QListView>
#include <QTest>
#include <QTreeView>
#include <cmath>

#include "frontends/qt/twips.h"
#include "screen_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

class ListTest : public ScreenRun {
 protected:
  void StartWith(const std::vector<std::string>& drivers) {
    for (const std::string& driver : drivers) Driver(driver);
    Start();
  }
  void Choose(ViewMode mode) {
    Entry(("mnuListViewMode" + std::to_string(mode)).c_str()).trigger();
  }
  QPoint PointOf(int row) { return List().visualRect(List().model()->index(row, 0)).center(); }
  void Click(int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(List().viewport(), button, {}, PointOf(row));
  }
  int SelectedRow() {
    const QModelIndexList rows = List().selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
  }
};

TEST_F(ListTest, DriversAreShownInOrderAfterTheAddEntryInEachView) {
  StartWith({"beta", "Alpha", "gamma", "(a"});
  for (const ViewMode mode : {kLargeIcons, kSmallIcons, kList, kDetails}) {
    Choose(mode);
    EXPECT_THAT(ShownNames(), ElementsAre("(Add Driver)", "(a", "Alpha", "beta", "gamma"));
  }
}

TEST_F(ListTest, ANameIsShownLiterally) {
  StartWith({"<b>x & y"});
  EXPECT_THAT(ShownNames(), ElementsAre("(Add Driver)", "<b>x & y"));
}

TEST_F(ListTest, TheDetailsViewHasSevenColumns) {
  StartWith({"Meter"});
  DriverFile("Meter/a.csv");
  DriverFile("Meter/b.txt");
  Entry("mnuViewRefresh").trigger();
  Choose(kDetails);
  EXPECT_THAT(ShownRow(1), ElementsAre("Meter", "1", "", "1", "-", "-", "-"));
}

TEST_F(ListTest, TheOtherViewsTellTheColumnsInTheDescription) {
  StartWith({"Meter"});
  DriverFile("Meter/a.csv");
  Entry("mnuViewRefresh").trigger();
  EXPECT_THAT(ShownRow(1), ElementsAre("Meter"));
  EXPECT_EQ(List().model()->index(1, 0).data(Qt::AccessibleDescriptionRole),
            "CSV Downloads: 1, Download Version: -, Upload Version: -, Properties Version: -");
}

TEST_F(ListTest, HeadingsAreNeverWiderThanTheirColumns) {
  StartWith({});
  Choose(kDetails);
  auto& header = *dynamic_cast<QTreeView&>(List()).header();
  const QFontMetricsF metrics(header.font());
  for (int column = 1; column < header.count(); ++column) {
    const QString text = header.model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(header.sectionSize(column), std::ceil(metrics.horizontalAdvance(text)));
  }
  EXPECT_EQ(header.sectionSize(0), 147);
}

TEST_F(ListTest, AColumnKeepsTheWidthThatTheUserGivesIt) {
  StartWith({});
  Choose(kDetails);
  dynamic_cast<QTreeView&>(List()).header()->resizeSection(0, 200);
  screen.RunGuarded([] {});
  EXPECT_EQ(State().lvListView.ColumnHeaders[0].Width, 3000);
  EXPECT_EQ(dynamic_cast<QTreeView&>(List()).header()->sectionSize(0), 200);
}

TEST_F(ListTest, AClickOnAHeadingSortsNothing) {
  StartWith({"a", "b"});
  Choose(kDetails);
  auto& header = *dynamic_cast<QTreeView&>(List()).header();
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(20, 5));
  EXPECT_THAT(ShownNames(), ElementsAre("(Add Driver)", "a", "b"));
}

TEST_F(ListTest, EachViewHasItsIconSize) {
  StartWith({"a"});
  EXPECT_EQ(List().iconSize(), QSize(48, 48));
  Choose(kSmallIcons);
  EXPECT_EQ(List().iconSize(), QSize(16, 16));
  EXPECT_EQ(dynamic_cast<QListView&>(List()).flow(), QListView::LeftToRight);
  Choose(kList);
  EXPECT_EQ(dynamic_cast<QListView&>(List()).flow(), QListView::TopToBottom);
  Choose(kDetails);
  EXPECT_EQ(List().iconSize(), QSize(16, 16));
}

TEST_F(ListTest, IconsAreTakenFromTheImageListsByTheirIndex) {
  StartWith({"a"});
  const QModelIndex add = List().model()->index(0, 0);
  const QIcon icon = add.data(Qt::DecorationRole).value<QIcon>();
  EXPECT_EQ(
      icon.pixmap(QSize(48, 48), 1.0)
          .toImage()
          .convertToFormat(QImage::Format_ARGB32_Premultiplied),
      QImage(":/icons/add-driver-48.png").convertToFormat(QImage::Format_ARGB32_Premultiplied));
  State().lvListView.Icons = nullptr;
  EXPECT_FALSE(add.data(Qt::DecorationRole).isValid());
}

TEST_F(ListTest, AnIndexBeyondTheImageListDrawsNothing) {
  StartWith({"a"});
  State().lvListView.ItemAt(1).Icon = 99;
  const QIcon icon = List().model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>();
  const QImage drawn = icon.pixmap(QSize(48, 48), 1.0).toImage();
  EXPECT_EQ(drawn.pixelColor(24, 24).alpha(), 0);
}

TEST_F(ListTest, AClickSelectsTheItemAndRunsItemClick) {
  StartWith({"a", "b"});
  std::vector<std::string> clicked;
  State().lvListView.ItemClick = [&](ListItem& item) { clicked.push_back(item.Text); };
  for (const ViewMode mode : {kLargeIcons, kDetails}) {
    Choose(mode);
    Click(2);
    ASSERT_TRUE(State().lvListView.SelectedItem());
    EXPECT_EQ(State().lvListView.SelectedItem()->Text, "b");
    Click(1);
  }
  EXPECT_THAT(clicked, ElementsAre("b", "a", "b", "a"));
}

TEST_F(ListTest, AClickBesideTheItemsKeepsTheSelection) {
  StartWith({"a"});
  Click(1);
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                    List().viewport()->rect().bottomRight() - QPoint(3, 3));
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(State().lvListView.SelectedItem()->Text, "a");
}

TEST_F(ListTest, SelectingByProgramRunsNoHandler) {
  StartWith({"a", "b"});
  int clicks = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++clicks; };
  screen.RunGuarded([&] { State().lvListView.Select(&State().lvListView.ItemAt(2)); });
  EXPECT_EQ(SelectedRow(), 2);
  List().clearFocus();
  List().setFocus();
  EXPECT_EQ(clicks, 0);
}

TEST_F(ListTest, TheFocusSelectsNothing) {
  StartWith({"a"});
  List().clearFocus();
  List().setFocus();
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_FALSE(State().lvListView.SelectedItem());
}

TEST_F(ListTest, ArrowsHomeEndAndTypingChooseItems) {
  StartWith({"alpha", "beta", "gamma"});
  Choose(kDetails);
  std::vector<std::string> chosen;
  State().lvListView.ItemClick = [&](ListItem& item) { chosen.push_back(item.Text); };
  QTest::keyClick(&List(), Qt::Key_End);
  QTest::keyClick(&List(), Qt::Key_Home);
  QTest::keyClick(&List(), Qt::Key_Down);
  QTest::keyClick(&List(), 'g');
  EXPECT_THAT(chosen, ElementsAre("gamma", "(Add Driver)", "alpha", "gamma"));
}

TEST_F(ListTest, AKeyGoesToTheWindowThenToTheListsHandler) {
  StartWith({"a"});
  std::vector<int> typed;
  State().lvListView.KeyPress = [&](int& key) {
    typed.push_back(key);
    if (key == 13) key = 0;
  };
  QTest::keyClick(&List(), Qt::Key_Return);
  QTest::keyClick(&List(), 'a');
  EXPECT_THAT(typed, ElementsAre(13, 'a'));
}

TEST_F(ListTest, ADoubleClickRunsItsHandlerOnce) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  Click(1);
  EXPECT_EQ(doubleClicks, 0);
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PointOf(1));
  EXPECT_EQ(doubleClicks, 1);
}

TEST_F(ListTest, ADoubleClickBesideTheItemsIsNone) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {},
                     List().viewport()->rect().bottomRight() - QPoint(3, 3));
  EXPECT_EQ(doubleClicks, 0);
}

TEST_F(ListTest, TheReleasedButtonIsTold) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  Click(1);
  Click(1, Qt::RightButton);
  EXPECT_THAT(buttons, ElementsAre(1, 2));
}

TEST_F(ListTest, TheMenuKeyActsLikeTheRightButton) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
  QCoreApplication::sendEvent(List().viewport(), &event);
  EXPECT_THAT(buttons, ElementsAre(2));
}

TEST_F(ListTest, GesturesWithoutHandlersDoNothing) {
  StartWith({"a"});
  State().lvListView.ItemClick = nullptr;
  State().lvListView.DblClick = nullptr;
  State().lvListView.KeyPress = nullptr;
  State().lvListView.MouseUp = nullptr;
  Click(1, Qt::RightButton);
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PointOf(1));
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(ListTest, TheSelectionSurvivesNewTexts) {
  StartWith({"a", "b"});
  Click(2);
  screen.RunGuarded([&] {
    State().lvListView.ItemAt(2).SubItems[0] = "7";
    State().lvListView.Touch();
  });
  EXPECT_EQ(SelectedRow(), 2);
}

TEST_F(ListTest, ARebuildClearsTheSelection) {
  StartWith({"a", "b"});
  Click(2);
  Entry("mnuViewRefresh").trigger();
  EXPECT_EQ(SelectedRow(), -1);
}

TEST_F(ListTest, TheSelectionIsTheSameInEveryView) {
  StartWith({"a", "b"});
  Click(2);
  Choose(kDetails);
  EXPECT_EQ(SelectedRow(), 2);
  Click(1);
  Choose(kLargeIcons);
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(ListTest, ItemsThatAreGoneBeforeTheListIsDrawnAreNotAskedFor) {
  StartWith({"a", "b"});
  State().lvListView.Clear();
  EXPECT_FALSE(List().model()->index(2, 0).data().isValid());
  List().viewport()->repaint();
  screen.RunGuarded([] {});
  EXPECT_EQ(List().model()->rowCount(), 0);
}

TEST_F(ListTest, ABrokenIconFileIsListedWithoutAPicture) {
  DriverFile("a/driver.ICO", "no icon at all");
  StartWith({"a"});
  EXPECT_THAT(ShownNames(), ElementsAre("(Add Driver)", "a"));
  List().grab();
  EXPECT_EQ(screen.Failure(), "");
}

}  // namespace
}  // namespace tarvo::test
