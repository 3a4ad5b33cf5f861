#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <filesystem>

#include "tool_fixture.h"
#include "tools/device_settings.h"
#include "tools/download.h"
#include "tools/qt/properties_window.h"
#include "tools/qt/transfer_window.h"

namespace tarvo::tools {
namespace {

class PropertiesTest : public ToolTest {
 protected:
  PropertiesTest() : window(*tool) {}

  void Choose() {
    window.findChild<QComboBox*>("cboPort")->setCurrentText("USB");
    window.findChild<QLineEdit*>("txtSite")->setText("Lock Gate");
    window.findChild<QSpinBox*>("numInterval")->setValue(10);
  }
  void Press(QDialogButtonBox::StandardButton button) {
    window.findChild<QDialogButtonBox*>()->button(button)->click();
  }

  PropertiesWindow window;
};

TEST_F(PropertiesTest, AreNamedAfterTheDriverAndShowTheDefaults) {
  EXPECT_EQ(window.windowTitle(), "Meter - Properties");
  EXPECT_EQ(window.findChild<QComboBox*>("cboPort")->currentText(), "COM1");
  EXPECT_EQ(window.findChild<QLineEdit*>("txtSite")->text(), "");
  EXPECT_EQ(window.findChild<QSpinBox*>("numInterval")->value(), 30);
}

TEST_F(PropertiesTest, AreStoredByOkAndShownTheNextTime) {
  Choose();
  Press(QDialogButtonBox::Ok);
  const DeviceSettings chosen{.port = "USB", .site = "Lock Gate", .interval = 10};
  EXPECT_EQ(LoadDeviceSettings(*tool), chosen);
  PropertiesWindow next(*tool);
  EXPECT_EQ(next.findChild<QComboBox*>("cboPort")->currentText(), "USB");
  EXPECT_EQ(next.findChild<QLineEdit*>("txtSite")->text(), "Lock Gate");
  EXPECT_EQ(next.findChild<QSpinBox*>("numInterval")->value(), 10);
}

TEST_F(PropertiesTest, StayAsTheyWereAfterCancelAndTheCloseBox) {
  Choose();
  Press(QDialogButtonBox::Cancel);
  window.show();
  window.close();
  EXPECT_TRUE(tool->Settings().EnumEntries().empty());
}

class TransferWindowTest : public ToolTest {
 protected:
  void Show(const ToolOptions& options) {
    download = std::make_unique<Download>(*tool);
    window = std::make_unique<TransferWindow>(*download, "Meter - Download", options);
    window->show();
  }
  // Lets the window work until the condition holds; false after half a minute.
  template <typename Condition>
  static bool Reaches(const Condition& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 30000) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    return condition();
  }
  bool Downloaded() const {
    return std::filesystem::exists(folder / "Meter/Data/Meter 2023-03-15.csv");
  }
  template <typename Control>
  Control* Find(const char* name) {
    return window->findChild<Control*>(name);
  }

  std::unique_ptr<Download> download;
  std::unique_ptr<TransferWindow> window;
};

TEST_F(TransferWindowTest, ShowsWhatItDoesAndHowFarItIs) {
  Show({.seconds = 0});
  EXPECT_EQ(Find<QLabel>("lblActivity")->text(), "Reading the device's memory ...");
  EXPECT_EQ(Find<QPushButton>("cmdClose")->text(), "Cancel");
  EXPECT_TRUE(Reaches([&] { return Find<QProgressBar>("pbTransfer")->value() > 0; }));
}

TEST_F(TransferWindowTest, ClosesByItselfWhenAllWentWell) {
  Show({.seconds = 0});
  EXPECT_TRUE(Reaches([&] { return !window->isVisible(); }));
  EXPECT_TRUE(window->Succeeded());
  EXPECT_TRUE(Downloaded());
}

TEST_F(TransferWindowTest, StaysWithTheReasonAfterAFailure) {
  Show({.seconds = 0, .fails = true});
  EXPECT_TRUE(Reaches([&] { return Find<QPushButton>("cmdClose")->text() == "Close"; }));
  EXPECT_EQ(Find<QLabel>("lblActivity")->text(), "The connection to the device was lost.");
  EXPECT_TRUE(window->isVisible());
  Find<QPushButton>("cmdClose")->click();
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(window->Succeeded());
  EXPECT_FALSE(Downloaded());
}

TEST_F(TransferWindowTest, ThatIsCancelledWritesNothing) {
  Show({.seconds = 3600});
  Find<QPushButton>("cmdClose")->click();
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(window->Succeeded());
  EXPECT_FALSE(window->findChild<QTimer*>()->isActive());
  EXPECT_FALSE(Downloaded());
}

}  // namespace
}  // namespace tarvo::tools
