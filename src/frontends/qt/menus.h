#pragma once

#include <QMenu>
#include <QMenuBar>
#include <vector>

#include "forms/controls.h"
#include "frontends/qt/dispatcher.h"

namespace tarvo::qt {

// Menus made from a window's entries; what the user chooses runs the entry's handler.
class Menus {
 public:
  explicit Menus(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}

  // Adds a menu to the bar.
  void Add(QMenuBar& bar, MenuItem& menu);

  // Fills a popup menu; gives the action of `entry`, null when it is not in there.
  QAction* Fill(QMenu& popup, MenuItem& menu, const MenuItem* entry);

  void Sync();

 private:
  struct Shown {
    MenuItem* item;
    QAction* action;
  };

  void Add(QMenu& menu, MenuItem& item);
  static void Sync(const Shown& shown);

  Dispatcher& dispatcher_;
  std::vector<Shown> shown_;
};

}  // namespace tarvo::qt
