#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "screen_run.h"
#include "support/made_package.h"

namespace tarvo::test {
namespace {

class AddDriverWindow : public ScreenRun {
 protected:
  void Package(const std::string& name) { MakePackage(folder, InData(name), {{"driver.inf", ""}}); }
  // Opens the window by Enter on the first item and lets the user do something in it.
  void Open(const std::function<void(QWidget&)>& user) {
    Start();
    WhenDialogAppears(user);
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Home);
    QTest::keyClick(&List(), Qt::Key_Return);
  }
  static QListWidget& Files(QWidget& window) {
    return *window.findChild<QListWidget*>("file_stddrvs");
  }
  static void Press(QWidget& window, const char* button) {
    window.findChild<QPushButton*>(button)->click();
  }
  std::vector<std::string> Installed() {
    std::vector<std::string> names = ShownNames();
    names.erase(names.begin());
    return names;
  }
};

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(AddDriverWindow, ListsThePackagesAndInstallsTheSelectedOnes) {
  for (const char* name : {"b_1.drv", "A_1.drv", "C_1.drv"}) Package(name);
  Open([](QWidget& window) {
    EXPECT_EQ(window.windowTitle(), "Add Driver");
    QListWidget& files = Files(window);
    ASSERT_EQ(files.count(), 3);
    EXPECT_EQ(files.item(0)->text(), "A_1.drv");
    EXPECT_EQ(files.item(1)->text(), "b_1.drv");
    EXPECT_TRUE(files.selectedItems().isEmpty());
    files.setFocus();
    QTest::keyClick(&files, Qt::Key_Home);
    QTest::keyClick(&files, Qt::Key_Down, Qt::ShiftModifier);
    Press(window, "cmd_adddriver");
  });
  EXPECT_THAT(Installed(), ElementsAre("A", "b"));
}

TEST_F(AddDriverWindow, InstallsTheDoubleClickedPackage) {
  Package("A_1.drv");
  Package("B_1.drv");
  Open([](QWidget& window) {
    QListWidget& files = Files(window);
    const QPoint place = files.visualItemRect(files.item(1)).center();
    QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(files.viewport(), Qt::LeftButton, {}, place);
  });
  EXPECT_THAT(Installed(), ElementsAre("B"));
}

TEST_F(AddDriverWindow, InstallsTheCurrentPackageByEnter) {
  Package("A_1.drv");
  Open([](QWidget& window) {
    QTest::keyClick(&Files(window), Qt::Key_Home);
    QTest::keyClick(&Files(window), Qt::Key_Return);
  });
  EXPECT_THAT(Installed(), ElementsAre("A"));
}

TEST_F(AddDriverWindow, GoesToTheLastPackageByEndAlsoWithoutACurrentOne) {
  for (const char* name : {"A_1.drv", "B_1.drv", "C_1.drv"}) Package(name);
  Open([](QWidget& window) {
    QTest::keyClick(&Files(window), Qt::Key_End);
    EXPECT_EQ(Files(window).currentRow(), 2);
    QTest::keyClick(&Files(window), Qt::Key_Up, Qt::ShiftModifier);
    Press(window, "cmd_adddriver");
  });
  EXPECT_THAT(Installed(), ElementsAre("B", "C"));
}

TEST_F(AddDriverWindow, ShowsTheNextTimeWhatLiesThereThen) {
  Package("A_1.drv");
  Package("B_1.drv");
  Open([](QWidget& window) {
    QTest::keyClick(&Files(window), Qt::Key_End);
    Press(window, "cmd_cancel");
  });
  std::filesystem::remove(folder / InData("A_1.drv"));
  WhenDialogAppears([](QWidget& window) {
    ASSERT_EQ(Files(window).count(), 1);
    EXPECT_EQ(Files(window).item(0)->text(), "B_1.drv");
    EXPECT_TRUE(Files(window).selectedItems().isEmpty());
    EXPECT_EQ(Files(window).currentRow(), -1);
    Press(window, "cmd_cancel");
  });
  QTest::keyClick(&List(), Qt::Key_Return);
}

TEST_F(AddDriverWindow, InstallsNothingByEscape) {
  Package("A_1.drv");
  Open([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_EQ(State().DriverFileList[1], "CANCEL");
}

TEST_F(AddDriverWindow, InstallsNothingByItsCloseBox) {
  Package("A_1.drv");
  Open([](QWidget& window) { window.close(); });
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(AddDriverWindow, StaysOpenWithoutACurrentPackage) {
  Package("A_1.drv");
  Open([](QWidget& window) {
    Press(window, "cmd_adddriver");
    EXPECT_TRUE(window.isVisible());
    Press(window, "cmd_cancel");
  });
  EXPECT_THAT(Installed(), IsEmpty());
}

}  // namespace
}  // namespace tarvo::test
