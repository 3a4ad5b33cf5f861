#include "base/runtime_error.h"
#include "screen_run.h"

namespace tarvo::test {
namespace {

class WaitingTest : public ScreenRun {
 protected:
  void Close() { SendMessageW(Window(), WM_CLOSE, 0, 0); }
  void PostChoice(const MenuItem& entry) {
    PostMessageW(Window(), WM_COMMAND, Shown(entry).wID, 0);
  }
};

TEST_F(WaitingTest, TheEventLoopEndsWithTheMainWindow) {
  Start();
  PostMessageW(Window(), WM_CLOSE, 0, 0);
  screen.RunEventLoop();
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(WaitingTest, AWindowClosedBeforeTheEventLoopEndsTheRun) {
  Start();
  Close();
  screen.RunEventLoop();
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(WaitingTest, APostedQuitDoesNotEndTheEventLoopBehindTheWindowsBack) {
  Start();
  PostQuitMessage(0);
  PostMessageW(Window(), WM_CLOSE, 0, 0);
  screen.RunEventLoop();
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "6500");
}

bool ranTimer = false;
void CALLBACK NoteTimer(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  KillTimer(nullptr, timer);
  ranTimer = true;
}

TEST_F(WaitingTest, NestedWaitsReturnAtOnceWhenNoWindowIsLoaded) {
  Start();
  Close();
  PostThreadMessageW(GetCurrentThreadId(), WM_APP, 0, 0);
  screen.Yield();
  screen.YieldUntilEvent(3600);
  MSG message;
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE)) << "it still waits";
}

TEST_F(WaitingTest, AYieldRunsWhatWaits) {
  Start();
  int runs = 0;
  State().mnuViewOptions.Click = [&] { ++runs; };
  PostChoice(State().mnuViewOptions);
  screen.Yield();
  EXPECT_EQ(runs, 1);
}

TEST_F(WaitingTest, AYieldUntilAnEventIsEndedByTheEvent) {
  Start();
  ranTimer = false;
  SetTimer(nullptr, 0, 1, &NoteTimer);
  EXPECT_TRUE(WaitFor([this] {
    if (!ranTimer) screen.YieldUntilEvent(3600);
    return ranTimer;
  }));
}

TEST_F(WaitingTest, AnErrorInAHandlerEndsTheEventLoop) {
  Start();
  State().mnuViewOptions.Click = [] { throw RuntimeError(kPermissionDenied); };
  PostChoice(State().mnuViewOptions);
  screen.RunEventLoop();
  EXPECT_EQ(screen.Failure(), RuntimeError(kPermissionDenied).StandardMessage());
}

TEST_F(WaitingTest, AnErrorDuringAYieldEndsTheHandlerThatYields) {
  Start();
  bool wentOn = false;
  State().mnuViewOptions.Click = [] { throw RuntimeError(kPermissionDenied); };
  State().mnuViewRefresh.Click = [&] {
    PostChoice(State().mnuViewOptions);
    try {
      screen.Yield();
    } catch (const std::exception&) {
    }
    wentOn = true;
  };
  PostChoice(State().mnuViewRefresh);
  screen.RunEventLoop();
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(screen.Failure(), RuntimeError(kPermissionDenied).StandardMessage());
}

}  // namespace
}  // namespace tarvo::test
