#include "screen_run.h"

namespace tarvo::test {
namespace {

class BarsAndMenusTest : public ScreenRun {
 protected:
  std::string Panel(int number) {
    wchar_t text[128] = {};
    SendMessageW(Status(), SB_GETTEXTW, static_cast<WPARAM>(number),
                 reinterpret_cast<LPARAM>(text));
    return win32::Narrow(text);
  }
  bool IsVisible(HWND child) { return (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0; }
};

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
    std::wstring caption;
    const MENUITEMINFOW shown = Shown(*entry, &caption);
    EXPECT_EQ(shown.cbSize != 0, entry->Visible) << entry->Name;
    if (!entry->Visible) continue;
    EXPECT_EQ(win32::Narrow(caption), entry->Caption);
    EXPECT_EQ((shown.fState & MFS_DISABLED) == 0, entry->Enabled) << entry->Name;
    EXPECT_EQ((shown.fState & MFS_CHECKED) != 0, entry->Checked) << entry->Name;
  }
}

TEST_F(BarsAndMenusTest, EveryEnabledMenuEntryRunsItsHandler) {
  Start();
  for (MenuItem* entry : AllEntries(State())) {
    int runs = 0;
    entry->Click = [&runs] { ++runs; };
    Choose(*entry);
    EXPECT_EQ(runs, entry->Enabled && entry->Visible ? 1 : 0) << entry->Name;
  }
}

TEST_F(BarsAndMenusTest, AnEntryThatComesToBeSeenStandsAtItsPlace) {
  Start();
  ASSERT_FALSE(IsShown(State().mnuFileMobileDevice));
  folder.MakeFolder(InData("Win32Device"));
  Choose(State().mnuViewRefresh);
  std::wstring caption;
  Shown(State().mnuFileMobileDevice, &caption);
  EXPECT_EQ(caption, L"Win32 Mobile Device...");
  Shown(State().mnuFileDelete, &caption);
  EXPECT_EQ(caption, L"&Delete");
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
    Press(button.Key.c_str());
  }
  EXPECT_EQ(keys, expected);
}

TEST_F(BarsAndMenusTest, ALongToolTipMakesNoButtonWider) {
  Start();
  const auto width = [this] {
    RECT place = {};
    SendMessageW(Bar(), TB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&place));
    return place.right - place.left;
  };
  const LONG before = width();
  State().tbToolBar.ButtonByKey("Delete").ToolTipText = std::string(200, 'x');
  screen.RunGuarded([] {});
  EXPECT_EQ(width(), before);
}

TEST_F(BarsAndMenusTest, ChoosingAViewPressesItsButtonAndChecksItsEntry) {
  Start();
  Press("ViewDetails");
  EXPECT_EQ(State().lvListView.View(), kDetails);
  EXPECT_TRUE(Shown(State().mnuListViewMode[3]).fState & MFS_CHECKED);
  EXPECT_FALSE(Shown(State().mnuListViewMode[0]).fState & MFS_CHECKED);
  Choose(State().mnuListViewMode[1]);
  EXPECT_TRUE(IsPressed("ViewSmall"));
  EXPECT_FALSE(IsPressed("ViewDetails"));
}

TEST_F(BarsAndMenusTest, ThePressedViewButtonStaysPressedWhenItIsClickedAgain) {
  Start();
  Press("ViewLarge");
  EXPECT_TRUE(IsPressed("ViewLarge"));
}

TEST_F(BarsAndMenusTest, TheToolbarIsUsedByKeys) {
  Start();
  std::vector<std::string> keys;
  State().tbToolBar.ButtonClick = [&](const ToolbarButton& button) { keys.push_back(button.Key); };
  SetFocus(List());
  Key(VK_TAB);
  ASSERT_EQ(GetFocus(), Bar());
  Key(VK_SPACE);
  Key(VK_RIGHT);
  Key(VK_RIGHT);
  Key(VK_RETURN);
  Key(VK_TAB);
  EXPECT_EQ(GetFocus(), List());
  EXPECT_EQ(keys, (std::vector<std::string>{"Delete", "ViewLarge"}));
}

TEST_F(BarsAndMenusTest, ACaptionIsShownWithoutAnyMeaningButTheAccessKey) {
  Start();
  State().mnuFileOpen.Caption = "A long caption <b>\twith a tab && &more";
  screen.RunGuarded([] {});
  std::wstring caption;
  Shown(State().mnuFileOpen, &caption);
  EXPECT_EQ(caption, L"A long caption <b> with a tab && &more");
}

TEST_F(BarsAndMenusTest, TheListTakesTheRoomOfAHiddenToolbar) {
  Start();
  const PixelBounds before = PlaceOf(List());
  EXPECT_GE(before.top, PlaceOf(Bar()).top + PlaceOf(Bar()).height);
  Choose(State().mnuViewToolbar);
  EXPECT_FALSE(IsVisible(Bar()));
  EXPECT_EQ(PlaceOf(List()).top, 0);
  EXPECT_EQ(PlaceOf(List()).height, before.height + before.top);
  Choose(State().mnuViewToolbar);
  EXPECT_EQ(PlaceOf(List()), before);
}

TEST_F(BarsAndMenusTest, TheListTakesTheRoomOfAHiddenStatusBar) {
  Start();
  EXPECT_EQ(PlaceOf(Status()).top, PlaceOf(List()).top + PlaceOf(List()).height);
  Choose(State().mnuViewStatusBar);
  EXPECT_FALSE(IsVisible(Status()));
  RECT inner = {};
  GetClientRect(Window(), &inner);
  EXPECT_EQ(PlaceOf(List()).top + PlaceOf(List()).height, inner.bottom);
}

TEST_F(BarsAndMenusTest, ThePanelsShowDateTimeAndPlainText) {
  Start();
  State().sbStatusBar.Panels[0].Text = "<b>x & y";
  screen.RunGuarded([] {});
  wchar_t date[80] = {};
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date, 80, nullptr);
  EXPECT_EQ(Panel(0), "<b>x & y");
  EXPECT_EQ(Panel(1), win32::Narrow(date));
  EXPECT_NE(Panel(2).find(':'), std::string::npos);
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

TEST_F(BarsAndMenusTest, ListAndToolbarAreReadByAName) {
  Start();
  EXPECT_EQ(TextOf(List()), "Tarvo");
  EXPECT_EQ(TextOf(Bar()), "Toolbar");
  TBBUTTON button{};
  SendMessageW(Bar(), TB_GETBUTTON, 0, reinterpret_cast<LPARAM>(&button));
  wchar_t text[64] = {};
  SendMessageW(Bar(), TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
               reinterpret_cast<LPARAM>(text));
  EXPECT_EQ(win32::Narrow(text), "Delete");
}

TEST_F(BarsAndMenusTest, AToolTipShowsItsTextLiterally) {
  Start();
  State().tbToolBar.ButtonByKey("Delete").ToolTipText = "R & D";
  screen.RunGuarded([] {});
  wchar_t text[64] = {};
  NMTBGETINFOTIPW asked{};
  asked.hdr = {Bar(), 1, TBN_GETINFOTIPW};
  TBBUTTON button{};
  SendMessageW(Bar(), TB_GETBUTTON, 0, reinterpret_cast<LPARAM>(&button));
  asked.iItem = button.idCommand;
  asked.pszText = text;
  asked.cchTextMax = std::size(text);
  SendMessageW(Window(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&asked));
  EXPECT_EQ(win32::Narrow(text), "R & D");
  const auto toolTip = reinterpret_cast<HWND>(SendMessageW(Bar(), TB_GETTOOLTIPS, 0, 0));
  EXPECT_TRUE(GetWindowLongPtrW(toolTip, GWL_STYLE) & TTS_NOPREFIX);
}

}  // namespace
}  // namespace tarvo::test
