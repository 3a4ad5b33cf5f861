#include "list_run.h"

#include "frontends/win32/fonts.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ListTest = ListRun;

constexpr DWORD kSystemViews[] = {LV_VIEW_ICON, LV_VIEW_SMALLICON, LV_VIEW_LIST, LV_VIEW_DETAILS};

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
  const auto hasScrollBars = [this] {
    return (GetWindowLongPtrW(List(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL)) != 0;
  };
  for (const ViewMode mode : {kSmallIcons, kList, kLargeIcons, kSmallIcons, kLargeIcons}) {
    ChooseView(mode);
    EXPECT_FALSE(hasScrollBars()) << mode;
    ChooseView(kDetails);
    EXPECT_TRUE(hasScrollBars()) << "its columns are wider than the window";
    ChooseView(mode);
    EXPECT_FALSE(hasScrollBars()) << mode << " after the details";
  }
}

TEST_F(ListTest, NothingIsSeenOfTheScrollBarOfTheDetailsInOtherViews) {
  StartWith({"a", "b", "c"});
  for (const ViewMode mode : {kSmallIcons, kList, kLargeIcons}) {
    ChooseView(kDetails);
    UpdateWindow(List());
    ChooseView(mode);
    UpdateWindow(List());
    RECT room{};
    GetClientRect(List(), &room);
    const HDC device = GetDC(List());
    const COLORREF atBottom = GetPixel(device, 3, room.bottom - 3);
    ReleaseDC(List(), device);
    EXPECT_EQ(atBottom, GetSysColor(COLOR_WINDOW)) << mode;
  }
}

TEST_F(ListTest, PicturesDoNotPileUpWhenTheListIsBuiltAgain) {
  DriverFile("a/driver.ICO", IconFile());
  StartWith({});
  const auto count = [this] {
    ImageOf(0);
    ImageOf(1);
    return ImageList_GetImageCount(
        win32::FromNumber<HIMAGELIST>(SendMessageW(List(), LVM_GETIMAGELIST, LVSIL_NORMAL, 0)));
  };
  EXPECT_EQ(count(), 2);
  for (int i = 0; i < 5; ++i) {
    Choose(State().mnuViewRefresh);
    EXPECT_EQ(count(), 2);
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
