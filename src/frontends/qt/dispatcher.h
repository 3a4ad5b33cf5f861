#pragma once

#include <functional>
#include <string>
#include <vector>

class QEventLoop;

namespace tarvo::qt {

// Unwinds the handlers that wait for an event or an answer once the program is ending. It is no
// std::exception, so that a handler which absorbs errors does not absorb this.
struct ProgramEnding {};

// The one guard around the windows' handlers, and the event loops that handlers wait in.
//
// An error that leaves a handler is remembered, every wait ends, and no further handler runs; no
// exception gets into the toolkit.
class Dispatcher {
 public:
  // Runs a handler, then AfterHandler. Nothing while the program is ending or held.
  void Run(const std::function<void()>& handler) noexcept;

  bool IsEnding() const { return ending_; }

  // The standard message of the error that ended the program; "" while there is none.
  const std::string& Failure() const { return failure_; }

  // To be called by whatever waits inside a handler when its wait is over.
  void ThrowIfEnding() const;

  // Runs the event loop until `isOver`, which is asked at the start and after every handler, or
  // until the program is ending.
  void Wait(const std::function<bool()>& isOver);

  // Asks the waits anew.
  void EndWaitsThatAreOver();

  // Lets no handler run while it lives: for drawing in the middle of one.
  class Hold {
   public:
    explicit Hold(Dispatcher& dispatcher) : dispatcher_(dispatcher) { ++dispatcher_.held_; }
    ~Hold() { --dispatcher_.held_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    Dispatcher& dispatcher_;
  };

  // Brings the windows in line with their state.
  std::function<void()> AfterHandler;

 private:
  struct Waiting {
    QEventLoop* loop;
    const std::function<bool()>* isOver;
  };

  void Fail(std::string message);

  std::vector<Waiting> waits_;
  std::string failure_;
  bool ending_ = false;
  int held_ = 0;
};

}  // namespace tarvo::qt
