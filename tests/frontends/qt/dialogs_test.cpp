#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "base/runtime_error.h"
#include "screen_run.h"
#include "ui/frm_splash.h"

namespace tarvo::test {
namespace {

using DialogsTest = ScreenRun;

Answer Ask(FrontEnd& screen) {
  return screen.MsgBox("Sure?", MessageButtons::kYesNo, MessageIcon::kQuestion, "Tarvo");
}

TEST_F(DialogsTest, AMessageIsPlainTextWithItsLineBreaks) {
  Start();
  QString shown;
  AnswerMessage(QMessageBox::Ok, &shown);
  EXPECT_EQ(screen.MsgBox("<b>x & y\rz", MessageButtons::kOk, MessageIcon::kInformation, "Tarvo"),
            Answer::kOk);
  EXPECT_EQ(shown, "<b>x & y\nz");
}

TEST_F(DialogsTest, AMessageHasItsTitleIconAndFormat) {
  Start();
  QString title;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  Qt::TextFormat format = Qt::AutoText;
  WhenDialogAppears([&](QWidget& dialog) {
    auto& box = dynamic_cast<QMessageBox&>(dialog);
    title = box.windowTitle();
    icon = box.icon();
    format = box.textFormat();
    box.button(QMessageBox::Ok)->click();
  });
  screen.MsgBox("text", MessageButtons::kOk, MessageIcon::kExclamation, "A title");
  EXPECT_EQ(title, "A title");
  EXPECT_EQ(icon, QMessageBox::Warning);
  EXPECT_EQ(format, Qt::PlainText);
}

TEST_F(DialogsTest, AQuestionGivesTheAnswerOfTheUser) {
  Start();
  AnswerMessage(QMessageBox::Yes);
  EXPECT_EQ(Ask(screen), Answer::kYes);
  AnswerMessage(QMessageBox::No);
  EXPECT_EQ(Ask(screen), Answer::kNo);
}

TEST_F(DialogsTest, EscapeAnswersNoOrOk) {
  Start();
  const auto escape = [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
  WhenDialogAppears(escape);
  EXPECT_EQ(Ask(screen), Answer::kNo);
  WhenDialogAppears(escape);
  EXPECT_EQ(screen.MsgBox("text", MessageButtons::kOk, MessageIcon::kNone, "Tarvo"), Answer::kOk);
}

TEST_F(DialogsTest, AMessageNeedsNoWindow) {
  AnswerMessage(QMessageBox::Yes);
  EXPECT_EQ(Ask(screen), Answer::kYes);
}

TEST_F(DialogsTest, AnErrorBehindAMessageEndsTheMessageAndTheHandler) {
  Start();
  bool wentOn = false;
  WhenDialogAppears([this](QWidget&) { screen.RunGuarded([] { throw RuntimeError(kDiskFull); }); });
  screen.RunGuarded([&] {
    Ask(screen);
    wentOn = true;
  });
  EXPECT_FALSE(wentOn);
  EXPECT_EQ(screen.Failure(), RuntimeError(kDiskFull).StandardMessage());
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(DialogsTest, TheOpenDialogGivesTheChosenFile) {
  const std::string path = folder.WriteFile("start/Meter_1.drv");
  Start();
  CommonDialog& dialog = State().dlgCommonDialog;
  dialog.InitDir = folder / "start";
  WhenDialogAppears([&](QWidget& shown) {
    auto& chooser = dynamic_cast<QFileDialog&>(shown);
    EXPECT_EQ(chooser.windowTitle(), "Add Driver");
    EXPECT_EQ(chooser.nameFilters(), QStringList("Driver Files (*.drv)"));
    chooser.selectFile(QString::fromStdString(path));
    QMetaObject::invokeMethod(&chooser, "accept");
  });
  screen.ShowOpen(dialog);
  EXPECT_EQ(dialog.FileName, path);
}

TEST_F(DialogsTest, TheOpenDialogBeginsInTheRootForTheFolderOfAllDrives) {
  Start();
  State().dlgCommonDialog.InitDir = "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
  WhenDialogAppears([](QWidget& shown) {
    auto& chooser = dynamic_cast<QFileDialog&>(shown);
    EXPECT_EQ(chooser.directory().absolutePath(), "/");
    auto* const name = chooser.findChild<QLineEdit*>("fileNameEdit");
    if (name) {
      EXPECT_EQ(name->text(), "");
    }
    chooser.reject();
  });
  EXPECT_THROW(screen.ShowOpen(State().dlgCommonDialog), RuntimeError);
}

TEST_F(DialogsTest, CancellingTheOpenDialogIsAnError) {
  Start();
  WhenDialogAppears([](QWidget& shown) { dynamic_cast<QDialog&>(shown).reject(); });
  try {
    screen.ShowOpen(State().dlgCommonDialog);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kDialogCancelled);
  }
  EXPECT_EQ(State().dlgCommonDialog.FileName, "*.drv");
}

TEST_F(DialogsTest, APopupMenuShowsItsDefaultEntryAndRunsTheChosenOne) {
  Start();
  int runs = 0;
  State().mnuFileRename.Click = [&] { ++runs; };
  WhenDialogAppears([&](QWidget& shown) {
    auto& menu = dynamic_cast<QMenu&>(shown);
    EXPECT_EQ(menu.defaultAction(), menu.findChild<QAction*>("mnuFileOpen"));
    menu.setActiveAction(menu.findChild<QAction*>("mnuFileRename"));
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  screen.PopupMenu(State().mnuFile, &State().mnuFileOpen);
  EXPECT_EQ(runs, 1);
}

TEST_F(DialogsTest, APopupMenuCanBeLeftWithoutAChoice) {
  Start();
  WhenDialogAppears([](QWidget& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
  screen.PopupMenu(State().mnuFile, nullptr);
  EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(DialogsTest, TheAboutWindowShowsTitleAndVersionUntilItIsClosed) {
  Start();
  for (const bool byKey : {false, true}) {
    bool seen = false;
    WhenDialogAppears([&](QWidget& about) {
      seen = true;
      EXPECT_EQ(about.windowTitle(), "About Tarvo");
      EXPECT_EQ(about.size(), QSize(420, 242));
      EXPECT_EQ(about.findChild<QLabel*>("lblTitle")->text(), "Tarvo");
      EXPECT_EQ(about.findChild<QLabel*>("lblVersion")->text().toStdString(), VersionText());
      if (byKey) {
        QTest::keyClick(&about, Qt::Key_Escape);
      } else {
        about.findChild<QPushButton*>("cmdOK")->click();
      }
    });
    Entry("mnuHelpAbout").trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(screen.LoadedForms().size(), 1U);
  }
}

TEST_F(DialogsTest, ClosingTheAboutWindowByItsFrameEndsTheWait) {
  Start();
  WhenDialogAppears([](QWidget& about) { about.close(); });
  Entry("mnuHelpAbout").trigger();
  EXPECT_EQ(screen.LoadedForms().size(), 1U);
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(DialogsTest, TheAboutWindowStandsInTheMiddleOfItsOwner) {
  Start();
  WhenDialogAppears([this](QWidget& about) {
    const QPoint off = about.frameGeometry().center() - Window().frameGeometry().center();
    EXPECT_LE(off.manhattanLength(), 8);
    about.close();
  });
  Entry("mnuHelpAbout").trigger();
}

TEST_F(DialogsTest, TheSplashWindowIsOnTheScreenOnceItHasBeenRepainted) {
  run = std::make_unique<Tarvo>(platform, screen, "");
  frmSplash splash(run->RunGlobals());
  screen.Show(splash);
  screen.Repaint(splash);
  const QWidget* const drawn = screen.WidgetOf(splash);
  ASSERT_TRUE(drawn);
  EXPECT_TRUE(drawn->isVisible());
  EXPECT_EQ(drawn->size(), QSize(432, 200));
  const QLabel& name = *drawn->findChild<QLabel*>("lblProductName");
  EXPECT_EQ(name.text(), "Tarvo");
  EXPECT_GE(name.width(), name.sizeHint().width());
  screen.Unload(splash);
  EXPECT_FALSE(screen.WidgetOf(splash));
}

// The main window unloads it before it adds drivers while it loads, and the start does so after.
TEST_F(DialogsTest, TheSplashWindowCanBeUnloadedTwice) {
  run = std::make_unique<Tarvo>(platform, screen, "");
  frmSplash splash(run->RunGlobals());
  screen.Show(splash);
  screen.Unload(splash);
  screen.Unload(splash);
  EXPECT_FALSE(screen.WidgetOf(splash));
  EXPECT_TRUE(screen.LoadedForms().empty());
  screen.Show(splash);
  EXPECT_TRUE(screen.WidgetOf(splash)->isVisible());
  screen.Unload(splash);
}

}  // namespace
}  // namespace tarvo::test
