#include "screen_run.h"

namespace tarvo::test {
namespace {

class ChooserTest : public ScreenRun {
 protected:
  void StartWithPackages() {
    for (const char* name : {"a_1.drv", "b_1.drv", "c_1.drv"}) folder.WriteFile(InData(name), "x");
    Start();
  }
  // Opens the chooser and gives it to `use`, which must close it.
  void Open(const std::function<void(HWND list)>& use) {
    WhenDialogAppears([&use](HWND chooser) {
      const HWND list = FindWindowExW(chooser, nullptr, WC_LISTBOXW, nullptr);
      ASSERT_TRUE(list);
      use(list);
    });
    screen.RunGuarded([this] { State().StandardDrivers(); });
  }
  void Press(HWND list, const char* button) {
    SendMessageW(WithText(GetParent(list), button), BM_CLICK, 0, 0);
  }
  std::string Chosen(int number) { return State().DriverFileList[number]; }
};

TEST_F(ChooserTest, ShowsThePackagesAndHasTheFocusInTheList) {
  StartWithPackages();
  Open([this](HWND list) {
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 3);
    EXPECT_EQ(GetFocus(), list);
    Press(list, "Cancel");
  });
  EXPECT_EQ(Chosen(1), "CANCEL");
}

TEST_F(ChooserTest, GivesEverySelectedPackage) {
  StartWithPackages();
  Open([this](HWND list) {
    SendMessageW(list, LB_SETSEL, TRUE, 0);
    SendMessageW(list, LB_SETSEL, TRUE, 2);
    SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
    Press(list, "Add Driver");
  });
  EXPECT_EQ(Chosen(1), folder / InData("a_1.drv"));
  EXPECT_EQ(Chosen(2), folder / InData("c_1.drv"));
  EXPECT_EQ(Chosen(3), "");
}

TEST_F(ChooserTest, TheFocusAloneChoosesNothing) {
  StartWithPackages();
  Open([this](HWND list) {
    Press(list, "Add Driver");
    EXPECT_TRUE(IsWindowVisible(list)) << "the window stays open";
    Press(list, "Cancel");
  });
  EXPECT_EQ(Chosen(1), "CANCEL");
}

TEST_F(ChooserTest, TheFirstKeyLeadsToTheFirstEntryAndEnterAddsIt) {
  StartWithPackages();
  Open([](HWND list) {
    PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
  });
  EXPECT_EQ(Chosen(1), folder / InData("a_1.drv"));
  EXPECT_EQ(Chosen(2), "");
}

TEST_F(ChooserTest, ADoubleClickAddsThePackage) {
  StartWithPackages();
  Open([](HWND list) {
    RECT second = {};
    SendMessageW(list, LB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    const LPARAM point = MAKELPARAM(second.left + 5, second.top + 5);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(list, WM_LBUTTONUP, 0, point);
    SendMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    SendMessageW(list, WM_LBUTTONUP, 0, point);
  });
  EXPECT_EQ(Chosen(1), folder / InData("b_1.drv"));
}

TEST_F(ChooserTest, HaveDiskAndTheCloseBoxGiveTheirAnswers) {
  StartWithPackages();
  Open([this](HWND list) { Press(list, "Have Disk..."); });
  EXPECT_EQ(Chosen(1), "");
  Open([](HWND list) { SendMessageW(GetParent(list), WM_CLOSE, 0, 0); });
  EXPECT_EQ(Chosen(1), "CANCEL");
}

TEST_F(ChooserTest, EscapeCancels) {
  StartWithPackages();
  Open([](HWND list) { PostMessageW(list, WM_KEYDOWN, VK_ESCAPE, 1); });
  EXPECT_EQ(Chosen(1), "CANCEL");
}

}  // namespace
}  // namespace tarvo::test
