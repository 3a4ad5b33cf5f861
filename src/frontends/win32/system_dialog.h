#pragma once

#include "frontends/win32/system.h"

namespace tarvo::win32 {

// Finds the dialog that the system opens in this thread while this lives, such as a message box, so
// that it can be closed when its answer no longer matters. At most one lives at a time.
class SystemDialog {
 public:
  SystemDialog();
  ~SystemDialog();
  SystemDialog(const SystemDialog&) = delete;
  SystemDialog& operator=(const SystemDialog&) = delete;

  // The dialog; null while there is none.
  HWND Window() const;

 private:
  static LRESULT CALLBACK Created(int code, WPARAM wParam, LPARAM lParam) noexcept;

  HHOOK hook_;
  HHOOK outerHook_;
  HWND outerDialog_;
};

}  // namespace tarvo::win32
