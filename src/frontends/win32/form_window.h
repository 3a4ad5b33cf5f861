#pragma once

#include <optional>

#include "forms/form.h"
#include "frontends/win32/handles.h"
#include "frontends/win32/message_hook.h"
#include "frontends/win32/seam.h"
#include "frontends/win32/tool_tips.h"

namespace tarvo::win32 {

// A window on the screen: draws a form's state and calls its handlers.
class FormWindow {
 public:
  // Takes the window over.
  FormWindow(Form& form, Seam& seam, HWND window);
  virtual ~FormWindow() = default;
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  const Form& State() const { return form_; }
  HWND Window() const { return window_.Get(); }
  bool IsOpen() const { return !closed_; }

  // Brings the window in line with the form's state. Cheap when nothing has changed.
  virtual void Sync();

  virtual void Show() = 0;

  // Draws the present state at once; no handler runs.
  void Repaint();

  // Takes the window off the screen. The form may go away afterwards.
  virtual void Close();

  // A key message to the window or to one of its controls; true when it is to go no further.
  bool TakesKey(MSG& message);

  // In pixels: the size between menu and frame, and of the bars whether they are seen or not.
  virtual SIZE InnerSize();
  virtual int ToolbarHeight() { return 0; }
  virtual int StatusBarHeight() { return 0; }

  unsigned DotsPerInch() const { return GetDpiForWindow(Window()); }

 protected:
  // A message to the window; gives its result, or nothing to leave it to the system.
  virtual std::optional<LRESULT> HandleMessage(const Message& message);

  // Moves the focus and presses buttons by keys; true when the message is to go no further.
  virtual bool Navigates(MSG& message) = 0;

  LRESULT Default(const Message& message) const { return hook_.Default(message); }

  // Takes the program's icons in the sizes that belong to the screen.
  void TakeIcons();

  // To be called right before the window is shown for the first time.
  void AwaitFirstActivation() { awaitsFirstActivation_ = true; }

  Form& form_;
  Seam& seam_;
  ToolTips toolTips_;

 private:
  bool SwallowsKey(int key);
  void ActivationChanged(bool active);

  WindowHandle window_;
  MessageHook hook_;
  IconHandle icon_, smallIcon_;
  bool active_ = false;
  bool awaitsFirstActivation_ = false;
  bool lostToOwnDialog_ = false;
  bool closed_ = false;
};

}  // namespace tarvo::win32
