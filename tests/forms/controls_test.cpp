#include "forms/controls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "error_of.h"
#include "forms/form.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

class ToolbarTest : public ::testing::Test {
 protected:
  ToolbarTest() {
    for (const int group : {0, 1, 1, 1, 2, 2, 0}) {
      ToolbarButton button;
      button.Group = group;
      bar.Buttons.push_back(button);
    }
  }

  std::vector<int> PressedNumbers() const {
    std::vector<int> numbers;
    for (std::size_t i = 0; i < bar.Buttons.size(); ++i) {
      if (bar.Buttons[i].Pressed) numbers.push_back(static_cast<int>(i) + 1);
    }
    return numbers;
  }

  Toolbar bar;
};

TEST_F(ToolbarTest, PressingAButtonReleasesTheOthersOfItsGroup) {
  bar.Press(2);
  EXPECT_THAT(PressedNumbers(), ElementsAre(2));
  bar.Press(4);
  EXPECT_THAT(PressedNumbers(), ElementsAre(4));
  bar.Press(4);
  EXPECT_THAT(PressedNumbers(), ElementsAre(4));
}

TEST_F(ToolbarTest, PressingAButtonLeavesOtherGroupsAlone) {
  bar.Press(2);
  bar.Press(5);
  EXPECT_THAT(PressedNumbers(), ElementsAre(2, 5));
}

TEST_F(ToolbarTest, ButtonsOfNoGroupDoNotReleaseOneAnother) {
  bar.Press(3);
  bar.Press(1);
  bar.Press(7);
  EXPECT_THAT(PressedNumbers(), ElementsAre(1, 3, 7));
}

TEST_F(ToolbarTest, ButtonsAreNumberedFromOne) {
  EXPECT_EQ(ErrorOf([&] { bar.Press(0); }), 35600);
  EXPECT_EQ(ErrorOf([&] { bar.Press(8); }), 35600);
  EXPECT_EQ(ErrorOf([&] { bar.Press(-1); }), 35600);
  EXPECT_THAT(PressedNumbers(), ElementsAre());
}

TEST_F(ToolbarTest, AButtonIsFoundByItsExactKey) {
  bar.Buttons[2].Key = "Download";
  EXPECT_EQ(&bar.ButtonByKey("Download"), &bar.Buttons[2]);
  EXPECT_EQ(ErrorOf([&] { bar.ButtonByKey("download"); }), 35601);
  EXPECT_EQ(ErrorOf([&] { bar.ButtonByKey("Upload"); }), 35601);
}

TEST_F(ToolbarTest, ItsOwnTipIsTranslatedBeforeThoseOfItsButtons) {
  const auto texts = bar.TranslatableTexts();
  ASSERT_EQ(texts.size(), 8u);
  EXPECT_EQ(texts[0], &bar.ToolTipText);
  EXPECT_EQ(texts[1], &bar.Buttons[0].ToolTipText);
  EXPECT_EQ(texts[7], &bar.Buttons[6].ToolTipText);
}

TEST(Controls, HaveTheirVisibleTextsTranslated) {
  MenuItem entry;
  EXPECT_THAT(entry.TranslatableTexts(), ElementsAre(&entry.Caption));
  Label label;
  EXPECT_THAT(label.TranslatableTexts(), ElementsAre(&label.Caption, &label.ToolTipText));
  Button button;
  EXPECT_THAT(button.TranslatableTexts(), ElementsAre(&button.Caption, &button.ToolTipText));
  CommonDialog dialog;
  EXPECT_THAT(dialog.TranslatableTexts(), ElementsAre(&dialog.DialogTitle, &dialog.Filter));
}

TEST(Form, KeepsItsControlsInTheOrderInWhichTheyAreEntered) {
  class Window : public Form {
   public:
    Window() : Form("frmTest", "Test") {
      Enter(second, "lblSecond");
      Enter(first, "lblFirst");
    }
    Label first, second;
  };
  const Window window;
  EXPECT_THAT(window.Controls(), ElementsAre(&window.second, &window.first));
  EXPECT_EQ(window.first.Name, "lblFirst");
  EXPECT_EQ(window.Name, "frmTest");
  EXPECT_EQ(window.Caption, "Test");
  EXPECT_FALSE(window.Visible);
}

}  // namespace
}  // namespace tarvo::test
