#include "frontends/win32/fonts.h"
#include "frontends/win32/list_images.h"
#include "screen_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

constexpr DWORD kSystemViews[] = {LV_VIEW_ICON, LV_VIEW_SMALLICON, LV_VIEW_LIST, LV_VIEW_DETAILS};

class ListTest : public ScreenRun {
 protected:
  void StartWith(const std::vector<std::string>& drivers) {
    for (const std::string& driver : drivers) Driver(driver);
    Start();
    SetFocus(List());
  }
  void ChooseView(ViewMode mode) { Choose(State().mnuListViewMode[mode]); }

  std::string Cell(int row, int column) {
    wchar_t text[260] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = std::size(text);
    SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return win32::Narrow(item.pszText);
  }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    const auto count = static_cast<int>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) names.push_back(Cell(row, 0));
    return names;
  }
  LPARAM PointOf(int row) {
    RECT rect = {};
    rect.left = LVIR_LABEL;
    SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&rect));
    return MAKELPARAM(rect.left + 8, (rect.top + rect.bottom) / 2);
  }
  LPARAM PointBeside() {
    RECT inner = {};
    GetClientRect(List(), &inner);
    return MAKELPARAM(inner.right - 3, inner.bottom - 3);
  }
  void ClickAt(LPARAM point, bool right = false) {
    SendMessageW(List(), right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, right ? MK_RBUTTON : MK_LBUTTON,
                 point);
    SendMessageW(List(), right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, point);
  }
  void Click(int row, bool right = false) { ClickAt(PointOf(row), right); }
  void DoubleClickAt(LPARAM point) {
    ClickAt(point);
    SendMessageW(List(), WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    SendMessageW(List(), WM_LBUTTONUP, 0, point);
  }
  int SelectedRow() {
    return static_cast<int>(
        SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  }
  // Whether anything but the background is on the screen where the row's picture belongs. The
  // place is wiped first, so that what has been there before does not count.
  bool ShowsPicture(int row) {
    RECT place = {};
    place.left = LVIR_ICON;
    SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&place));
    const HDC context = GetDC(List());
    FillRect(context, &place, GetSysColorBrush(COLOR_WINDOW));
    RedrawWindow(List(), &place, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    bool isThere = false;
    for (int y = place.top; y < place.bottom && !isThere; y += 2) {
      for (int x = place.left; x < place.right && !isThere; x += 2)
        isThere = GetPixel(context, x, y) != GetSysColor(COLOR_WINDOW);
    }
    ReleaseDC(List(), context);
    return isThere;
  }
  int ImageOf(int row) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
  }
};

TEST_F(ListTest, DriversAreShownInOrderAfterTheAddEntryInEachView) {
  StartWith({"beta", "Alpha", "gamma", "(a"});
  for (const ViewMode mode : {kLargeIcons, kSmallIcons, kList, kDetails}) {
    ChooseView(mode);
    EXPECT_EQ(SendMessageW(List(), LVM_GETVIEW, 0, 0), static_cast<LRESULT>(kSystemViews[mode]));
    EXPECT_THAT(Names(), ElementsAre("(Add Driver)", "(a", "Alpha", "beta", "gamma"));
  }
}

TEST_F(ListTest, ANameIsShownLiterally) {
  Driver("");
  platform.MakeFolder(folder / InDrivers("x & y \xC3\xBC"));
  StartWith({});
  EXPECT_THAT(Names(), ElementsAre("(Add Driver)", "x & y \xC3\xBC"));
}

TEST_F(ListTest, TheDetailsViewHasSevenColumns) {
  StartWith({"Meter"});
  DriverFile("Meter/a.csv");
  DriverFile("Meter/b.txt");
  Choose(State().mnuViewRefresh);
  ChooseView(kDetails);
  std::vector<std::string> row;
  for (int column = 0; column < 7; ++column) row.push_back(Cell(1, column));
  EXPECT_THAT(row, ElementsAre("Meter", "1", "", "1", "-", "-", "-"));
}

TEST_F(ListTest, HeadingsAreNeverWiderThanTheirColumns) {
  StartWith({});
  ChooseView(kDetails);
  const auto dots = GetDpiForWindow(Window());
  const win32::FontHandle font = win32::MakeFont(Font(), dots);
  for (int column = 1; column < 7; ++column) {
    const std::string& text =
        State().lvListView.ColumnHeaders[static_cast<std::size_t>(column)].Text;
    EXPECT_GE(SendMessageW(List(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0),
              win32::TextWidth(font.Get(), win32::Wide(text)))
        << text;
  }
  EXPECT_EQ(SendMessageW(List(), LVM_GETCOLUMNWIDTH, 0, 0), Scale(dots).ToPixelsUp(2200));
}

TEST_F(ListTest, AColumnKeepsTheWidthThatTheUserGivesIt) {
  StartWith({});
  ChooseView(kDetails);
  SendMessageW(List(), LVM_SETCOLUMNWIDTH, 0, 200);
  screen.RunGuarded([] {});
  EXPECT_EQ(State().lvListView.ColumnHeaders[0].Width,
            Scale(GetDpiForWindow(Window())).ToTwips(200));
  ChooseView(kList);
  ChooseView(kDetails);
  EXPECT_EQ(SendMessageW(List(), LVM_GETCOLUMNWIDTH, 0, 0), 200);
}

TEST_F(ListTest, ThereAreNoScrollBarsWhereEverythingFits) {
  StartWith({"a", "b", "c"});
  for (const ViewMode mode : {kSmallIcons, kList, kLargeIcons, kSmallIcons, kLargeIcons}) {
    ChooseView(mode);
    EXPECT_EQ(GetWindowLongPtrW(List(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL), 0) << mode;
  }
}

TEST_F(ListTest, TheFirstPictureIsSeenInEveryView) {
  StartWith({"a"});
  for (const ViewMode mode : {kDetails, kList, kSmallIcons, kLargeIcons}) {
    ChooseView(mode);
    EXPECT_TRUE(WaitFor([this] { return ShowsPicture(0); })) << mode;
  }
  Choose(State().mnuViewRefresh);
  EXPECT_TRUE(WaitFor([this] { return ShowsPicture(0); }));
}

TEST_F(ListTest, PicturesAreTakenFromTheImageListsByTheirIndex) {
  StartWith({"a"});
  EXPECT_GE(ImageOf(0), 0);
  State().lvListView.Icons = nullptr;
  EXPECT_EQ(ImageOf(0), -1);
}

TEST_F(ListTest, ItemsWithTheSamePictureShareIt) {
  StartWith({"a", "b"});
  State().lvListView.ItemAt(2).Icon = 1;
  EXPECT_EQ(ImageOf(2), ImageOf(0));
}

TEST_F(ListTest, AClickSelectsTheItemAndRunsItemClick) {
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

TEST_F(ListTest, AClickOnTheSelectedItemRunsItemClickToo) {
  StartWith({"a"});
  int clicks = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++clicks; };
  Click(1);
  Click(1);
  EXPECT_EQ(clicks, 2);
}

TEST_F(ListTest, AClickBesideTheItemsKeepsTheSelection) {
  StartWith({"a"});
  Click(1);
  ClickAt(PointBeside());
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(State().lvListView.SelectedItem()->Text, "a");
}

TEST_F(ListTest, SelectingByProgramRunsNoHandler) {
  StartWith({"a", "b"});
  int clicks = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++clicks; };
  screen.RunGuarded([&] { State().lvListView.Select(&State().lvListView.ItemAt(2)); });
  EXPECT_EQ(SelectedRow(), 2);
  SetFocus(Bar());
  SetFocus(List());
  EXPECT_EQ(clicks, 0);
}

TEST_F(ListTest, TheFocusSelectsNothing) {
  StartWith({"a"});
  SetFocus(Bar());
  SetFocus(List());
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_FALSE(State().lvListView.SelectedItem());
}

TEST_F(ListTest, ArrowsHomeEndAndTypingChooseItems) {
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

TEST_F(ListTest, TheFirstArrowKeySelectsAnItem) {
  StartWith({"a"});
  Key(VK_DOWN);
  ASSERT_TRUE(State().lvListView.SelectedItem());
  EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(ListTest, AKeyInAnEmptyListChoosesNothing) {
  StartWith({});
  State().lvListView.Clear();
  screen.RunGuarded([] {});
  Key(VK_DOWN);
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(ListTest, ATypedCharacterGoesToTheListsHandlerWhichMaySwallowIt) {
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

TEST_F(ListTest, ADoubleClickRunsItsHandlerOnce) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  Click(1);
  EXPECT_EQ(doubleClicks, 0);
  DoubleClickAt(PointOf(1));
  EXPECT_EQ(doubleClicks, 1);
}

TEST_F(ListTest, ADoubleClickBesideTheItemsIsNone) {
  StartWith({"a"});
  int doubleClicks = 0;
  State().lvListView.DblClick = [&] { ++doubleClicks; };
  DoubleClickAt(PointBeside());
  EXPECT_EQ(doubleClicks, 0);
}

TEST_F(ListTest, TheReleasedButtonIsTold) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  Click(1);
  Click(1, true);
  EXPECT_THAT(buttons, ElementsAre(1, 2));
}

TEST_F(ListTest, TheMenuKeyActsLikeTheRightButton) {
  StartWith({"a"});
  std::vector<int> buttons;
  State().lvListView.MouseUp = [&](int button) { buttons.push_back(button); };
  SendMessageW(List(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), -1);
  EXPECT_THAT(buttons, ElementsAre(2));
}

TEST_F(ListTest, GesturesWithoutHandlersDoNothing) {
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

TEST_F(ListTest, TheSelectionSurvivesNewTexts) {
  StartWith({"a", "b"});
  ChooseView(kDetails);
  Click(2);
  screen.RunGuarded([&] {
    State().lvListView.ItemAt(2).SubItems[0] = "7";
    State().lvListView.Touch();
  });
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ(Cell(2, 1), "7");
}

TEST_F(ListTest, ARebuildClearsTheSelection) {
  StartWith({"a", "b"});
  Click(2);
  Choose(State().mnuViewRefresh);
  EXPECT_EQ(SelectedRow(), -1);
}

TEST_F(ListTest, TheSelectionIsTheSameInEveryView) {
  StartWith({"a", "b"});
  Click(2);
  ChooseView(kDetails);
  EXPECT_EQ(SelectedRow(), 2);
  Click(1);
  ChooseView(kLargeIcons);
  EXPECT_EQ(SelectedRow(), 1);
}

TEST_F(ListTest, ItemsThatAreGoneBeforeTheListIsDrawnAreNotAskedFor) {
  StartWith({"a", "b"});
  State().lvListView.Clear();
  EXPECT_EQ(ImageOf(2), -1);
  RedrawWindow(List(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  screen.RunGuarded([] {});
  EXPECT_EQ(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(ListTest, ABrokenIconFileIsListedWithoutAPicture) {
  DriverFile("a/driver.ICO", "no icon at all");
  StartWith({"a"});
  EXPECT_THAT(Names(), ElementsAre("(Add Driver)", "a"));
  EXPECT_EQ(screen.Failure(), "");
}

}  // namespace
}  // namespace tarvo::test
