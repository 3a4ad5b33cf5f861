#pragma once

#include "frontends/win32/message_hook.h"

namespace tarvo::win32 {

// What the user does to a list. Rows are counted from 0. The list's state may be gone after each of
// these.
class ListGestures {
 public:
  virtual ~ListGestures() = default;
  virtual void ItemChosen(int row) = 0;
  virtual void ItemDoubleClicked(int row) = 0;
  virtual void MouseReleased(int button) = 0;  // 1 left, 2 right, 4 middle
  virtual bool KeyTyped(int character) = 0;    // false when the key is swallowed
  virtual void MenuKeyPressed(POINT screenPosition) = 0;
};

// Tells the gestures on a list view of the system's from everything else that selects items: the
// program, the focus, a screen reader. One item is selected at most, and only another takes its
// place.
class ListGestureHook {
 public:
  ListGestureHook(HWND list, HandlerGuard& guard, ListGestures& gestures);

 private:
  std::optional<LRESULT> HandleMessage(const Message& message);
  void MouseDown(const Message& message);
  std::optional<LRESULT> MouseUp(int button);
  void DoubleClick(const Message& message);
  std::optional<LRESULT> Key(const Message& message);
  void MenuKey();
  LRESULT Moving(const Message& message);
  int RowAt(LPARAM position) const;
  int RowThatIs(UINT state) const;

  HWND list_;
  ListGestures& gestures_;
  MessageHook hook_;
};

}  // namespace tarvo::win32
