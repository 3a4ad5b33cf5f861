#include "frontends/qt/program.h"

#include <QApplication>
#include <QTimer>

#include "screen_run.h"

namespace tarvo::test {
namespace {

using ProgramTest = ScreenRun;

QWidget* ShownWindow(const char* name) {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == name && widget->isVisible()) return widget;
  }
  return nullptr;
}

TEST_F(ProgramTest, EndsWellWhenTheMainWindowIsClosed) {
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [] {
    if (QWidget* const window = ShownWindow("frmDrivers")) window->close();
  });
  timer.start(5);
  EXPECT_EQ(qt::RunProgram(platform, ""), 0);
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1000");
}

TEST_F(ProgramTest, EndsAtOnceAfterASilentRefresh) {
  EXPECT_EQ(qt::RunProgram(platform, "/R"), 0);
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "absent");
}

TEST_F(ProgramTest, AnErrorAtTheStartIsShownAndEndsIt) {
  folder.WriteFile("start/TARVO.DIC", "no dictionary");
  QString text;
  QString title;
  WhenDialogAppears([&](QWidget& dialog) {
    auto& box = dynamic_cast<QMessageBox&>(dialog);
    text = box.text();
    title = box.windowTitle();
    box.button(QMessageBox::Ok)->click();
  });
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(qt::RunProgram(platform, ""), 1);
  EXPECT_TRUE(text.startsWith("Run-time error '321':\n\n")) << text.toStdString();
  EXPECT_EQ(title, "Tarvo");
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("Run-time error '321':"),
            std::string::npos);
}

}  // namespace
}  // namespace tarvo::test
