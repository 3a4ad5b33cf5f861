#pragma once

#include <QStatusBar>
#include <QToolBar>
#include <vector>

#include "forms/controls.h"
#include "frontends/qt/dispatcher.h"

class QLabel;

namespace tarvo::qt {

// A window's toolbar.
class ToolbarPane : public QToolBar {
 public:
  ToolbarPane(Toolbar& toolbar, Dispatcher& dispatcher, QWidget* parent);

  // `name` is what the bar is called in the user's language.
  void Sync(const QString& name);

 private:
  QAction* Add(const ToolbarButton& button);

  Toolbar& toolbar_;
  Dispatcher& dispatcher_;
  std::vector<QAction*> actions_;  // in the order of the buttons
};

// A window's status bar. The first panel takes the room that the others leave.
class StatusPane : public QStatusBar {
 public:
  StatusPane(const StatusBar& statusBar, QWidget* parent);

  void Sync(const QString& name);

 private:
  const StatusBar& statusBar_;
  std::vector<QLabel*> panels_;
};

}  // namespace tarvo::qt
