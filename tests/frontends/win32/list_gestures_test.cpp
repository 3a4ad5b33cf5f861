#include "list_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ListGesturesTest = ListRun;

TEST_F(ListGesturesTest, AClickSelectsTheItemAndRunsItemClick) {
  StartWith({"a", "b"});
  std::vector<std::string> clicked;
  State().lvListView.ItemClick = [&](ListItem& item) { clicked.push_back(item.Text); };
  for (const ViewMode mode : {kLargeIcons, kDetails}) {
    ChooseView(mode);
    Click(2);
    ASSERT_TRUE(State().lvListView.SelectedItem());
    EXPECT_EQ(State().lvListView.SelectedItem()->Text, "b");
    EXPECT_EQ(SelectedRow(), 2);
    Click(1);
  }
  EXPECT_THAT(clicked, ElementsAre("b", "a", "b", "a"));
}

TEST_F(ListGesturesTest, AClickOnTheSelectedItemRunsItemClickToo) {
  StartWith({"a"});
  int clicks = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++clicks; };
  Click(1);
  Click(1);
  EXPECT_EQ(clicks, 2);
}

TEST_F(ListGesturesTest, AClickBesideTheItemsKeepsTheSelection) {
  StartWith({"a"});
  Click(1);
  ClickAt(PointBeside());
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(State().lvListView.SelectedItem()->Text, "a");
}

TEST_F(ListGesturesTest, SelectingByProgramRunsNoHandler) {
  StartWith({"a", "b"});
  int clicks = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++clicks; };
  screen.RunGuarded([&] { State().lvListView.Select(&State().lvListView.ItemAt(2)); });
  EXPECT_EQ(SelectedRow(), 2);
  SetFocus(Bar());
  SetFocus(List());
  EXPECT_EQ(clicks, 0);
}

TEST_F(ListGesturesTest, TheFocusSelectsNothing) {
  StartWith({"a"});
  SetFocus(Bar());
  SetFocus(List());
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_FALSE(State().lvListView.SelectedItem());
}

TEST_F(ListGesturesTest, ArrowsHomeEndAndTypingChooseItems) {
  StartWith({"alpha", "beta", "gamma"});
  ChooseView(kDetails);
  std::vector<std::string> chosen;
  State().lvListView.ItemClick = [&](ListItem& item) { chosen.push_back(item.Text); };
  Key(VK_END);
  Key(VK_HOME);
  Key(VK_DOWN);
  Type(L'g');
  EXPECT_THAT(chosen, ElementsAre("gamma", "(Add Driver)", "alpha", "gamma"));
  EXPECT_EQ(State().lvListView.SelectedItem()->Text, "gamma");
}

TEST_F(ListGesturesTest, TheFirstArrowKeySelectsAnItem) {
  StartWith({"a"});
  Key(VK_DOWN);
  ASSERT_TRUE(State().lvListView.SelectedItem());
  EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(ListGesturesTest, AKeyInAnEmptyListChoosesNothing) {
  StartWith({});
  State().lvListView.Clear();
  screen.RunGuarded([] {});
  Key(VK_DOWN);
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(ListGesturesTest, ATypedCharacterGoesToTheListsHandlerWhichMaySwallowIt) {
  StartWith({"a"});
  std::vector<int> typed;
  State().lvListView.KeyPress = [&](int& key) {
    typed.push_back(key);
    key = 0;
  };
  Type(13);
  Type(L'a');
  EXPECT_THAT(typed, ElementsAre(13, 'a'));
  EXPECT_EQ(SelectedRow(), -1);
}

TEST_F(ListGesturesTest, ADoubleClickRunsItsHandlerOnce) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  Click(1);
  EXPECT_EQ(doubleClicks, 0);
  DoubleClickAt(PointOf(1));
  EXPECT_EQ(doubleClicks, 1);
}

TEST_F(ListGesturesTest, ADoubleClickBesideTheItemsIsNone) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  DoubleClickAt(PointBeside());
  EXPECT_EQ(doubleClicks, 0);
}

TEST_F(ListGesturesTest, TheReleasedButtonIsTold) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  Click(1);
  Click(1, true);
  EXPECT_THAT(buttons, ElementsAre(1, 2));
}

TEST_F(ListGesturesTest, TheMenuKeyActsLikeTheRightButton) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  SendMessageW(List(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), -1);
  EXPECT_THAT(buttons, ElementsAre(2));
}

TEST_F(ListGesturesTest, GesturesWithoutHandlersDoNothing) {
  StartWith({"a"});
  State().lvListView.ItemClick = nullptr;
  State().lvListView.DblClick = nullptr;
  State().lvListView.KeyPress = nullptr;
  State().lvListView.MouseUp = nullptr;
  Click(1, true);
  DoubleClickAt(PointOf(1));
  Type(13);
  EXPECT_EQ(screen.Failure(), "");
}

}  // namespace
}  // namespace tarvo::test
