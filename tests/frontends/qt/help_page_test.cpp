#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>

#include "help_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Keeps what is asked of the desktop.
class Desktop : public QObject {
  Q_OBJECT

 public:
  Desktop() { QDesktopServices::setUrlHandler("https", this, "Open"); }
  ~Desktop() override { QDesktopServices::unsetUrlHandler("https"); }
  Q_SLOT void Open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }
  std::vector<std::string> opened;
};

class HelpPageTest : public HelpRun {
 protected:
  // Clicks the link of that text.
  void Follow(const char* text) {
    const QTextCursor found = Page().document()->find(text);
    ASSERT_FALSE(found.isNull()) << text;
    QTextCursor middle = found;
    middle.setPosition((found.selectionStart() + found.selectionEnd()) / 2);
    QTest::mouseClick(Page().viewport(), Qt::LeftButton, Qt::NoModifier,
                      Page().cursorRect(middle).center());
  }
  bool CanGoBack() { return Part<QToolButton>("helpBack").isEnabled(); }
  bool CanGoForward() { return Part<QToolButton>("helpForward").isEnabled(); }

  // How high the first line is drawn, in pixels.
  double TextHeight() {
    const QTextBlock block = Page().document()->firstBlock();
    return Page().document()->documentLayout()->blockBoundingRect(block).height();
  }
  void Wheel(int eighthsOfADegree, Qt::KeyboardModifiers modifiers) {
    const QPointF place(5, 5);
    QWheelEvent turn(place, Page().viewport()->mapToGlobal(place), {}, {0, eighthsOfADegree},
                     Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(Page().viewport(), &turn);
  }
};

TEST_F(HelpPageTest, ALinkShowsItsTopicAndTheTreeFollows) {
  StartWithContents();
  Follow("On");
  EXPECT_EQ(PageText(), "How to fetch.");
  EXPECT_EQ(ChosenTopic(), "Fetching");
  EXPECT_EQ(Page().accessibleName(), "Fetching");
}

TEST_F(HelpPageTest, LinksToTheOutsideGoToTheDesktop) {
  StartWithContents();
  const Desktop desktop;
  Follow("out");
  EXPECT_THAT(desktop.opened, ElementsAre("https://tarvo.example/a"));
  EXPECT_EQ(ChosenTopic(), "First & <b>foremost");
  EXPECT_FALSE(CanGoBack());
}

TEST_F(HelpPageTest, ALinkIntoAnotherLanguageDoesNothing) {
  StartWithContents();
  const Desktop desktop;
  Follow("deutsch");
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  EXPECT_THAT(desktop.opened, IsEmpty());
}

TEST_F(HelpPageTest, NothingIsFetchedFromAnywhere) {
  StartWithContents();
  const std::string picture = folder.WriteFile("picture.png", "a file");
  for (const QUrl& address :
       {QUrl("topic:nowhere"), QUrl("https://tarvo.example/a.png"),
        QUrl::fromLocalFile(QString::fromStdString(picture)), QUrl("data:image/png;base64,AAAA")}) {
    const QVariant fetched = Page().document()->resource(QTextDocument::ImageResource, address);
    EXPECT_TRUE(fetched.toByteArray().isEmpty()) << address.toString().toStdString();
  }
}

TEST_F(HelpPageTest, BackAndForwardGoThroughWhatWasShown) {
  StartWithContents();
  EXPECT_FALSE(CanGoBack() || CanGoForward());
  Follow("On");
  Page().ShowTopic("end");
  EXPECT_TRUE(CanGoBack());
  EXPECT_FALSE(CanGoForward());
  Press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(PageText(), "How to fetch.");
  EXPECT_EQ(ChosenTopic(), "Fetching");
  EXPECT_TRUE(CanGoBack() && CanGoForward());
  Part<QToolButton>("helpBack").click();
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  EXPECT_FALSE(CanGoBack());
  Press(Qt::Key_Right, Qt::AltModifier);
  Part<QToolButton>("helpForward").click();
  EXPECT_THAT(PageText(), HasSubstr("It is over."));
  EXPECT_FALSE(CanGoForward());
}

TEST_F(HelpPageTest, TheKeysForBackAndForwardWorkWhileAKeywordIsTyped) {
  StartWithSearch();
  Keyword().setText("download");
  Press(Qt::Key_Return);
  EXPECT_EQ(PageText(), "How to fetch.");
  Press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_THAT(PageText(), HasSubstr("The start."));
  EXPECT_EQ(Keyword().text(), "download");
}

TEST_F(HelpPageTest, ATopicThatIsShownAgainIsNoStepBack) {
  StartWithContents();
  Page().ShowTopic("start");
  EXPECT_FALSE(CanGoBack());
}

TEST_F(HelpPageTest, TheKeysMakeTheTextLargerSmallerAndUsualAgain) {
  StartWithContents();
  const double usual = TextHeight();
  Press(Qt::Key_Plus, Qt::ControlModifier);
  Press(Qt::Key_Equal, Qt::ControlModifier);
  EXPECT_EQ(Page().Zoom(), 120);
  EXPECT_GT(TextHeight(), usual);
  Press(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(Page().Zoom(), 110);
  Press(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(Page().Zoom(), 100);
  EXPECT_EQ(TextHeight(), usual);
}

TEST_F(HelpPageTest, TheButtonsMakeTheTextLargerAndSmallerUpToTheLimits) {
  StartWithContents();
  for (int i = 0; i < 40; ++i) Part<QToolButton>("helpLarger").click();
  EXPECT_EQ(Page().Zoom(), qt::HelpPage::kLargestZoom);
  const double largest = TextHeight();
  for (int i = 0; i < 40; ++i) Part<QToolButton>("helpSmaller").click();
  EXPECT_EQ(Page().Zoom(), qt::HelpPage::kSmallestZoom);
  EXPECT_LT(TextHeight(), largest);
}

TEST_F(HelpPageTest, TheWheelMakesTheTextLargerWithTheControlKeyOnly) {
  StartWithContents();
  Wheel(120, Qt::NoModifier);
  EXPECT_EQ(Page().Zoom(), 100);
  Wheel(240, Qt::ControlModifier);
  EXPECT_EQ(Page().Zoom(), 120);
  for (int i = 0; i < 3; ++i) Wheel(-40, Qt::ControlModifier);
  EXPECT_EQ(Page().Zoom(), 110) << "three parts of a step are one";
}

TEST_F(HelpPageTest, TheSizeOfTheTextStaysFromTopicToTopicAndFromRequestToRequest) {
  StartWithContents();
  const double usual = TextHeight();
  Press(Qt::Key_Plus, Qt::ControlModifier);
  Page().ShowTopic("fetch");
  EXPECT_GT(TextHeight(), usual);
  Press(Qt::Key_Escape);
  Contents();
  ASSERT_TRUE(HelpIsActive());
  EXPECT_EQ(Page().Zoom(), 110);
}

// The help that comes with the program.
class BuiltHelpOnTheScreen : public HelpPageTest {
 protected:
  void Show(const std::string& language) {
    if (!run) Start();
    screen.ShowHelp(State(), {HELP_FILE, HelpCommand::kContents, {}, language});
    ASSERT_TRUE(HelpIsActive());
  }
  std::vector<QTreeWidgetItem*> Topics() {
    std::vector<QTreeWidgetItem*> items;
    for (QTreeWidgetItemIterator item(&Tree()); *item; ++item) items.push_back(*item);
    return items;
  }
  // The links of the page, without those to the outside.
  std::vector<std::string> InnerLinks() {
    std::vector<std::string> links;
    for (QTextBlock block = Page().document()->begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QString link = part.fragment().charFormat().anchorHref();
        if (link.startsWith('#')) links.push_back(link.toStdString());
      }
    }
    return links;
  }
};

TEST_F(BuiltHelpOnTheScreen, ShowsEveryTopicOfEveryLanguage) {
  for (const char* language : {"en", "de", "fr", "es"}) {
    Show(language);
    EXPECT_GT(Topics().size(), 20U) << language;
    for (QTreeWidgetItem* const item : Topics()) {
      emit Tree().itemActivated(item, 0);
      const std::string title = item->text(0).toStdString();
      EXPECT_EQ(ChosenTopic(), title) << language;
      EXPECT_EQ(Page().document()->firstBlock().text().toStdString(), title) << language;
      EXPECT_GT(PageText().size(), title.size() + 60) << language << ": " << title;
    }
  }
}

TEST_F(BuiltHelpOnTheScreen, EveryLinkOfEveryLanguageLeadsToItsTopic) {
  for (const char* language : {"en", "de", "fr", "es"}) {
    Show(language);
    int followed = 0;
    for (QTreeWidgetItem* const item : Topics()) {
      const auto topic = item->data(0, Qt::UserRole).toString().toStdString();
      Page().ShowTopic(topic);
      for (const std::string& link : InnerLinks()) {
        emit Page().anchorClicked(QUrl(QString::fromStdString(link)));
        EXPECT_EQ(link, "#" + std::string(language) + "-" + Page().Topic().id) << topic;
        ++followed;
        Page().ShowTopic(topic);
      }
    }
    EXPECT_GT(followed, 40) << language;
  }
}

TEST_F(BuiltHelpOnTheScreen, NoTopicIsWiderThanTheWindow) {
  for (const char* language : {"en", "de", "fr", "es"}) {
    Show(language);
    for (QTreeWidgetItem* const item : Topics()) {
      Page().ShowTopic(item->data(0, Qt::UserRole).toString().toStdString());
      EXPECT_LE(Page().document()->size().width(), Page().viewport()->width())
          << language << ": " << item->text(0).toStdString();
    }
  }
}

}  // namespace
}  // namespace tarvo::test

#include "help_page_test.moc"
