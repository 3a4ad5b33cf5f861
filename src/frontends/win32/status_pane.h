#pragma once

#include <string>
#include <vector>

#include "forms/controls.h"
#include "frontends/win32/system.h"

namespace tarvo::win32 {

// A window's status bar. The first panel takes the room that the others leave.
class StatusPane {
 public:
  StatusPane(const StatusBar& statusBar, HWND parent, int identifier);

  HWND Window() const { return window_; }

  // Height in pixels, visible or not.
  int Height() const;

  void SetTextFont(HFONT font);
  void Sync();

  // To be called when the bar has got another width.
  void PlacePanels();

 private:
  const StatusBar& statusBar_;
  HWND window_;
  HFONT font_ = nullptr;
  std::vector<std::wstring> texts_;  // as the control shows them
  int width_ = -1;                   // that the panels were placed for
};

}  // namespace tarvo::win32
