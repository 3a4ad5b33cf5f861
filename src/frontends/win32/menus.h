#pragma once

#include <list>
#include <vector>

#include "forms/controls.h"
#include "frontends/win32/event_loop.h"
#include "frontends/win32/handles.h"

namespace tarvo::win32 {

// Menus made from a window's entries; what the user chooses runs the entry's handler.
class Menus {
 public:
  explicit Menus(EventLoop& loop) : loop_(loop) {}

  // A menu bar with these menus; to be given to a window, which owns it.
  HMENU MakeBar(const std::vector<MenuItem*>& menus);

  // A menu that pops up; its owner is who asks for it. One entry is bold; none for null.
  MenuHandle MakePopup(MenuItem& menu, const MenuItem* defaultEntry);

  // Brings the menus in line with the entries' state; true when the bar has to be drawn anew.
  bool Sync();

  // Runs the entry that belongs to an identifier of the menus'; nothing for any other.
  void Run(UINT identifier);

 private:
  // A menu of the system's, and the entries that it was made from.
  struct Shown {
    HMENU menu;
    const std::vector<MenuItem*>* items;
    std::vector<const MenuItem*> visible;  // those that are in it, from top to bottom
  };

  void Empty(HMENU menu);
  HMENU Make(const std::vector<MenuItem*>& items, HMENU menu);
  void Fill(Shown& shown);
  bool SyncOne(Shown& shown);
  UINT IdentifierOf(MenuItem& item);

  EventLoop& loop_;
  std::vector<MenuItem*> commands_;  // by identifier
  std::vector<MenuItem*> bar_;
  std::list<Shown> shown_;
};

}  // namespace tarvo::win32
