#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QTest>
#include <QTimer>

#include "base/runtime_error.h"
#include "help_run.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class HelpFailures : public HelpRun {
 protected:
  struct Message {
    std::string text;
    std::string title;
    QMessageBox::Icon icon = QMessageBox::Critical;
    QMessageBox::StandardButtons buttons;
  };

  // Asks for help; gives the message that is shown instead.
  Message MessageOf(const std::function<void()>& request) {
    Message message;
    WhenDialogAppears([&](QWidget& dialog) {
      auto& box = dynamic_cast<QMessageBox&>(dialog);
      message = {box.text().toStdString(), box.windowTitle().toStdString(), box.icon(),
                 box.standardButtons()};
      box.button(QMessageBox::Ok)->click();
    });
    request();
    EXPECT_EQ(message.buttons, QMessageBox::Ok);
    EXPECT_EQ(message.title, "Tarvo");
    EXPECT_EQ(screen.Failure(), "") << "the program goes on";
    EXPECT_FALSE(QApplication::activeModalWidget());
    return message;
  }
  Message MessageOfContents() {
    return MessageOf([this] { Entry("mnuHelpContents").trigger(); });
  }
  Message MessageOfSearch() {
    return MessageOf([this] { Entry("mnuHelpSearch").trigger(); });
  }
};

TEST_F(HelpFailures, AForeignFileIsRefusedByItsNameForBothCommands) {
  const std::string file = WriteHelp("<!DOCTYPE html><html><body>Another</body></html>");
  Start();
  for (const Message& message : {MessageOfContents(), MessageOfSearch()}) {
    EXPECT_EQ(message.text,
              "The help file \"" + file + "\" cannot be used: it is no help file of Tarvo.");
    EXPECT_EQ(message.icon, QMessageBox::NoIcon);
  }
  EXPECT_FALSE(screen.HelpWidget()) << "nothing else is shown";
}

TEST_F(HelpFailures, ARefusalIsAnInvalidFileFormat) {
  const std::string file = WriteHelp("");
  Start();
  try {
    screen.ShowHelp(State(), {file, HelpCommand::kContents, {}, "en"});
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidFileFormat);
  }
  EXPECT_FALSE(screen.HelpWidget());
}

TEST_F(HelpFailures, AFileThatIsCutShortIsRefused) {
  const std::string whole = UsualHelp();
  WriteHelp(whole.substr(0, whole.size() / 2));
  Start();
  EXPECT_THAT(MessageOfContents().text, HasSubstr("it is cut short or damaged."));
  EXPECT_FALSE(screen.HelpWidget());
}

TEST_F(HelpFailures, AFileThatHasGoneSinceTheStartIsToldAsMissing) {
  const std::string file = WriteHelp();
  Start();
  std::filesystem::remove(file);
  EXPECT_THAT(MessageOfContents().text, StartsWith("File not found"));
  EXPECT_THAT(MessageOfSearch().text, StartsWith("File not found"));
  EXPECT_FALSE(screen.HelpWidget());
}

TEST_F(HelpFailures, WithoutAFileAtTheStartThereIsNoHelpAssociated) {
  Start();
  WriteHelp();
  for (const Message& message : {MessageOfContents(), MessageOfSearch()}) {
    EXPECT_EQ(message.text,
              "Unable to display Help Contents. There is no Help associated with this "
              "application.");
    EXPECT_EQ(message.icon, QMessageBox::Information);
  }
  EXPECT_FALSE(screen.HelpWidget());
}

TEST_F(HelpFailures, TheOpenWindowStaysAsItWasWhenTheFileIsDamagedLater) {
  StartWithContents();
  Page().ShowTopic("end");
  WriteHelp("damaged");
  EXPECT_THAT(MessageOfSearch().text, HasSubstr("is no help file of Tarvo"));
  EXPECT_TRUE(HelpIsShown());
  EXPECT_THAT(PageText(), HasSubstr("It is over."));
  EXPECT_EQ(Tabs().currentIndex(), 0);
  HelpWindow().activateWindow();
  ASSERT_TRUE(HelpIsActive());
  Press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_THAT(PageText(), HasSubstr("The start.")) << "what was read before can still be read";
}

TEST_F(HelpFailures, AFileThatIsReplacedLaterIsShownAnewFromItsFirstTopic) {
  StartWithContents();
  Page().ShowTopic("end");
  WriteHelp(HelpDocument(
      HelpSectionText("en", HelpTopicText("en", "new", "New", "fresh", 1, "<p>Fresh.</p>"))));
  Search();
  EXPECT_EQ(PageText(), "Fresh.");
  EXPECT_FALSE(Part<QToolButton>("helpBack").isEnabled()) << "the old topics are gone";
  EXPECT_THAT(IndexTexts(), ::testing::ElementsAre("fresh", "New"));
}

TEST_F(HelpFailures, AViewerThatCannotBeStartedIsToldWithF1AndContentsAndShowsNoHelp) {
  Store("Lumet_ProgramPath", folder.MakeFolder("sibling"));
  Store("Vista", "yes");
  WriteHelp();
  Start();
  List().setFocus();
  for (const Message& message :
       {MessageOfContents(), MessageOf([this] { QTest::keyClick(&List(), Qt::Key_F1); })}) {
    EXPECT_EQ(message.text, "Help file could not be loaded.");
    EXPECT_EQ(message.icon, QMessageBox::Warning);
  }
  EXPECT_FALSE(screen.HelpWidget());
  Search();
  EXPECT_TRUE(HelpIsActive());
}

TEST_F(HelpFailures, F1OpensNoHelpForAnyOtherSettingThanTheExactYes) {
  WriteHelp();
  Store("Vista", "Yes");
  Start();
  List().setFocus();
  WithoutMessage([this] { QTest::keyClick(&List(), Qt::Key_F1); });
  EXPECT_FALSE(screen.HelpWidget());
  Contents();
  EXPECT_TRUE(HelpIsActive()) << "\"Yes\" does not ask for the viewer";
}

// A download tool that runs until the test lets it end.
class HelpDuringADownload : public HelpRun {
 protected:
  HelpDuringADownload() {
    Driver("Meter");
    const std::string gate = folder / "gate";
    if (mkfifo(gate.c_str(), 0600) == 0) gate_ = open(gate.c_str(), O_RDWR | O_CLOEXEC);
    if (gate_ < 0) throw std::runtime_error("no gate");
    folder.WriteProgram(InDrivers("Meter/Download.EXE"), "read line < '" + gate + "'\n");
    WriteHelp();
  }
  ~HelpDuringADownload() override {
    EndTool();
    close(gate_);
  }
  void EndTool() { EXPECT_EQ(write(gate_, "\n", 1), 1); }

  // Starts the download of the driver; runs `meanwhile` once the program waits for its tool.
  void Download(const std::function<void()>& meanwhile) {
    screen.RunGuarded([this] {
      ListItem& item = State().lvListView.ItemAt(1);
      State().lvListView.Select(&item);
      State().lvListView_ItemClick(item);
    });
    ASSERT_TRUE(Entry("mnuFileDownload").isEnabled());
    QTimer::singleShot(0, &Window(), [this, meanwhile] {
      meanwhile();
      EndTool();
    });
    QTimer clock;  // the program's clock goes fast, so that it soon sees the tool's end
    QObject::connect(&clock, &QTimer::timeout, [this] { platform.PassSeconds(1); });
    clock.start(5);
    Entry("mnuFileDownload").trigger();
  }

 private:
  int gate_ = -1;
};

TEST_F(HelpDuringADownload, OpensAndIsUsedWhileTheMainWindowWaits) {
  Start();
  bool used = false;
  Download([&] {
    Search();
    ASSERT_TRUE(HelpIsActive());
    Keyword().setText("download");
    Press(Qt::Key_Return);
    EXPECT_EQ(PageText(), "How to fetch.");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(HelpIsShown());
    Contents();
    ASSERT_TRUE(HelpIsActive());
    used = true;
  });
  EXPECT_TRUE(used);
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_TRUE(HelpIsShown()) << "the end of the tool leaves the help alone";
}

TEST_F(HelpDuringADownload, ClosingTheMainWindowClosesItAndEndsTheWait) {
  Start();
  bool closed = false;
  Download([&] {
    Contents();
    ASSERT_TRUE(HelpIsActive());
    Window().close();
    closed = true;
  });
  EXPECT_TRUE(closed);
  EXPECT_EQ(screen.Failure(), "");
  EXPECT_TRUE(screen.LoadedForms().empty());
  EXPECT_FALSE(screen.HelpWidget());
}

}  // namespace
}  // namespace tarvo::test
