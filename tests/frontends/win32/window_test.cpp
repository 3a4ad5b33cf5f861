#include "frontends/win32/fonts.h"
#include "screen_run.h"

namespace tarvo::test {
namespace {

class WindowTest : public ScreenRun {
 protected:
  unsigned Dots() { return GetDpiForWindow(Window()); }
  void Move(const PixelBounds& place) {
    SetWindowPos(Window(), nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
  void Close() { SendMessageW(Window(), WM_CLOSE, 0, 0); }
};

TEST_F(WindowTest, OpensAtItsStandardPlace) {
  Start();
  const Scale scale(Dots());
  const int position = scale.ToPixels(1000.0F);
  const int size = scale.ToPixels(6500.0F);
  EXPECT_EQ(BoundsOf(Window()), (PixelBounds{position, position, size, size}));
}

TEST_F(WindowTest, SavesThePlaceThatItWasGivenAsLongAsTheUserDoesNotChangeIt) {
  Start();
  Close();
  EXPECT_FALSE(screen.IsLoaded(State()));
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1000");
  EXPECT_EQ(Stored("Tarvo_Settings_MainTop"), "1000");
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "6500");
  EXPECT_EQ(Stored("Tarvo_Settings_MainHeight"), "6500");
}

TEST_F(WindowTest, AMoveByTheUserChangesThePositionOnly) {
  Start();
  PixelBounds place = BoundsOf(Window());
  place.left = 100;
  place.top = 120;
  Move(place);
  EXPECT_EQ(State().Place.Left, Scale(GetDpiForSystem()).ToTwips(100));
  EXPECT_EQ(State().Place.Top, Scale(GetDpiForSystem()).ToTwips(120));
  EXPECT_EQ(State().Place.Width, 6500);
  EXPECT_EQ(State().Place.Height, 6500);
}

TEST_F(WindowTest, AResizeByTheUserLaysTheListOutAnew) {
  Start();
  PixelBounds place = BoundsOf(Window());
  place.width += 70;
  const int before = PlaceOf(List()).width;
  Move(place);
  EXPECT_EQ(PlaceOf(List()).width, before + 70);
  EXPECT_EQ(State().Place.Left, 1000);
  EXPECT_EQ(State().Place.Width, Scale(Dots()).ToTwips(place.width));
}

TEST_F(WindowTest, SnapsBackToTheSmallestWidth) {
  Start();
  PixelBounds place = BoundsOf(Window());
  place.width = 150;
  Move(place);
  EXPECT_EQ(State().Place.Width, 3000);
  EXPECT_EQ(BoundsOf(Window()).width, Scale(Dots()).ToPixels(3000.0F));
}

TEST_F(WindowTest, CanBeAsLowAsTheUserLikes) {
  Start();
  PixelBounds place = BoundsOf(Window());
  place.height = 90;
  Move(place);
  EXPECT_EQ(BoundsOf(Window()).height, 90);
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(WindowTest, AbsurdStoredBoundsDoNotHarmAndAreKept) {
  Store("Tarvo_Settings_MainLeft", "-1e9");
  Store("Tarvo_Settings_MainWidth", "1e9");
  Store("Tarvo_Settings_MainHeight", "-5");
  Start();
  Close();
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "1E+09");
}

TEST_F(WindowTest, MaximisingAndRestoringChangesNothing) {
  Start();
  ShowWindow(Window(), SW_MAXIMIZE);
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kMaximised; }));
  EXPECT_TRUE(WaitFor([this] { return State().Place.Width > 6500; }));
  ShowWindow(Window(), SW_RESTORE);
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kNormal; }));
  EXPECT_TRUE(WaitFor([this] { return State().Place.Width == 6500; }));
  EXPECT_EQ(State().Place.Left, 1000);
}

TEST_F(WindowTest, ClosedWhileMinimisedItSavesTheViewOnly) {
  Start();
  ShowWindow(Window(), SW_MINIMIZE);
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kMinimised; }));
  Close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "absent");
  EXPECT_EQ(Stored("Tarvo_Settings_ViewMode"), "0");
}

TEST_F(WindowTest, TheEndOfTheUsersSessionSavesWhatAClosedWindowSaves) {
  Start();
  SendMessageW(Window(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "6500");
}

TEST_F(WindowTest, TheInnerSizeIsThatBetweenMenuAndFrame) {
  Start();
  RECT inner = {};
  GetClientRect(Window(), &inner);
  const Scale scale(Dots());
  EXPECT_EQ(screen.ScaleWidth(State()), scale.ToTwips(inner.right));
  EXPECT_EQ(screen.ScaleHeight(State()), scale.ToTwips(inner.bottom));
}

TEST_F(WindowTest, AnotherResolutionKeepsTheSizeInTwips) {
  Start();
  const HWND list = List();
  const RECT suggested{10, 20, 700, 800};
  SendMessageW(Window(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&suggested));
  EXPECT_EQ(BoundsOf(Window()), (PixelBounds{10, 20, 690, 780}));
  RECT inner = {};
  GetClientRect(Window(), &inner);
  EXPECT_EQ(PlaceOf(list).width, inner.right);
}

// Counts what reaches its handlers.
class CountingWindow : public MainWindow {
 public:
  CountingWindow() { Place = {1000, 1000, 6500, 6500}; }
  void Form_Activate() override { ++activations; }
  void Form_KeyDown(int& keyCode) override {
    keys.push_back(keyCode);
    if (keyCode == VK_F1) keyCode = 0;
  }
  void Form_Unload() override { ++unloads; }

  int activations = 0;
  std::vector<int> keys;
  int unloads = 0;
};

TEST_F(WindowTest, EachEventReachesItsHandlerOnce) {
  CountingWindow form;
  screen.Show(form);
  EXPECT_EQ(form.activations, 1);
  const HWND window = screen.WindowShowing(form);
  SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(form.activations, 1) << "the system's first activation is not a second one";
  PostMessageW(FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr), WM_KEYDOWN, VK_F5, 1);
  screen.Yield();
  EXPECT_EQ(form.keys, std::vector<int>{VK_F5});
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(form.unloads, 1);
}

TEST_F(WindowTest, AKeyThatTheWindowSwallowsDoesNotReachTheList) {
  CountingWindow form;
  screen.Show(form);
  const HWND list = FindWindowExW(screen.WindowShowing(form), nullptr, WC_LISTVIEWW, nullptr);
  bool sawF1 = false;
  bool sawF5 = false;
  HandlerGuard guard;
  const win32::MessageHook hook(list, guard,
                                [&](const win32::Message& message) -> std::optional<LRESULT> {
                                  if (message.id == WM_KEYDOWN)
                                    (message.wParam == VK_F1 ? sawF1 : sawF5) = true;
                                  return std::nullopt;
                                });
  PostMessageW(list, WM_KEYDOWN, VK_F1, 1);
  PostMessageW(list, WM_KEYDOWN, VK_F5, 1);
  screen.Yield();
  EXPECT_FALSE(sawF1);
  EXPECT_TRUE(sawF5);
  screen.Unload(form);
}

TEST_F(WindowTest, ALaterActivationByTheUserIsDelivered) {
  Start();
  SendMessageW(Window(), WM_ACTIVATE, WA_ACTIVE, 0);
  SendMessageW(Window(), WM_ACTIVATE, WA_INACTIVE, 0);
  State().FirstActivate = true;
  SendMessageW(Window(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_FALSE(State().FirstActivate);
}

TEST_F(WindowTest, ComingBackFromTheProgramsOwnMessageIsNoActivation) {
  Start();
  SendMessageW(Window(), WM_ACTIVATE, WA_ACTIVE, 0);
  State().FirstActivate = true;
  WhenDialogAppears([this](HWND box) {
    SendMessageW(Window(), WM_ACTIVATE, WA_INACTIVE, 0);
    SendMessageW(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  });
  Choose(State().mnuViewOptions);
  SendMessageW(Window(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_TRUE(State().FirstActivate);
}

TEST_F(WindowTest, ThePointerIsOneValue) {
  Start();
  screen.SetMousePointer(kHourglassPointer);
  screen.SetMousePointer(12);
  screen.SetMousePointer(kHourglassPointer);
  SendMessageW(Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Window()),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
  screen.SetMousePointer(kDefaultPointer);
  screen.Yield();
  SendMessageW(Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Window()),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(WindowTest, TextIsMeasuredInTheFontThatDrawsIt) {
  Start();
  const unsigned dots = GetDpiForSystem();
  const win32::FontHandle font = win32::MakeFont(Font(), dots);
  EXPECT_EQ(screen.TextWidth(""), 0);
  EXPECT_EQ(screen.TextWidth("Download Version"),
            Scale(dots).ToTwips(win32::TextWidth(font.Get(), L"Download Version")));
  EXPECT_GT(screen.TextWidth("Tarvo", {"Arial", 26.25F, true}),
            screen.TextWidth("Tarvo", {"Arial", 16.25F, true}));
}

TEST_F(WindowTest, ARepaintRunsNoHandler) {
  Start();
  int runs = 0;
  State().lvListView.ItemClick = [&](ListItem&) { ++runs; };
  State().tmrStuff.Tick = [&] { ++runs; };
  State().Caption = "Installing \xC3\xBC";
  screen.Repaint(State());
  EXPECT_EQ(TextOf(Window()), "Installing \xC3\xBC");
  EXPECT_EQ(runs, 0);
}

}  // namespace
}  // namespace tarvo::test
