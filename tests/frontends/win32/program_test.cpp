#include "frontends/win32/program.h"

#include "screen_run.h"

namespace tarvo::test {
namespace {

class ProgramTest : public ScreenRun {
 protected:
  ProgramTest() { Store("Tarvo_Association_Asked", "Yes"); }
};

// Closes the main window as soon as it is on the screen.
void CALLBACK CloseMainWindow(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND window = FindWindowW(L"TarvoMainWindow", nullptr);
  if (!window || !IsWindowVisible(window)) return;
  KillTimer(nullptr, timer);
  PostMessageW(window, WM_CLOSE, 0, 0);
}

TEST_F(ProgramTest, EndsWellWhenTheMainWindowIsClosed) {
  SetTimer(nullptr, 0, 5, &CloseMainWindow);
  EXPECT_EQ(win32::RunProgram(platform, ""), 0);
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "1000");
}

TEST_F(ProgramTest, EndsAtOnceAfterASilentRefresh) {
  EXPECT_EQ(win32::RunProgram(platform, "/R"), 0);
  EXPECT_EQ(Stored("Tarvo_Settings_MainLeft"), "absent");
}

TEST_F(ProgramTest, AnErrorAtTheStartIsShownAndEndsIt) {
  folder.WriteFile("start/TARVO.DIC", "no dictionary");
  std::string text;
  std::string title;
  WhenDialogAppears([&](HWND box) {
    constexpr int kText = 0xFFFF;
    text = TextOf(GetDlgItem(box, kText));
    title = TextOf(box);
    SendMessageW(GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
  });
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(win32::RunProgram(platform, ""), 1);
  EXPECT_TRUE(text.starts_with("Run-time error '321':\n\n")) << text;
  EXPECT_EQ(title, "Tarvo");
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("Run-time error '321':"),
            std::string::npos);
}

}  // namespace
}  // namespace tarvo::test
