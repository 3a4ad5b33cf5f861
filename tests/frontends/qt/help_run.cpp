#include "help_run.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <stdexcept>

namespace tarvo::test {

HelpRun::HelpRun() { Store("Tarvo_ProgramPath", folder.MakeFolder("own")); }

std::string HelpRun::WriteHelp(const std::string& content) {
  return folder.WriteFile("own/TARVO.HLP", content);
}

std::string HelpRun::UsualHelp() {
  const std::string english =
      HelpTopicText("en", "start", "First &amp; <b>foremost", "Begin; data", 1,
                    "<p>The start. <a href=\"#en-fetch\">On</a> <a href=\"#de-fetch\">deutsch</a> "
                    "<a href=\"https://tarvo.example/a\">out</a></p>") +
      HelpTopicText("en", "fetch", "Fetching", "Download; data; Énergie", 2,
                    "<p>How to fetch.</p>") +
      HelpTopicText("en", "end", "The end", "closing", 1, "<h3>End</h3><p>It is over.</p>");
  const std::string german = HelpTopicText("de", "start", "Anfang", "Beginn", 1, "<p>Los.</p>") +
                             HelpTopicText("de", "fetch", "Holen", "Daten", 2);
  return HelpDocument(HelpSectionText("en", english) + HelpSectionText("de", german));
}

void HelpRun::WithoutMessage(const std::function<void()>& step) {
  QTimer guard;
  QObject::connect(&guard, &QTimer::timeout, [] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    ADD_FAILURE() << "a message: " << box->text().toStdString();
    box->close();
  });
  guard.start(5);
  step();
}

void HelpRun::StartWithContents() {
  WriteHelp();
  Start();
  Contents();
  ASSERT_TRUE(HelpIsActive());
}

void HelpRun::StartWithSearch() {
  WriteHelp();
  Start();
  Search();
  ASSERT_TRUE(HelpIsActive());
}

bool HelpRun::HelpIsActive() {
  return WaitFor([this] { return HelpIsShown() && HelpWindow().isActiveWindow(); });
}

std::vector<std::string> HelpRun::IndexTexts() {
  std::vector<std::string> texts;
  for (int row = 0; row < Index().count(); ++row)
    texts.push_back(Index().item(row)->text().toStdString());
  return texts;
}

void HelpRun::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QWidget* const focus = QApplication::focusWidget();
  if (!focus) throw std::runtime_error("no part of a window has the keyboard");
  QTest::keyClick(focus, key, modifiers);
}

}  // namespace tarvo::test
