#include "frontends/win32/dialog_window.h"

#include <algorithm>

#include "frontends/common/twips.h"
#include "frontends/win32/child_window.h"
#include "frontends/win32/fonts.h"

namespace tarvo::win32 {
namespace {

constexpr int kFirstControl = 100;

// An empty dialog as the system reads it from memory: no menu, no class of its own, no title.
struct EmptyDialog {
  DLGTEMPLATE dialog;
  WORD menu, windowClass, title;
};

INT_PTR CALLBACK LeaveItToTheDialog(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

HWND MakeDialog(DialogWindow::Kind kind, HWND owner) {
  EmptyDialog shape{};
  if (kind == DialogWindow::Kind::kSplash) {
    shape.dialog.style = WS_POPUP | WS_BORDER | WS_CLIPCHILDREN;
    shape.dialog.dwExtendedStyle = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
  } else {
    shape.dialog.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | WS_CLIPCHILDREN;
    shape.dialog.dwExtendedStyle = WS_EX_DLGMODALFRAME;
  }
  return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &shape.dialog, owner,
                                    &LeaveItToTheDialog, 0);
}

RECT WorkAreaAround(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return monitor.rcWork;
}

}  // namespace

DialogWindow::DialogWindow(Form& form, Seam& seam, Kind kind, HWND owner)
    : FormWindow(form, seam, MakeDialog(kind, owner)), kind_(kind), owner_(owner) {
  int identifier = kFirstControl;
  for (Control* control : form.Controls()) {
    auto drawn = MakeDialogControl(*control, seam.loop, Window(), identifier);
    if (!drawn) continue;
    const auto* const button = dynamic_cast<const Button*>(control);
    if (button && button->IsDefault)
      SendMessageW(Window(), DM_SETDEFID, static_cast<WPARAM>(identifier), 0);
    controls_.push_back(std::move(drawn));
    ++identifier;
  }
  font_ = MakeFont(Font(), DotsPerInch());
  TakeIcons();
}

void DialogWindow::Sync() {
  FormWindow::Sync();
  SyncSize();
  for (const auto& control : controls_) {
    control->Sync(DotsPerInch(), font_.Get());
    toolTips_.Set(control->Window(), control->ToolTipText());
  }
}

void DialogWindow::SyncSize() {
  const PixelBounds inner = Scale(DotsPerInch()).ToPixels(form_.Place);
  RECT outer{0, 0, std::max(inner.width, 1), std::max(inner.height, 1)};
  AdjustWindowRectExForDpi(&outer, static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE)),
                           FALSE, static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_EXSTYLE)),
                           DotsPerInch());
  const int width = outer.right - outer.left;
  const int height = outer.bottom - outer.top;
  const PixelBounds now = BoundsOf(Window());
  if (now.width == width && now.height == height) return;
  SetWindowPos(Window(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void DialogWindow::Show() {
  Sync();
  if (shown_) {
    ShowWindow(Window(), SW_SHOW);
    return;
  }
  shown_ = true;
  Centre();
  AwaitFirstActivation();
  if (kind_ == Kind::kSplash) {
    ShowWindow(Window(), SW_SHOWNOACTIVATE);
  } else {
    ShowWindow(Window(), SW_SHOW);
    ChooseFocus();
  }
}

void DialogWindow::Centre() {
  const RECT limits = WorkAreaAround(owner_);
  PixelBounds around{limits.left, limits.top, limits.right - limits.left,
                     limits.bottom - limits.top};
  if (owner_ && !IsIconic(owner_)) around = BoundsOf(owner_);
  const PixelBounds size = BoundsOf(Window());
  const auto place = [](int from, int length, int own, LONG first, LONG last) {
    const LONG middle = from + (length - own) / 2;
    return static_cast<int>(std::max(first, std::min(middle, last - own)));
  };
  SetWindowPos(Window(), nullptr,
               place(around.left, around.width, size.width, limits.left, limits.right),
               place(around.top, around.height, size.height, limits.top, limits.bottom), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// A list first, else the button that Enter presses.
void DialogWindow::ChooseFocus() {
  HWND chosen = nullptr;
  for (const auto& control : controls_) {
    const auto* const button = dynamic_cast<const Button*>(&control->State());
    if (button && button->IsDefault && !chosen) chosen = control->Window();
    if (dynamic_cast<const FileListBox*>(&control->State())) chosen = control->Window();
  }
  if (chosen) SetFocus(chosen);
}

std::optional<LRESULT> DialogWindow::HandleMessage(const Message& message) {
  switch (message.id) {
    case WM_COMMAND:
      Command(LOWORD(message.wParam), HIWORD(message.wParam));
      return 0;
    case WM_DPICHANGED:
      font_ = MakeFont(Font(), DotsPerInch());
      Sync();
      return 0;
    default:
      return FormWindow::HandleMessage(message);
  }
}

// Escape presses the cancel button; without one it does nothing.
void DialogWindow::Command(int identifier, int code) {
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    const auto* const button = dynamic_cast<const Button*>(&controls_[i]->State());
    const bool isCancel = identifier == IDCANCEL && button && button->IsCancel;
    if (!isCancel && identifier != kFirstControl + static_cast<int>(i)) continue;
    controls_[i]->Notified(isCancel ? BN_CLICKED : code);
    return;
  }
}

bool DialogWindow::Navigates(MSG& message) { return IsDialogMessageW(Window(), &message); }

}  // namespace tarvo::win32
