#pragma once

#include <vector>

#include "frontends/win32/dialog_controls.h"

namespace tarvo::win32 {

// Draws a file list and keeps its selected and current entries in line with what the user does.
class FileList : public DialogControl {
 public:
  FileList(FileListBox& list, HandlerGuard& guard, HWND parent, int identifier);

  void Sync(unsigned dotsPerInch, HFONT font) override;
  void Notified(int code) override;
  std::string ToolTipText() const override { return list_.ToolTipText; }

 private:
  std::optional<LRESULT> HandleMessage(const Message& message);
  void TakeOver(HFONT font);
  void TellState();
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }

  FileListBox& list_;
  HandlerGuard& guard_;
  MessageHook hook_;
  std::vector<FileListBox::Entry> shown_;
};

}  // namespace tarvo::win32
