#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <string>
#include <string_view>

#include "tools/tool.h"

namespace tarvo::tools {

// A window whose layout is one of the program's resources. An error in one of its functions closes
// it and comes out of Show.
class Dialog {
 public:
  virtual ~Dialog() = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Shows the window with the number `layout` until it is closed.
  void Show(int layout, std::string_view title);

 protected:
  Dialog() = default;

  virtual void Opened() = 0;
  // A button is pressed; IDCANCEL also comes from Escape and the close box.
  virtual void Pressed(int button) = 0;
  virtual void TimePassed() {}

  HWND Item(int control) const { return GetDlgItem(window_, control); }
  void SetText(int control, std::string_view text) const;
  std::string TextOf(int control) const;
  // Calls TimePassed again and again.
  void StartTimer(unsigned milliseconds) const;
  void StopTimer() const;
  // As if the user had pressed it, once the window can be seen.
  void PressLater(int button) const;
  void Close() const;

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  bool Handle(UINT message, WPARAM wParam);

  HWND window_ = nullptr;
  std::wstring title_;
  std::exception_ptr error_;
};

// What `show` gives. Should it fail, the user reads why, unless the windows are to answer
// themselves, and 1 is given.
int ShownOrExplained(const Tool& tool, const ToolOptions& options,
                     const std::function<int()>& show);

}  // namespace tarvo::tools
