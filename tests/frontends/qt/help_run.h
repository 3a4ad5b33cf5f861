#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

#include "frontends/qt/help_page.h"
#include "screen_run.h"
#include "support/made_help.h"

namespace tarvo::test {

// A whole run with a help file of the test's own beside the program: three English topics and one
// German.
class HelpRun : public ScreenRun {
 protected:
  HelpRun();

  // Writes the registered help file, the usual one or another.
  std::string WriteHelp(const std::string& content = UsualHelp());
  static std::string UsualHelp();

  // Ask for the help; a message in its place fails the test.
  void Contents() {
    WithoutMessage([this] { Entry("mnuHelpContents").trigger(); });
  }
  void Search() {
    WithoutMessage([this] { Entry("mnuHelpSearch").trigger(); });
  }
  static void WithoutMessage(const std::function<void()>& step);

  // Starts the program and opens the help.
  void StartWithContents();
  void StartWithSearch();

  // True once the help window has the keyboard.
  bool HelpIsActive();
  bool HelpIsShown() { return screen.HelpWidget() && screen.HelpWidget()->isVisible(); }

  QWidget& HelpWindow() { return *screen.HelpWidget(); }
  template <class Widget>
  Widget& Part(const char* name) {
    auto* const found = HelpWindow().findChild<Widget*>(name);
    if (!found) throw std::runtime_error(std::string("the help has no ") + name);
    return *found;
  }
  QTabWidget& Tabs() { return Part<QTabWidget>("helpTabs"); }
  QTreeWidget& Tree() { return Part<QTreeWidget>("helpContents"); }
  QLineEdit& Keyword() { return Part<QLineEdit>("helpKeyword"); }
  QListWidget& Index() { return Part<QListWidget>("helpIndex"); }
  qt::HelpPage& Page() { return Part<qt::HelpPage>("helpPage"); }

  // What the window shows.
  std::string PageText() { return Page().toPlainText().toStdString(); }
  std::string ChosenTopic() { return Tree().currentItem()->text(0).toStdString(); }
  std::vector<std::string> IndexTexts();

  // Keys, to the part of the help window that has the keyboard.
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
};

}  // namespace tarvo::test
