#include "frontends/win32/message_hook.h"

#include <utility>

namespace tarvo::win32 {

MessageHook::MessageHook(HWND window, HandlerGuard& guard, Handler handler)
    : window_(window), guard_(guard), handler_(std::move(handler)) {
  SetWindowSubclass(window_, &Procedure, reinterpret_cast<UINT_PTR>(this),
                    reinterpret_cast<DWORD_PTR>(this));
}

MessageHook::~MessageHook() {
  if (window_) RemoveWindowSubclass(window_, &Procedure, reinterpret_cast<UINT_PTR>(this));
}

LRESULT MessageHook::Default(const Message& message) const {
  return DefSubclassProc(window_, message.id, message.wParam, message.lParam);
}

LRESULT CALLBACK MessageHook::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR number, DWORD_PTR hook) noexcept {
  auto& self = *FromNumber<MessageHook*>(hook);
  if (id == WM_NCDESTROY) {
    RemoveWindowSubclass(window, &Procedure, number);
    self.window_ = nullptr;
    return DefSubclassProc(window, id, wParam, lParam);
  }
  std::optional<LRESULT> result;
  self.guard_.Protect([&] { result = self.handler_({id, wParam, lParam}); });
  return result ? *result : DefSubclassProc(window, id, wParam, lParam);
}

}  // namespace tarvo::win32
