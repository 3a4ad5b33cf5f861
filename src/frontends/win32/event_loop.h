#pragma once

#include <functional>
#include <vector>

#include "frontends/common/handler_guard.h"
#include "frontends/win32/system.h"

namespace tarvo::win32 {

// The guard around the windows' handlers, and the message loops that handlers wait in.
class EventLoop : public HandlerGuard {
 public:
  // Runs messages until `isOver`, which is asked at the start and after every message, or until the
  // program is ending.
  void Wait(const std::function<bool()>& isOver);

  // Runs the messages that wait.
  void RunWaiting();

  // Returns when a message waits, at the latest after so many seconds.
  void WaitForMessage(double seconds);

  // A wait in a message loop of the system's own (a message box, a menu), as long as it lives: when
  // it is over, or the program is ending, `end` makes that loop return. `end` may be called often.
  class SystemWait {
   public:
    SystemWait(EventLoop& loop, std::function<bool()> isOver, std::function<void()> end);
    ~SystemWait();
    SystemWait(const SystemWait&) = delete;
    SystemWait& operator=(const SystemWait&) = delete;

   private:
    friend class EventLoop;
    EventLoop& loop_;
    std::function<bool()> isOver_;
    std::function<void()> end_;
  };

  // Looks at a message before it is dispatched; true when it is to go no further.
  std::function<bool(MSG&)> Filter;

  // Called between messages when no handler runs.
  std::function<void()> WhenIdle;

 protected:
  void HandlerHasRun() noexcept override;

 private:
  void Dispatch(MSG& message);

  std::vector<SystemWait*> systemWaits_;
};

}  // namespace tarvo::win32
