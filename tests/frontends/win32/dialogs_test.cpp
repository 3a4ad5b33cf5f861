#include "base/runtime_error.h"
#include "screen_run.h"
#include "ui/frm_splash.h"

namespace tarvo::test {
namespace {

class DialogsTest : public ScreenRun {
 protected:
  Answer Ask() {
    return screen.MsgBox("Sure?", MessageButtons::kYesNo, MessageIcon::kQuestion, "Tarvo");
  }
};

TEST_F(DialogsTest, AMessageIsPlainTextWithItsLineBreaks) {
  Start();
  std::string shown;
  AnswerMessage(IDOK, &shown);
  EXPECT_EQ(screen.MsgBox("<b>x & y\rz", MessageButtons::kOk, MessageIcon::kInformation, "Tarvo"),
            Answer::kOk);
  EXPECT_EQ(shown, "<b>x & y\nz");
}

TEST_F(DialogsTest, AMessageHasItsTitleAndBelongsToTheWindow) {
  Start();
  std::string title;
  HWND owner = nullptr;
  bool enabled = true;
  WhenDialogAppears([&](HWND box) {
    title = TextOf(box);
    owner = GetWindow(box, GW_OWNER);
    enabled = IsWindowEnabled(Window()) != FALSE;
    SendMessageW(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  });
  screen.MsgBox("text", MessageButtons::kOk, MessageIcon::kExclamation, "A title");
  EXPECT_EQ(title, "A title");
  EXPECT_EQ(owner, Window());
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(IsWindowEnabled(Window()));
}

TEST_F(DialogsTest, AQuestionGivesTheAnswerOfTheUser) {
  Start();
  AnswerMessage(IDYES);
  EXPECT_EQ(Ask(), Answer::kYes);
  AnswerMessage(IDNO);
  EXPECT_EQ(Ask(), Answer::kNo);
}

TEST_F(DialogsTest, AMessageNeedsNoWindow) {
  AnswerMessage(IDYES);
  EXPECT_EQ(Ask(), Answer::kYes);
}

TEST_F(DialogsTest, AnErrorBehindAMessageEndsTheMessageAndTheHandler) {
  Start();
  bool wentOn = false;
  WhenDialogAppears([this](HWND) { screen.RunGuarded([] { throw RuntimeError(kDiskFull); }); });
  screen.RunGuarded([&] {
    Ask();
    wentOn = true;
  });
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(screen.Failure(), RuntimeError(kDiskFull).StandardMessage());
}

TEST_F(DialogsTest, AMessageGoesWithTheMainWindow) {
  Start();
  WhenDialogAppears([this](HWND) { SendMessageW(Window(), WM_CLOSE, 0, 0); });
  EXPECT_EQ(Ask(), Answer::kNo);
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(DialogsTest, CancellingTheOpenDialogIsAnErrorAndChangesNothing) {
  Start();
  std::string title;
  const std::filesystem::path before = std::filesystem::current_path();
  WhenDialogAppears([&](HWND dialog) {
    title = TextOf(dialog);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  try {
    screen.ShowOpen(State().dlgCommonDialog);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kDialogCancelled);
  }
  EXPECT_EQ(title, "Add Driver");
  EXPECT_EQ(State().dlgCommonDialog.FileName, "*.drv");
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(DialogsTest, TheOpenDialogGivesTheChosenFileAndKeepsThePresentFolder) {
  const std::string path = folder.WriteFile("start/Meter_1.drv");
  Start();
  CommonDialog& dialog = State().dlgCommonDialog;
  dialog.InitDir = folder / "start";
  const std::filesystem::path before = std::filesystem::current_path();
  WhenDialogAppears([&](HWND shown) {
    constexpr int kFileName = 0x47C;  // the identifier of the field for the name
    SetWindowTextW(GetDlgItem(shown, kFileName), win32::Wide(path).c_str());
    PostMessageW(shown, WM_COMMAND, IDOK, 0);
  });
  screen.ShowOpen(dialog);
  EXPECT_EQ(dialog.FileName, path);
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(DialogsTest, TheOpenDialogGoesWithTheMainWindow) {
  Start();
  WhenDialogAppears([this](HWND) { SendMessageW(Window(), WM_CLOSE, 0, 0); });
  EXPECT_THROW(screen.ShowOpen(State().dlgCommonDialog), RuntimeError);
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(DialogsTest, APopupMenuShowsItsDefaultEntryAndRunsTheChosenOne) {
  Start();
  int runs = 0;
  State().mnuFileRename.Click = [&] { ++runs; };
  UINT defaultPosition = 0;
  WhenDialogAppears([&](HWND shown) {
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(shown, MN_GETHMENU, 0, 0));
    defaultPosition = GetMenuDefaultItem(menu, TRUE, 0);
    PostMessageW(shown, WM_CHAR, L'm', 1);
    PostMessageW(Window(), WM_CHAR, L'm', 1);
  });
  screen.PopupMenu(State().mnuFile, &State().mnuFileOpen);
  EXPECT_EQ(defaultPosition, 0U);
  EXPECT_EQ(runs, 1);
}

TEST_F(DialogsTest, APopupMenuCanBeLeftWithoutAChoice) {
  Start();
  WhenDialogAppears([](HWND) { EndMenu(); });
  screen.PopupMenu(State().mnuFile, nullptr);
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(DialogsTest, APopupMenuGoesWithTheMainWindow) {
  Start();
  WhenDialogAppears([this](HWND) { SendMessageW(Window(), WM_CLOSE, 0, 0); });
  screen.PopupMenu(State().mnuFile, nullptr);
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(DialogsTest, TheAboutWindowShowsTitleAndVersionUntilItIsClosed) {
  Start();
  for (const bool byKey : {false, true}) {
    bool seen = false;
    WhenDialogAppears([&](HWND about) {
      seen = true;
      RECT inner = {};
      GetClientRect(about, &inner);
      EXPECT_EQ(TextOf(about), "About Tarvo");
      EXPECT_EQ(inner.right, Scale(GetDpiForWindow(about)).ToPixels(6300.0F));
      EXPECT_EQ(inner.bottom, Scale(GetDpiForWindow(about)).ToPixels(3630.0F));
      EXPECT_TRUE(WithText(about, "Tarvo"));
      EXPECT_TRUE(WithText(about, VersionText()));
      EXPECT_FALSE(IsWindowEnabled(Window()));
      const HWND ok = WithText(about, "OK");
      ASSERT_TRUE(ok);
      EXPECT_EQ(GetFocus(), ok);
      if (byKey) {
        PostMessageW(ok, WM_KEYDOWN, VK_ESCAPE, 1);
      } else {
        SendMessageW(ok, BM_CLICK, 0, 0);
      }
    });
    Choose(State().mnuHelpAbout);
    EXPECT_TRUE(seen);
    EXPECT_EQ(screen.LoadedForms().size(), 1U);
    EXPECT_TRUE(IsWindowEnabled(Window()));
  }
}

TEST_F(DialogsTest, EnterPressesTheDefaultButton) {
  Start();
  WhenDialogAppears(
      [](HWND about) { PostMessageW(WithText(about, "OK"), WM_KEYDOWN, VK_RETURN, 1); });
  Choose(State().mnuHelpAbout);
  EXPECT_EQ(screen.LoadedForms().size(), 1U);
}

TEST_F(DialogsTest, ClosingTheAboutWindowByItsFrameEndsTheWait) {
  Start();
  WhenDialogAppears([](HWND about) { SendMessageW(about, WM_CLOSE, 0, 0); });
  Choose(State().mnuHelpAbout);
  EXPECT_EQ(screen.LoadedForms().size(), 1U);
}

TEST_F(DialogsTest, TheAboutWindowGoesWithTheMainWindow) {
  Start();
  WhenDialogAppears([this](HWND) { SendMessageW(Window(), WM_CLOSE, 0, 0); });
  Choose(State().mnuHelpAbout);
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(DialogsTest, TheAboutWindowStandsInTheMiddleOfItsOwner) {
  Start();
  WhenDialogAppears([this](HWND about) {
    const PixelBounds inner = BoundsOf(about);
    const PixelBounds outer = BoundsOf(Window());
    EXPECT_NEAR(inner.left + inner.width / 2, outer.left + outer.width / 2, 4);
    EXPECT_NEAR(inner.top + inner.height / 2, outer.top + outer.height / 2, 4);
    SendMessageW(about, WM_CLOSE, 0, 0);
  });
  Choose(State().mnuHelpAbout);
}

TEST_F(DialogsTest, TheSplashWindowIsOnTheScreenOnceItHasBeenRepainted) {
  run = std::make_unique<Tarvo>(platform, screen, "");
  frmSplash splash(run->RunGlobals());
  screen.Show(splash);
  screen.Repaint(splash);
  const HWND drawn = screen.WindowShowing(splash);
  ASSERT_TRUE(drawn);
  EXPECT_TRUE(IsWindowVisible(drawn));
  RECT inner = {};
  GetClientRect(drawn, &inner);
  EXPECT_EQ(inner.right, Scale(GetDpiForWindow(drawn)).ToPixels(6480.0F));
  const HWND name = WithText(drawn, "Tarvo");
  ASSERT_TRUE(name);
  EXPECT_GE(BoundsOf(name).width,
            Scale(GetDpiForWindow(drawn)).ToPixels(splash.lblProductName.Place.Width));
  screen.Unload(splash);
  EXPECT_FALSE(screen.WindowShowing(splash));
}

TEST_F(DialogsTest, TheSplashWindowCanBeUnloadedTwice) {
  run = std::make_unique<Tarvo>(platform, screen, "");
  frmSplash splash(run->RunGlobals());
  screen.Show(splash);
  screen.Unload(splash);
  screen.Unload(splash);
  EXPECT_FALSE(screen.WindowShowing(splash));
  EXPECT_TRUE(screen.LoadedForms().empty());
  screen.Show(splash);
  EXPECT_TRUE(IsWindowVisible(screen.WindowShowing(splash)));
  screen.Unload(splash);
}

}  // namespace
}  // namespace tarvo::test
