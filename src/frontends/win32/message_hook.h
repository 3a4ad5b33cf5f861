#pragma once

#include <functional>
#include <optional>

#include "frontends/common/handler_guard.h"
#include "frontends/win32/system.h"

namespace tarvo::win32 {

struct Message {
  UINT id;
  WPARAM wParam;
  LPARAM lParam;
};

// Sees the messages of a window, or of a control, before the window itself does, as long as both
// live. No exception gets out: one ends the program.
class MessageHook {
 public:
  // Gives the message's result, or nothing to leave it to the window.
  using Handler = std::function<std::optional<LRESULT>(const Message&)>;

  MessageHook(HWND window, HandlerGuard& guard, Handler handler);
  ~MessageHook();
  MessageHook(const MessageHook&) = delete;
  MessageHook& operator=(const MessageHook&) = delete;

  // What the window itself does with a message; to be called by the handler only.
  LRESULT Default(const Message& message) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR number, DWORD_PTR hook) noexcept;

  HWND window_;
  HandlerGuard& guard_;
  Handler handler_;
};

}  // namespace tarvo::win32
