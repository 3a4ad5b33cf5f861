#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "base/runtime_error.h"
#include "help_run.h"
#include "support/made_dictionary.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int kContentsPage = 0;
constexpr int kSearchPage = 1;

using HelpWindowTest = HelpRun;

TEST_F(HelpWindowTest, ContentsShowTheTreeOfTopicsAndTheFirstTopic) {
  StartWithContents();
  EXPECT_EQ(HelpWindow().windowTitle(), "Help (en)");
  EXPECT_EQ(Tabs().currentIndex(), kContentsPage);
  ASSERT_EQ(Tree().topLevelItemCount(), 2);
  const QTreeWidgetItem& first = *Tree().topLevelItem(0);
  EXPECT_EQ(first.text(0), "First & <b>foremost");
  ASSERT_EQ(first.childCount(), 1);
  EXPECT_EQ(first.child(0)->text(0), "Fetching");
  EXPECT_TRUE(first.isExpanded());
  EXPECT_EQ(Tree().topLevelItem(1)->text(0), "The end");
  EXPECT_TRUE(Tree().hasFocus());
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  EXPECT_EQ(ChosenTopic(), "First & <b>foremost");
}

TEST_F(HelpWindowTest, TheTreeShowsTopicsByKeyboardAndByMouse) {
  StartWithContents();
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_EQ(PageText(), "How to fetch.");
  const QRect place = Tree().visualItemRect(Tree().topLevelItem(1));
  QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
  EXPECT_THAT(PageText(), HasSubstr("It is over."));
}

TEST_F(HelpWindowTest, SearchShowsTheWholeIndexAndWaitsForAKeyword) {
  StartWithSearch();
  EXPECT_EQ(Tabs().currentIndex(), kSearchPage);
  EXPECT_EQ(Keyword().text(), "");
  EXPECT_TRUE(Keyword().hasFocus());
  EXPECT_THAT(IndexTexts(), ElementsAre("Begin", "closing", "data \u2013 Fetching",
                                        "data \u2013 First & <b>foremost", "Download", "Énergie",
                                        "Fetching", "First & <b>foremost", "The end"));
  EXPECT_EQ(Index().currentRow(), 0);
  EXPECT_FALSE(Part<QLabel>("helpNothing").isVisible());
  EXPECT_THAT(PageText(), HasSubstr("The start.")) << "nothing is chosen yet";
}

TEST_F(HelpWindowTest, ThePartOfAKeywordFindsItInAnyLetterCaseAndAccent) {
  StartWithSearch();
  QTest::keyClicks(&Keyword(), "ENE");
  EXPECT_THAT(IndexTexts(), ElementsAre("Énergie"));
  Keyword().setText("  e  ");
  EXPECT_EQ(IndexTexts().front(), "Énergie") << "what begins with it comes before";
  EXPECT_THAT(IndexTexts(),
              ElementsAre("Énergie", "Begin", "Fetching", "First & <b>foremost", "The end"));
}

TEST_F(HelpWindowTest, EnterShowsTheTopicThatTheArrowKeysChoseWhileTyping) {
  StartWithSearch();
  QTest::keyClicks(&Keyword(), "data");
  Press(Qt::Key_Return);
  EXPECT_EQ(PageText(), "How to fetch.");
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  EXPECT_TRUE(Keyword().hasFocus());
  EXPECT_EQ(Keyword().text(), "data");
}

TEST_F(HelpWindowTest, TheButtonAndADoubleClickShowTheChosenTopic) {
  StartWithSearch();
  Keyword().setText("closing");
  Part<QPushButton>("helpShow").click();
  EXPECT_THAT(PageText(), HasSubstr("It is over."));
  Keyword().setText("download");
  const QPoint place = Index().visualItemRect(Index().item(0)).center();
  QTest::mouseClick(Index().viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QTest::mouseDClick(Index().viewport(), Qt::LeftButton, Qt::NoModifier, place);
  EXPECT_EQ(PageText(), "How to fetch.");
}

TEST_F(HelpWindowTest, AKeywordThatNoTopicHasIsToldAndShowsNothing) {
  StartWithSearch();
  QTest::keyClicks(&Keyword(), "<zz>");
  EXPECT_EQ(Index().count(), 0);
  EXPECT_TRUE(Part<QLabel>("helpNothing").isVisible());
  EXPECT_EQ(Part<QLabel>("helpNothing").text(), "&nothing <en>");
  EXPECT_FALSE(Part<QPushButton>("helpShow").isEnabled());
  Press(Qt::Key_Return);
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  Keyword().clear();
  EXPECT_EQ(Index().count(), 9);
  EXPECT_FALSE(Part<QLabel>("helpNothing").isVisible());
}

TEST_F(HelpWindowTest, EveryRequestUsesTheWindowThatIsOpen) {
  StartWithContents();
  const QWidget* const first = screen.HelpWidget();
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  Window().activateWindow();
  ASSERT_TRUE(WaitFor([this] { return Window().isActiveWindow(); }));
  Search();
  ASSERT_TRUE(HelpIsActive());
  EXPECT_EQ(screen.HelpWidget(), first);
  EXPECT_EQ(Tabs().currentIndex(), kSearchPage);
  EXPECT_EQ(PageText(), "How to fetch.") << "what one reads stays";
  Keyword().setText("closing");
  Contents();
  EXPECT_EQ(Tabs().currentIndex(), kContentsPage);
  EXPECT_TRUE(Tree().hasFocus());
  EXPECT_EQ(ChosenTopic(), "Fetching");
  Search();
  EXPECT_EQ(Keyword().text(), "") << "the search begins anew";
  EXPECT_EQ(QApplication::topLevelWidgets().count(&HelpWindow()), 1);
}

TEST_F(HelpWindowTest, ARequestBringsTheMinimisedWindowBack) {
  StartWithContents();
  HelpWindow().showMinimized();
  ASSERT_TRUE(WaitFor([this] { return HelpWindow().isMinimized(); }));
  Contents();
  EXPECT_TRUE(HelpIsActive());
  EXPECT_FALSE(HelpWindow().isMinimized());
}

TEST_F(HelpWindowTest, EscapeClosesItWhereverTheKeyboardIs) {
  StartWithContents();
  const QWidget* const first = screen.HelpWidget();
  for (const char* name : {"helpContents", "helpPage", "helpKeyword", "helpIndex"}) {
    Search();
    ASSERT_TRUE(HelpIsActive()) << name;
    auto& part = Part<QWidget>(name);
    Tabs().setCurrentIndex(std::string(name) == "helpContents" ? kContentsPage : kSearchPage);
    part.setFocus();
    ASSERT_EQ(QApplication::focusWidget(), &part) << name;
    Press(Qt::Key_Escape);
    EXPECT_FALSE(HelpIsShown()) << name;
    EXPECT_TRUE(Window().isVisible()) << name;
  }
  Contents();
  EXPECT_TRUE(HelpIsActive());
  EXPECT_EQ(screen.HelpWidget(), first);
}

TEST_F(HelpWindowTest, ClosingItLeavesTheMainWindow) {
  StartWithContents();
  HelpWindow().close();
  EXPECT_FALSE(HelpIsShown());
  EXPECT_TRUE(screen.IsLoaded(State()));
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(HelpWindowTest, ClosesWithTheMainWindowAndLetsTheProgramEnd) {
  StartWithContents();
  QMetaObject::invokeMethod(&Window(), "close", Qt::QueuedConnection);
  screen.RunEventLoop();
  EXPECT_TRUE(screen.LoadedForms().empty());
  EXPECT_FALSE(screen.HelpWidget());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  for (const QWidget* const window : QApplication::topLevelWidgets())
    EXPECT_NE(window->objectName(), "helpWindow");
}

TEST_F(HelpWindowTest, GoesWithAnErrorThatEndsTheProgram) {
  StartWithContents();
  State().mnuViewOptions.Click = [] { throw RuntimeError(kPermissionDenied); };
  QMetaObject::invokeMethod(&Entry("mnuViewOptions"), "trigger", Qt::QueuedConnection);
  screen.RunEventLoop();
  screen.DiscardWindows();
  EXPECT_EQ(screen.Failure(), RuntimeError(kPermissionDenied).StandardMessage());
  EXPECT_FALSE(screen.HelpWidget());
}

TEST_F(HelpWindowTest, RunsNoHandlerOfTheMainWindowsKeys) {
  Store("Vista", "yes");
  WriteHelp();
  Start();
  Search();
  ASSERT_TRUE(HelpIsActive());
  WithoutMessage([this] { Press(Qt::Key_F1); });
  EXPECT_TRUE(HelpIsShown());
  EXPECT_EQ(screen.Failure(), "");
}

TEST_F(HelpWindowTest, IsInTheLanguageOfTheDictionary) {
  MakeDictionary(folder, "msgid \"\"\nmsgstr \"Language: de_AT\\n\"\n", {}, "start/TARVO.DIC");
  WriteHelp();
  Start();
  Contents();
  ASSERT_TRUE(HelpIsActive());
  EXPECT_EQ(HelpWindow().windowTitle(), "Help (de)");
  EXPECT_EQ(Tabs().tabText(kContentsPage), "&contents <de>");
  EXPECT_EQ(Tabs().tabText(kSearchPage), "&search <de>");
  EXPECT_EQ(PageText(), "Los.");
}

TEST_F(HelpWindowTest, EveryPartHasANameForScreenReaders) {
  StartWithContents();
  const std::pair<const char*, const char*> names[] = {
      {"helpTabs", "Help (en)"},           {"helpContents", "contents <en>"},
      {"helpKeyword", "keyword <en>"},     {"helpIndex", "&index <en>"},
      {"helpPage", "First & <b>foremost"}, {"helpBack", "back <en>"},
      {"helpForward", "forward <en>"},     {"helpLarger", "larger <en>"},
      {"helpSmaller", "smaller <en>"},
  };
  for (const auto& [part, name] : names) EXPECT_EQ(Part<QWidget>(part).accessibleName(), name);
  EXPECT_EQ(Part<QLabel>("helpKeywordLabel").buddy(), &Keyword());
}

}  // namespace
}  // namespace tarvo::test
