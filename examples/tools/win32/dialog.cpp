#include "tools/win32/dialog.h"

// After it: uses its types.
#include <commctrl.h>

#include "base/runtime_error.h"
#include "platform/windows/wide_text.h"

namespace tarvo::tools {

namespace {

constexpr UINT_PTR kTimer = 1;

}  // namespace

void Dialog::Show(int layout, std::string_view title) {
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS;
  InitCommonControlsEx(&classes);
  title_ = Wide(title);
  const INT_PTR shown = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(layout),
                                        nullptr, &Procedure, reinterpret_cast<LPARAM>(this));
  if (error_) std::rethrow_exception(error_);
  if (shown <= 0) throw RuntimeError(kDeviceIoError, "The window cannot be shown");
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    reinterpret_cast<Dialog*>(lParam)->window_ = window;
  }
  auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
  if (!dialog) return FALSE;
  try {
    return dialog->Handle(message, wParam) ? TRUE : FALSE;
  } catch (...) {
    dialog->error_ = std::current_exception();
    dialog->Close();
    return TRUE;
  }
}

bool Dialog::Handle(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetWindowTextW(window_, title_.c_str());
      Opened();
      return true;
    case WM_COMMAND:
      if (HIWORD(wParam) != BN_CLICKED) return false;
      Pressed(LOWORD(wParam));
      return true;
    case WM_TIMER:
      TimePassed();
      return true;
    default:
      return false;
  }
}

void Dialog::SetText(int control, std::string_view text) const {
  SetDlgItemTextW(window_, control, Wide(text).c_str());
}

std::string Dialog::TextOf(int control) const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(Item(control))) + 1, L'\0');
  text.resize(GetDlgItemTextW(window_, control, text.data(), static_cast<int>(text.size())));
  return Narrow(text);
}

void Dialog::StartTimer(unsigned milliseconds) const {
  SetTimer(window_, kTimer, milliseconds, nullptr);
}

void Dialog::StopTimer() const { KillTimer(window_, kTimer); }

void Dialog::PressLater(int button) const {
  PostMessageW(window_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
               reinterpret_cast<LPARAM>(Item(button)));
}

void Dialog::Close() const {
  StopTimer();
  EndDialog(window_, 1);
}

int ShownOrExplained(const Tool& tool, const ToolOptions& options,
                     const std::function<int()>& show) {
  try {
    return show();
  } catch (const RuntimeError& error) {
    if (options.closes) throw;
    MessageBoxW(nullptr, Wide(error.Description()).c_str(), Wide(tool.DriverName()).c_str(),
                MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
    return 1;
  }
}

}  // namespace tarvo::tools
