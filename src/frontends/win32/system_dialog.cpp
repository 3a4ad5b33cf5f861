#include "frontends/win32/system_dialog.h"

#include <utility>

namespace tarvo::win32 {
namespace {

// The system's hooks carry nothing of their own. There is one thread with windows.
HHOOK presentHook = nullptr;
HWND presentDialog = nullptr;

bool IsDialog(HWND window) {
  constexpr int kNameSize = 16;
  wchar_t name[kNameSize] = {};
  GetClassNameW(window, name, kNameSize);
  return lstrcmpW(name, L"#32770") == 0;
}

}  // namespace

SystemDialog::SystemDialog()
    : hook_(SetWindowsHookExW(WH_CBT, &Created, nullptr, GetCurrentThreadId())),
      outerHook_(std::exchange(presentHook, hook_)),
      outerDialog_(std::exchange(presentDialog, nullptr)) {}

SystemDialog::~SystemDialog() {
  UnhookWindowsHookEx(hook_);
  presentHook = outerHook_;
  presentDialog = outerDialog_;
}

HWND SystemDialog::Window() const { return presentDialog; }

LRESULT CALLBACK SystemDialog::Created(int code, WPARAM wParam, LPARAM lParam) noexcept {
  const auto window = FromNumber<HWND>(wParam);
  if (code == HCBT_ACTIVATE && !presentDialog && IsDialog(window)) presentDialog = window;
  if (code == HCBT_DESTROYWND && presentDialog == window) presentDialog = nullptr;
  return CallNextHookEx(presentHook, code, wParam, lParam);
}

}  // namespace tarvo::win32
