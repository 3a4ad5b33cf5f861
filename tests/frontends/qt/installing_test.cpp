#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <set>

#include "base/runtime_error.h"
#include "frontends/qt/program.h"
#include "screen_run.h"
#include "support/made_package.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Starts no program, but lets a test look on in the middle of an install.
class InstallingPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  int StartProcess(std::string_view program, const std::vector<std::string>&,
                   StartWindow) override {
    if (whenStarting) whenStarting(program);
    return 1;
  }
  std::function<void(std::string_view program)> whenStarting;
};

// Keeps the names of the windows that have come onto the screen.
class ShownWindows : public QObject {
 public:
  ShownWindows() { QCoreApplication::instance()->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
      const auto& widget = static_cast<QWidget&>(*watched);
      if (widget.isWindow()) names.insert(widget.objectName().toStdString());
    }
    return false;
  }
  std::set<std::string> names;
};

struct Message {
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
};

// Keeps the next message, whatever other dialog comes before it, and answers it.
void KeepNextMessage(Message& message) {
  auto* const timer = new QTimer(QCoreApplication::instance());
  QObject::connect(timer, &QTimer::timeout, timer, [timer, &message] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    message = {box->text(), box->icon()};
    box->button(QMessageBox::Ok)->click();
  });
  timer->start(5);
}

class InstallingOnTheScreen : public ScreenRun {
 protected:
  InstallingOnTheScreen() : installing(folder.Path()) {
    installing.specialFolders = platform.specialFolders;
  }
  std::string Package(const std::string& name) {
    return MakePackage(folder, InData(name), {{"driver.inf", ""}, {"Download.EXE", "x"}});
  }
  void StartInstalling() {
    run = std::make_unique<Tarvo>(installing, screen, "");
    screen.RunGuarded([this] { run->Start(); });
    ASSERT_TRUE(WaitFor([this] { return Window().isVisible() && Window().isActiveWindow(); }));
  }
  void ActivateAddItem() {
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Home);
    QTest::keyClick(&List(), Qt::Key_Return);
  }
  bool IsInstalled(const std::string& driver) {
    return std::filesystem::exists(folder / InDrivers(driver + "/driver.inf"));
  }
  static QListWidget& Files(QWidget& window) {
    return *window.findChild<QListWidget*>("file_stddrvs");
  }
  static void Press(QWidget& window, const char* button) {
    window.findChild<QPushButton*>(button)->click();
  }
  static void ChooseAll(QWidget& window) {
    Files(window).setCurrentRow(0);
    Files(window).selectAll();
    Press(window, "cmd_adddriver");
  }
  // What the screen shows in a widget's place.
  static QImage OnScreen(const QWidget& widget) {
    const QWidget& window = *widget.window();
    const QPixmap all = window.screen()->grabWindow(window.winId());
    const qreal scale = all.devicePixelRatio();
    const QRect place(widget.mapTo(&window, QPoint()) * scale, widget.size() * scale);
    return all.copy(place).toImage().convertToFormat(QImage::Format_RGB32);
  }

  InstallingPlatform installing;
};

TEST_F(InstallingOnTheScreen, ShowsTheDriversNameAndTheHourglassWhileItWorks) {
  Package("Meter_1.drv");
  Package("Tide Gauge_1.drv");
  StartInstalling();
  QLabel& panel = Find<QLabel>("sbStatusBar1");
  const QImage empty = OnScreen(panel);
  std::vector<std::string> texts;
  std::vector<QImage> shown;
  installing.whenStarting = [&](std::string_view) {
    texts.push_back(panel.text().toStdString());
    shown.push_back(OnScreen(panel));
    ASSERT_TRUE(QApplication::overrideCursor());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  };
  WhenDialogAppears(ChooseAll);
  ActivateAddItem();
  EXPECT_THAT(texts, ElementsAre("Meter ...", "Tide Gauge ..."));
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_NE(shown[0], empty) << "the text is on the screen, not only in the label";
  EXPECT_NE(shown[1], empty);
  EXPECT_NE(shown[0], shown[1]);
  EXPECT_FALSE(QApplication::overrideCursor());
  EXPECT_EQ(panel.text(), "");
  ASSERT_TRUE(WaitFor([&] { return OnScreen(panel) == empty; }));
}

// What the user does meanwhile waits until the install is over.
TEST_F(InstallingOnTheScreen, RunsNoHandlerMeanwhile) {
  Package("Meter_1.drv");
  StartInstalling();
  int handlers = 0;
  int handlersMeanwhile = -1;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++handlers; });
  installing.whenStarting = [&](std::string_view) { handlersMeanwhile = handlers; };
  WhenDialogAppears([&](QWidget& window) {
    ChooseAll(window);
    timer.start(0);
  });
  ActivateAddItem();
  EXPECT_EQ(handlersMeanwhile, 0);
  EXPECT_TRUE(WaitFor([&] { return handlers > 0; }));
}

TEST_F(InstallingOnTheScreen, EndsTheProgramForThe101stSelectedPackage) {
  for (int i = 1; i <= 100; ++i) folder.WriteFile(InData("A" + std::to_string(i) + "_1.drv"));
  Package("A0_1.drv");
  StartInstalling();
  bool wentOn = false;
  WhenDialogAppears(ChooseAll);
  screen.RunGuarded([&] {
    State().lvListView.Select(&State().lvListView.ItemAt(0));
    State().lvListView_DblClick();
    wentOn = true;
  });
  EXPECT_EQ(screen.Failure(), RuntimeError(kSubscriptOutOfRange).StandardMessage());
  EXPECT_FALSE(wentOn) << "no handler absorbs it on its way";
  EXPECT_FALSE(IsInstalled("A0"));
}

TEST_F(InstallingOnTheScreen, TakesAHundredSelectedPackages) {
  for (int i = 0; i < 100; ++i) folder.WriteFile(InData("A" + std::to_string(i) + "_1.drv"));
  StartInstalling();
  Message message;
  KeepNextMessage(message);
  WhenDialogAppears(ChooseAll);
  ActivateAddItem();
  EXPECT_EQ(message.text, "Invalid Driver file") << "of the first one";
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_NE(State().DriverFileList[100], "");
}

TEST_F(InstallingOnTheScreen, ShowsTheStandardMessageForThe101stSelectedPackage) {
  for (int i = 0; i < 101; ++i) folder.WriteFile(InData("A" + std::to_string(i) + "_1.drv"));
  Message message;
  KeepNextMessage(message);
  WhenDialogAppears(ChooseAll);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(qt::RunProgram(installing, "/a"), 1);
  ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(message.text, "Run-time error '9':\n\nSubscript out of range");
  EXPECT_EQ(message.icon, QMessageBox::Critical);
}

TEST_F(InstallingOnTheScreen, HoldsToACloseBoxWhileTheSelectionIsCollected) {
  Package("A_1.drv");
  Package("B_1.drv");
  StartInstalling();
  WhenDialogAppears([&](QWidget& window) {
    QTimer::singleShot(0, &window, &QWidget::close);
    ChooseAll(window);
  });
  ActivateAddItem();
  EXPECT_EQ(State().DriverFileList[1], "CANCEL");
  EXPECT_EQ(State().DriverFileList[2], "");
  EXPECT_FALSE(IsInstalled("A") || IsInstalled("B"));
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(InstallingOnTheScreen, InstallsNothingWhenTheSearchForAnotherDiskIsCancelled) {
  Package("A_1.drv");
  StartInstalling();
  WhenDialogAppears([](QWidget& window) {
    WhenDialogAppears([](QWidget& dialog) { dynamic_cast<QDialog&>(dialog).reject(); });
    Press(window, "cmd_havedisk");
  });
  ActivateAddItem();
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_EQ(State().DriverFileList[1], "");
  EXPECT_FALSE(IsInstalled("A"));
  EXPECT_FALSE(QApplication::overrideCursor());
}

class RefreshingOnTheScreen : public InstallingOnTheScreen {
 protected:
  RefreshingOnTheScreen() { Driver("Meter"); }
};

TEST_F(RefreshingOnTheScreen, NeverShowsTheMainWindow) {
  Package("Meter_1.drv");
  const ShownWindows shown;
  EXPECT_EQ(qt::RunProgram(installing, "/r"), 0);
  EXPECT_TRUE(IsInstalled("Meter"));
  EXPECT_THAT(shown.names, ElementsAre("frmSplash"));
}

TEST_F(RefreshingOnTheScreen, ShowsTheMessageOfAnInvalidPackageWithoutTheMainWindow) {
  folder.WriteFile(InData("Meter_1.drv"), "damaged");
  const ShownWindows shown;
  Message message;
  KeepNextMessage(message);
  EXPECT_EQ(qt::RunProgram(installing, "/r"), 0);
  EXPECT_EQ(message.text, "Invalid Driver file");
  EXPECT_EQ(message.icon, QMessageBox::Warning);
  EXPECT_THAT(shown.names, ElementsAre("MsgBox", "frmSplash"));
}

TEST_F(RefreshingOnTheScreen, ShowsTheStandardMessageForAPackageWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  const ShownWindows shown;
  Message message;
  KeepNextMessage(message);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(qt::RunProgram(installing, "/r"), 1);
  ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(message.text, "Run-time error '5':\n\nInvalid procedure call or argument");
  EXPECT_FALSE(shown.names.contains("frmDrivers"));
}

// Another window of the desktop has been in front meanwhile.
TEST_F(RefreshingOnTheScreen, AnActivationMeanwhileClosesTheMainWindow) {
  Package("Meter_1.drv");
  StartInstalling();
  bool wasActivated = false;
  installing.whenStarting = [&](std::string_view) {
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
    Window().activateWindow();
    wasActivated = WaitFor([this] { return screen.LoadedForms().empty(); });
  };
  screen.RunGuarded([this] { State().RefreshDrivers(); });
  EXPECT_TRUE(wasActivated);
  EXPECT_EQ(screen.Failure(), "") << "the rest of the refresh touches no window";
  EXPECT_TRUE(IsInstalled("Meter"));
  EXPECT_FALSE(screen.WidgetOf(State()));
}

TEST_F(RefreshingOnTheScreen, AnActivationAfterwardsClosesNothing) {
  Package("Meter_1.drv");
  StartInstalling();
  screen.RunGuarded([this] { State().RefreshDrivers(); });
  State().FirstActivate = true;
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  Window().activateWindow();
  EXPECT_TRUE(WaitFor([this] { return !State().FirstActivate; }));
  EXPECT_EQ(screen.LoadedForms().size(), 1U);
}

}  // namespace
}  // namespace tarvo::test
