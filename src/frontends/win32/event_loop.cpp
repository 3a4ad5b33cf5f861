#include "frontends/win32/event_loop.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvo::win32 {

EventLoop::SystemWait::SystemWait(EventLoop& loop, std::function<bool()> isOver,
                                  std::function<void()> end)
    : loop_(loop), isOver_(std::move(isOver)), end_(std::move(end)) {
  loop_.systemWaits_.push_back(this);
}

EventLoop::SystemWait::~SystemWait() {
  auto& waits = loop_.systemWaits_;
  waits.erase(std::remove(waits.begin(), waits.end(), this), waits.end());
}

// A request to quit that somebody posts has no meaning here: the program ends with its windows.
void EventLoop::Wait(const std::function<bool()>& isOver) {
  MSG message;
  while (!IsEnding() && !isOver()) {
    if (GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  }
}

void EventLoop::RunWaiting() {
  MSG message;
  while (!IsEnding() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message != WM_QUIT) Dispatch(message);
  }
}

void EventLoop::WaitForMessage(double seconds) {
  constexpr double kLongest = 3600;
  const double milliseconds = std::ceil(std::clamp(seconds, 0.0, kLongest) * 1000);
  MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(milliseconds), QS_ALLINPUT,
                              MWMO_INPUTAVAILABLE);
}

void EventLoop::Dispatch(MSG& message) {
  if (!Filter || !Filter(message)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (!IsRunning() && WhenIdle) WhenIdle();
}

void EventLoop::HandlerHasRun() noexcept {
  for (const SystemWait* wait : systemWaits_) {
    if (IsEnding() || wait->isOver_()) wait->end_();
  }
}

}  // namespace tarvo::win32
