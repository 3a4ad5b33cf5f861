#pragma once

#include <functional>
#include <vector>

#include "frontends/common/handler_guard.h"

class QEventLoop;

namespace tarvo::qt {

// The guard around the windows' handlers, and the event loops that handlers wait in.
class Dispatcher : public HandlerGuard {
 public:
  // Runs the event loop until `isOver`, which is asked at the start and after every handler, or
  // until the program is ending.
  void Wait(const std::function<bool()>& isOver);

  // Asks the waits anew.
  void EndWaitsThatAreOver();

 protected:
  void HandlerHasRun() noexcept override { EndWaitsThatAreOver(); }

 private:
  struct Waiting {
    QEventLoop* loop;
    const std::function<bool()>* isOver;
  };

  std::vector<Waiting> waits_;
};

}  // namespace tarvo::qt
