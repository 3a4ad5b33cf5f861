#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QMainWindow>
#include <QMessageBox>
#include <QToolButton>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/start/tarvo.h"
#include "frontends/qt/qt_front_end.h"
#include "support/program_run.h"

namespace tarvo::test {

// Runs events until the condition holds; false when it does not within ten seconds.
bool WaitFor(const std::function<bool()>& condition);

// Lets `answer` have the next dialog that waits for the user.
void WhenDialogAppears(const std::function<void(QWidget&)>& answer);

// Presses a button of the next message box; its text is put in `text`.
void AnswerMessage(QMessageBox::StandardButton button, QString* text = nullptr);

// A whole run with the real widgets.
class ScreenRun : public ProgramRun {
 protected:
  ScreenRun();
  ~ScreenRun() override;

  // Runs the start procedure in the guard; the main window is on the screen afterwards.
  void Start(const std::string& arguments = {});

  frmDrivers& State() { return run->MainForm(); }
  QMainWindow& Window();
  QAction& Entry(const char* name);
  QToolButton& Tool(const char* key);
  QAbstractItemView& List();
  template <class Widget>
  Widget& Find(const char* name) {
    auto* const found = Window().findChild<Widget*>(name);
    if (!found) throw std::runtime_error(std::string("there is no widget ") + name);
    return *found;
  }

  // What the list shows in its first column, or in all columns, a text for each row.
  std::vector<std::string> ShownNames();
  std::vector<std::string> ShownRow(int row);

  std::string Stored(std::string_view key);
  void Store(std::string_view key, std::string_view value);

  qt::QtFrontEnd screen;
  std::unique_ptr<Tarvo> run;
};

}  // namespace tarvo::test
