#include "forms/null_front_end.h"

#include <gtest/gtest.h>

#include "error_of.h"

namespace tarvo::test {
namespace {

class Window : public Form {
 public:
  Window() : Form("frmTest", "Test") {}
};

TEST(NullFrontEnd, AnswersMessagesWithTheChoiceThatChangesNothing) {
  NullFrontEnd frontEnd;
  EXPECT_EQ(frontEnd.MsgBox("?", MessageButtons::kYesNo, MessageIcon::kQuestion, ""), Answer::kNo);
  EXPECT_EQ(frontEnd.MsgBox("!", MessageButtons::kOk, MessageIcon::kNone, ""), Answer::kOk);
}

TEST(NullFrontEnd, CancelsFileDialogs) {
  NullFrontEnd frontEnd;
  CommonDialog dialog;
  dialog.FileName = "kept";
  EXPECT_EQ(ErrorOf([&] { frontEnd.ShowOpen(dialog); }), 32755);
  EXPECT_EQ(dialog.FileName, "kept");
}

TEST(NullFrontEnd, MeasuresTextsByTheirCharacters) {
  NullFrontEnd frontEnd;
  EXPECT_EQ(frontEnd.TextWidth(""), 0);
  EXPECT_EQ(frontEnd.TextWidth("Mètre"), 5 * 90);
  Font large;
  large.Size = 16.5F;
  EXPECT_EQ(frontEnd.TextWidth("Mètre", large), 2 * 5 * 90);
}

TEST(NullFrontEnd, HasWindowsWithoutAFrame) {
  NullFrontEnd frontEnd;
  Window window;
  window.Place = {10, 20, 3000, 2000};
  EXPECT_EQ(frontEnd.ScaleWidth(window), 3000);
  EXPECT_EQ(frontEnd.ScaleHeight(window), 2000);
  EXPECT_GT(frontEnd.ToolbarHeight(window), 0);
  EXPECT_GT(frontEnd.StatusBarHeight(window), 0);
}

TEST(NullFrontEnd, ClosesAModalWindowByItself) {
  NullFrontEnd frontEnd;
  Window owner;
  Window window;
  frontEnd.ShowModal(window, owner);
  EXPECT_FALSE(frontEnd.IsLoaded(window));
  EXPECT_FALSE(window.Visible);
}

}  // namespace
}  // namespace tarvo::test
