#pragma once

#include <memory>

#include "forms/controls.h"
#include "frontends/win32/message_hook.h"

namespace tarvo::win32 {

// A control of a small window. It brings itself in line with the state of one control.
class DialogControl {
 public:
  DialogControl(HWND window, const Control& state) : window_(window), state_(state) {}
  virtual ~DialogControl() = default;

  HWND Window() const { return window_; }
  const Control& State() const { return state_; }

  // Name, place, whether it is enabled and seen, on a screen of that many dots per inch; the font
  // is the window's.
  virtual void Sync(unsigned dotsPerInch, HFONT font);

  // A notification of the control, such as that it has been pressed.
  virtual void Notified(int code) { (void)code; }

  // What a tool tip tells of it.
  virtual std::string ToolTipText() const { return {}; }

 protected:
  HWND window_;

 private:
  const Control& state_;
};

// What draws a control on a window; null for one with nothing to see. Handlers run in `guard`.
std::unique_ptr<DialogControl> MakeDialogControl(Control& control, HandlerGuard& guard, HWND parent,
                                                 int identifier);

}  // namespace tarvo::win32
