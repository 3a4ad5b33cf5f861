#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "forms/controls.h"
#include "forms/null_front_end.h"
#include "support/hand_moved_platform.h"
#include "support/made_dictionary.h"
#include "translate/translator.h"

namespace tarvo {
namespace {

using test::MakeDictionary;
using test::Phrases;
using test::PoText;

class Window : public Form {
 public:
  Window() : Form("Window", "Open") {
    Enter(menu, "menu");
    Enter(bar, "bar");
    Enter(label, "label");
    Enter(dialog, "dialog");
    menu.Caption = "&Delete";
    bar.ToolTipText = "Tools";
    bar.Buttons.resize(2);
    bar.Buttons[0].Key = "Delete";
    bar.Buttons[0].ToolTipText = "Delete";
    bar.Buttons[1].ToolTipText = "Unknown";
    label.Caption = "Name";
    label.ToolTipText = "";
    dialog.DialogTitle = "Open";
    dialog.Filter = "Files (*.drv)|*.drv";
    dialog.FileName = "Open";
  }
  using Form::Enter;

  MenuItem menu;
  Toolbar bar;
  Label label;
  CommonDialog dialog;
};

// Notes every value of the mouse pointer.
class PointerNotingFrontEnd : public NullFrontEnd {
 public:
  std::vector<int> pointers;

 protected:
  void PointerChanged(int pointer) override { pointers.push_back(pointer); }
};

class TranslateWindowTest : public testing::Test {
 protected:
  TranslateWindowTest() { platform_.ChangeCurrentFolder(folder_.Path()); }

  void Load(const Phrases& phrases) {
    MakeDictionary(folder_, PoText(phrases));
    translator_.LoadDictionary("TARVO.DIC");
  }

  test::TemporaryFolder folder_;
  test::HandMovedPlatform platform_;
  PointerNotingFrontEnd frontEnd_;
  Library library_{platform_};
  Translator translator_{platform_, frontEnd_, library_};
  Window window_;
};

TEST_F(TranslateWindowTest, EveryTextOfEveryControlIsTranslated) {
  Load({{"Open", "Öffnen"},
        {"&Delete", "&Löschen"},
        {"Tools", "Werkzeuge"},
        {"Delete", "Löschen"},
        {"Name", "Bezeichnung"},
        {"Files (*.drv)|*.drv", "Dateien (*.drv)|*.drv"}});
  translator_.TranslateWindow(window_);
  EXPECT_EQ(window_.Caption, "Öffnen");
  EXPECT_EQ(window_.menu.Caption, "&Löschen");
  EXPECT_EQ(window_.bar.ToolTipText, "Werkzeuge");
  EXPECT_EQ(window_.bar.Buttons[0].ToolTipText, "Löschen");
  EXPECT_EQ(window_.label.Caption, "Bezeichnung");
  EXPECT_EQ(window_.dialog.DialogTitle, "Öffnen");
  EXPECT_EQ(window_.dialog.Filter, "Dateien (*.drv)|*.drv");
}

TEST_F(TranslateWindowTest, NamesKeysAndUnknownTextsStay) {
  Load({{"Open", "Öffnen"}, {"Delete", "Löschen"}, {"label", "x"}, {"Window", "x"}});
  translator_.TranslateWindow(window_);
  EXPECT_EQ(window_.Name, "Window");
  EXPECT_EQ(window_.label.Name, "label");
  EXPECT_EQ(window_.label.ToolTipText, "");
  EXPECT_EQ(window_.bar.Buttons[0].Key, "Delete");
  EXPECT_EQ(window_.bar.Buttons[1].ToolTipText, "Unknown");
  EXPECT_EQ(window_.dialog.FileName, "Open");
}

TEST_F(TranslateWindowTest, AFilterIsLookedUpAsAWhole) {
  Load({{"Files (*.drv)", "Dateien (*.drv)"}});
  translator_.TranslateWindow(window_);
  EXPECT_EQ(window_.dialog.Filter, "Files (*.drv)|*.drv");
}

TEST_F(TranslateWindowTest, AnEmptyTranslationLeavesTheText) {
  Load({{"Open", " "}, {"Name", "  "}});
  translator_.TranslateWindow(window_);
  EXPECT_EQ(window_.Caption, "Open");
  EXPECT_EQ(window_.label.Caption, "Name");
}

TEST_F(TranslateWindowTest, TheHourglassIsShownAndTakenBack) {
  Load({{"Open", "Öffnen"}});
  translator_.TranslateWindow(window_);
  EXPECT_EQ(frontEnd_.pointers, (std::vector<int>{kHourglassPointer, kDefaultPointer}));
}

TEST_F(TranslateWindowTest, WithoutADictionaryOnlyAppTitleIsSet) {
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_EQ(translator_.AppTitle(), "");
  translator_.TranslateWindow(window_);
  EXPECT_EQ(translator_.AppTitle(), "Tarvo");
  EXPECT_EQ(window_.Caption, "Open");
  EXPECT_TRUE(frontEnd_.pointers.empty());
}

TEST_F(TranslateWindowTest, WithoutADictionaryEveryCallSetsAppTitle) {
  // A run that opens its dictionary and then loses it: the title stays the translated one, and the
  // next call takes it.
  Load({{"Tarvo", "Titel"}, {"Titel", "Zweiter"}});
  translator_.TranslateWindow(window_);
  ASSERT_EQ(translator_.AppTitle(), "Titel");
  ASSERT_EQ(translator_.ApplicationTitle(), "Zweiter");
  translator_.LoadDictionary("missing.dic");
  translator_.TranslateWindow(window_);
  EXPECT_EQ(translator_.AppTitle(), "Zweiter");
}

TEST_F(TranslateWindowTest, WithADictionaryOnlyTheFirstCallSetsAppTitleAndTranslatesItAgain) {
  Load({{"Tarvo", "Titel"}, {"Titel", "Zweiter"}, {"Zweiter", "Dritter"}});
  EXPECT_EQ(translator_.ApplicationTitle(), "Titel");
  translator_.TranslateWindow(window_);
  EXPECT_EQ(translator_.AppTitle(), "Titel");
  EXPECT_EQ(translator_.ApplicationTitle(), "Zweiter");
  translator_.TranslateWindow(window_);
  EXPECT_EQ(translator_.AppTitle(), "Titel");
  EXPECT_EQ(translator_.ApplicationTitle(), "Zweiter");
}

TEST_F(TranslateWindowTest, AWindowWithoutControlsIsTranslatedToo) {
  class Bare : public Form {
   public:
    Bare() : Form("Bare", "Open") {}
  } bare;
  Load({{"Open", "Öffnen"}});
  translator_.TranslateWindow(bare);
  EXPECT_EQ(bare.Caption, "Öffnen");
}

}  // namespace
}  // namespace tarvo
