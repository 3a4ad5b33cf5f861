#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/controls.h"
#include "frontends/common/twips.h"
#include "frontends/win32/event_loop.h"
#include "frontends/win32/handles.h"
#include "frontends/win32/message_hook.h"

namespace tarvo::win32 {

// A window's toolbar. With the focus, the arrow keys lead from button to button, Enter and the
// space bar press one.
class ToolbarPane {
 public:
  ToolbarPane(Toolbar& toolbar, EventLoop& loop, HWND parent, int identifier);

  HWND Window() const { return window_; }

  // Height in pixels, margins included, visible or not.
  int Height() const;

  // Where the bar stands in a window of that width: inside its margins.
  PixelBounds PlaceIn(int width) const;

  // `name` is what the bar is called in the user's language.
  void Sync(std::string_view name);

  // Takes pictures of the size that belongs to the screen.
  void SetDotsPerInch(unsigned dotsPerInch);

  // The user has pressed the button with that command identifier.
  void Pressed(int command);

  // A notification of the toolbar.
  std::optional<LRESULT> Notified(NMHDR& notification);

 private:
  void Add(std::size_t number);
  void SetWidths(int width);
  void SyncButton(std::size_t number);
  std::optional<LRESULT> HandleKey(const Message& message);
  void MoveHotButton(int step);
  bool CanBePressed(int number) const;
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }

  Toolbar& toolbar_;
  EventLoop& loop_;
  HWND window_;
  MessageHook hook_;
  ImagesHandle images_;
  ImagesHandle disabledImages_;
  unsigned dotsPerInch_ = 0;
  std::vector<std::string> texts_;  // of the buttons, as the control knows them
};

}  // namespace tarvo::win32
