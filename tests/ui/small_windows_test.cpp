#include "support/made_dictionary.h"
#include "support/program_run.h"
#include "ui/frm_about.h"
#include "ui/frm_splash.h"

namespace tarvo::test {
namespace {

// Every text is as wide as the test says, in proportion to the font's size.
class WideFrontEnd : public NullFrontEnd {
 public:
  using NullFrontEnd::TextWidth;
  float TextWidth(std::string_view, const Font& font) override { return widthPerPoint * font.Size; }
  float widthPerPoint = 0;
};

class TheSplash : public ProgramRun {
 protected:
  TheSplash() : globals(platform, wide, ""), splash(globals), designWidth(splash.Place.Width) {}

  // The width that is free to the right of the name's left edge.
  float Room() const { return splash.framainframe.Place.Width - splash.lblProductName.Place.Left; }

  WideFrontEnd wide;
  Globals globals;
  frmSplash splash;
  float designWidth;
};

TEST_F(TheSplash, ShowsTitleAndVersion) {
  wide.Load(splash);
  EXPECT_EQ(splash.lblProductName.Caption, "Tarvo");
  EXPECT_EQ(splash.lblVersion.Caption, "Version 2.1.35");
}

TEST_F(TheSplash, LeavesAShortTitleAtItsFontAndWidth) {
  wide.widthPerPoint = 10;
  wide.Load(splash);
  EXPECT_FLOAT_EQ(splash.lblProductName.Font.Size, 26.25F);
  EXPECT_EQ(splash.Place.Width, designWidth);
}

TEST_F(TheSplash, ShrinksTheFontUntilTheTitleFits) {
  wide.widthPerPoint = Room() / 24;
  wide.Load(splash);
  EXPECT_FLOAT_EQ(splash.lblProductName.Font.Size, 23.25F);
  EXPECT_EQ(splash.Place.Width, designWidth);
}

TEST_F(TheSplash, GrowsByTheOverflowBeforeTheTenthReductionWhenTenAreNotEnough) {
  const float room = Room();
  wide.widthPerPoint = room / 10;
  const float frameWidth = splash.framainframe.Place.Width;
  wide.Load(splash);
  EXPECT_FLOAT_EQ(splash.lblProductName.Font.Size, 16.25F);
  const float overflow = wide.widthPerPoint * 17.25F - room;
  EXPECT_NEAR(splash.framainframe.Place.Width, frameWidth + overflow, 0.1);
  EXPECT_NEAR(splash.Place.Width, designWidth + overflow, 0.1);
}

TEST_F(TheSplash, ShrinksOnceMoreAtAnExactFitButDoesNotGrow) {
  class ExactFit : public NullFrontEnd {
   public:
    using NullFrontEnd::TextWidth;
    float TextWidth(std::string_view, const Font&) override { return width; }
    float width = 0;
  } exact;
  exact.width = Room();
  Globals other(platform, exact, "");
  frmSplash fitting(other);
  exact.Load(fitting);
  EXPECT_FLOAT_EQ(fitting.lblProductName.Font.Size, 16.25F)
      << "an overflow of 0 counts as not fitting";
  EXPECT_EQ(fitting.Place.Width, designWidth) << "but widens nothing";
}

class TheAboutWindow : public ProgramRun {
 protected:
  TheAboutWindow() : globals(platform, frontEnd, ""), about(globals) {}
  Globals globals;
  frmAbout about;
};

TEST_F(TheAboutWindow, ShowsTitleVersionAndNotices) {
  frontEnd.Load(about);
  EXPECT_EQ(about.Caption, "About Tarvo");
  EXPECT_EQ(about.lblTitle.Caption, "Tarvo");
  EXPECT_EQ(about.lblVersion.Caption, "Version 2.1.35");
  EXPECT_EQ(about.lblDisclaimer.Caption, "Warning: ...");
  EXPECT_THAT(about.lblCopyright.Caption, ::testing::HasSubstr("Halvex Limited"));
}

TEST_F(TheAboutWindow, IsTranslatedOnceHoweverOftenItIsOpened) {
  std::filesystem::current_path(folder.Path());
  MakeDictionary(folder, PoText({{"About Tarvo", "OK"}, {"OK", "Warning: ..."}}));
  globals.translator.LoadDictionary("TARVO.DIC");
  for (int i = 0; i < 2; ++i) {
    frontEnd.Load(about);
    EXPECT_EQ(about.Caption, "OK");
    EXPECT_EQ(about.cmdOK.Caption, "Warning: ...");
    frontEnd.Unload(about);
  }
}

TEST_F(TheAboutWindow, ClosesOnEnterAndEscapeByItsButton) {
  EXPECT_TRUE(about.cmdOK.IsDefault);
  EXPECT_TRUE(about.cmdOK.IsCancel);
}

TEST_F(TheAboutWindow, ClosesWithItsButton) {
  frontEnd.Load(about);
  about.cmdOK.Click();
  EXPECT_FALSE(frontEnd.IsLoaded(about));
}

}  // namespace
}  // namespace tarvo::test
