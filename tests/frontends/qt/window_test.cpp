#include <QTest>
#include <QWindow>

#include "base/runtime_error.h"
#include "screen_run.h"

namespace tarvo::test {
namespace {

class WindowTest : public ScreenRun {
 protected:
  // The frame has been taken into account.
  void StartAndSettle() {
    Start();
    ASSERT_TRUE(WaitFor(
        [this] { return Window().windowHandle()->frameGeometry().size() == QSize(433, 433); }));
  }
};

TEST_F(WindowTest, OpensAtItsStandardPlace) {
  StartAndSettle();
  EXPECT_EQ(Window().frameGeometry(), QRect(67, 67, 433, 433));
}

TEST_F(WindowTest, SavesThePlaceThatItWasGivenAsLongAsTheUserDoesNotChangeIt) {
  StartAndSettle();
  Window().close();
  EXPECT_FALSE(screen.IsLoaded(State()));
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1000");
  EXPECT_EQ(Stored("Tarvo_Settings_MainTop"), "1000");
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "6500");
  EXPECT_EQ(Stored("Tarvo_Settings_MainHeight"), "6500");
}

TEST_F(WindowTest, AMoveByTheUserChangesThePositionOnly) {
  StartAndSettle();
  Window().move(100, 120);
  ASSERT_TRUE(WaitFor([this] { return State().Place.Top == 1800; }));
  EXPECT_EQ(State().Place.Left, 1500);
  EXPECT_EQ(State().Place.Width, 6500);
  EXPECT_EQ(State().Place.Height, 6500);
}

TEST_F(WindowTest, AResizeByTheUserLaysTheListOutAnew) {
  StartAndSettle();
  Window().resize(500, 450);
  ASSERT_TRUE(WaitFor([this] { return Find<QWidget>("lvListView").width() == 500; }));
  EXPECT_NE(State().Place.Width, 6500);
  EXPECT_EQ(State().Place.Left, 1000);
  EXPECT_EQ(State().lvListView.Place.Width, 7500);
}

TEST_F(WindowTest, SnapsBackToTheSmallestWidth) {
  StartAndSettle();
  Window().resize(100, 300);
  ASSERT_TRUE(WaitFor([this] { return Window().frameGeometry().width() == 200; }));
  EXPECT_EQ(State().Place.Width, 3000);
}

TEST_F(WindowTest, CanBeAsLowAsTheUserLikes) {
  StartAndSettle();
  Window().resize(400, 40);
  ASSERT_TRUE(WaitFor([this] { return Window().height() == 40; }));
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(WindowTest, AbsurdStoredBoundsDoNotHarmAndAreKept) {
  Store("Tarvo_Settings_MainLeft", "-1e9");
  Store("Tarvo_Settings_MainWidth", "1e9");
  Store("Tarvo_Settings_MainHeight", "-5");
  Start();
  Window().close();
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_EQ(Stored("Tarvo_Settings_MainWidth"), "1E+09");
}

TEST_F(WindowTest, MaximisingAndRestoringChangesNothing) {
  StartAndSettle();
  Window().showMaximized();
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kMaximised; }));
  EXPECT_TRUE(WaitFor([this] { return State().Place.Width > 6500; }));
  Window().showNormal();
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kNormal; }));
  EXPECT_TRUE(WaitFor([this] { return State().Place.Width == 6500; }));
  EXPECT_EQ(State().Place.Left, 1000);
}

TEST_F(WindowTest, ClosedWhileMinimisedItSavesTheViewOnly) {
  StartAndSettle();
  Window().showMinimized();
  ASSERT_TRUE(WaitFor([this] { return State().State == WindowState::kMinimised; }));
  Window().close();
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "absent");
  EXPECT_EQ(Stored("Tarvo_Settings_ViewMode"), "0");
}

TEST_F(WindowTest, TheInnerSizeIsThatBetweenMenuAndFrame) {
  StartAndSettle();
  ASSERT_TRUE(WaitFor([this] { return Window().centralWidget()->width() == Window().width(); }));
  EXPECT_EQ(screen.ScaleWidth(State()), 15.0F * static_cast<float>(Window().width()));
  EXPECT_EQ(screen.ScaleHeight(State()),
            15.0F * static_cast<float>(Window().centralWidget()->height()));
}

TEST_F(WindowTest, TheEventLoopEndsWithTheMainWindow) {
  StartAndSettle();
  QMetaObject::invokeMethod(&Window(), "close", Qt::QueuedConnection);
  screen.RunEventLoop();
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(WindowTest, AWindowClosedBeforeTheEventLoopEndsTheRun) {
  StartAndSettle();
  Window().close();
  screen.RunEventLoop();
  EXPECT_TRUE(screen.LoadedForms().empty());
}

TEST_F(WindowTest, NestedWaitsReturnAtOnceWhenNoWindowIsLoaded) {
  StartAndSettle();
  Window().close();
  bool ran = false;
  QMetaObject::invokeMethod(
      qApp, [&] { ran = true; }, Qt::QueuedConnection);
  screen.Yield();
  screen.YieldUntilEvent(3600);
  EXPECT_FALSE(ran);
  QCoreApplication::processEvents();
}

TEST_F(WindowTest, AYieldRunsWhatWaits) {
  StartAndSettle();
  bool ran = false;
  QMetaObject::invokeMethod(
      qApp, [&] { ran = true; }, Qt::QueuedConnection);
  screen.YieldUntilEvent(3600);
  EXPECT_TRUE(ran);
}

TEST_F(WindowTest, AnErrorInAHandlerEndsTheEventLoop) {
  StartAndSettle();
  State().mnuViewOptions.Click = [] { throw RuntimeError(kPermissionDenied); };
  QMetaObject::invokeMethod(&Entry("mnuViewOptions"), "trigger", Qt::QueuedConnection);
  screen.RunEventLoop();
  EXPECT_EQ(screen.Failure(), RuntimeError(kPermissionDenied).StandardMessage());
}

TEST_F(WindowTest, AnErrorDuringAYieldEndsTheHandlerThatYields) {
  StartAndSettle();
  bool wentOn = false;
  State().mnuViewOptions.Click = [] { throw RuntimeError(kPermissionDenied); };
  State().mnuViewRefresh.Click = [&] {
    QMetaObject::invokeMethod(&Entry("mnuViewOptions"), "trigger", Qt::QueuedConnection);
    try {
      screen.Yield();
    } catch (const std::exception&) {
    }
    wentOn = true;
  };
  QMetaObject::invokeMethod(&Entry("mnuViewRefresh"), "trigger", Qt::QueuedConnection);
  screen.RunEventLoop();
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(screen.Failure(), RuntimeError(kPermissionDenied).StandardMessage());
}

// Counts what reaches its handlers.
class CountingWindow : public MainWindow {
 public:
  CountingWindow() { Place = {1000, 1000, 6500, 6500}; }
  void Form_Activate() override { ++activations; }
  void Form_KeyDown(int&) override { ++keys; }
  void Form_Unload() override { ++unloads; }

  int activations = 0;
  int keys = 0;
  int unloads = 0;
};

TEST_F(WindowTest, EachEventReachesItsHandlerOnce) {
  CountingWindow form;
  screen.Show(form);
  EXPECT_EQ(form.activations, 1);
  QWidget& window = *screen.WidgetOf(form);
  ASSERT_TRUE(WaitFor([&] { return window.isActiveWindow() && QApplication::focusWidget(); }));
  EXPECT_EQ(form.activations, 1) << "the window system's first activation is not a second one";
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
  EXPECT_EQ(form.keys, 1);
  window.close();
  EXPECT_EQ(form.unloads, 1);
}

TEST_F(WindowTest, ALaterActivationByTheUserIsDelivered) {
  StartAndSettle();
  State().FirstActivate = true;
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  Window().activateWindow();
  EXPECT_TRUE(WaitFor([this] { return !State().FirstActivate; }));
}

TEST_F(WindowTest, ComingBackFromTheProgramsOwnMessageIsNoActivation) {
  StartAndSettle();
  State().FirstActivate = true;
  AnswerMessage(QMessageBox::Ok);
  Entry("mnuViewOptions").trigger();
  Window().activateWindow();
  ASSERT_TRUE(WaitFor([this] { return Window().isActiveWindow(); }));
  EXPECT_TRUE(State().FirstActivate);
}

TEST_F(WindowTest, ThePointerIsOneValue) {
  Start();
  screen.SetMousePointer(kHourglassPointer);
  screen.SetMousePointer(12);
  screen.SetMousePointer(kHourglassPointer);
  ASSERT_TRUE(QApplication::overrideCursor());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  screen.SetMousePointer(kDefaultPointer);
  screen.Yield();
  EXPECT_FALSE(QApplication::overrideCursor());
}

TEST_F(WindowTest, TextIsMeasuredInTheFontThatDrawsIt) {
  Start();
  EXPECT_EQ(screen.TextWidth(""), 0);
  EXPECT_NEAR(screen.TextWidth("Download Version"),
              15 * QFontMetricsF(QApplication::font()).horizontalAdvance("Download Version"), 1);
  EXPECT_GT(screen.TextWidth("Tarvo", {"Arial", 26.25F, true}),
            screen.TextWidth("Tarvo", {"Arial", 16.25F, true}));
}

}  // namespace
}  // namespace tarvo::test
