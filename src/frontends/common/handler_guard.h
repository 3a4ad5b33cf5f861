#pragma once

#include <functional>
#include <string>

namespace tarvo {

// Unwinds the handlers that wait for an event or an answer once the program is ending. It is no
// std::exception, so that a handler which absorbs errors does not absorb this.
struct ProgramEnding {};

// The one guard around the windows' handlers.
//
// An error that leaves a handler is remembered, every wait ends, and no further handler runs; no
// exception gets into the windowing system.
class HandlerGuard {
 public:
  HandlerGuard() = default;
  virtual ~HandlerGuard() = default;
  HandlerGuard(const HandlerGuard&) = delete;
  HandlerGuard& operator=(const HandlerGuard&) = delete;

  // Runs a handler, then AfterHandler. Nothing while the program is ending or held.
  void Run(const std::function<void()>& handler) noexcept;

  // Runs what serves the windowing system, such as drawing, held or not. An error ends the program.
  void Protect(const std::function<void()>& service) noexcept;

  // Whether a handler is running.
  bool IsRunning() const { return running_ > 0; }

  bool IsEnding() const { return ending_; }

  // The standard message of the error that ended the program; "" while there is none.
  const std::string& Failure() const { return failure_; }

  // To be called by whatever waits inside a handler when its wait is over.
  void ThrowIfEnding() const;

  // Lets no handler run while it lives: for drawing in the middle of one.
  class Hold {
   public:
    explicit Hold(HandlerGuard& guard) : guard_(guard) { ++guard_.held_; }
    ~Hold() { --guard_.held_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    HandlerGuard& guard_;
  };

  // Brings the windows in line with their state.
  std::function<void()> AfterHandler;

 protected:
  // Called when a handler has run, with an error or without: waits may be over now.
  virtual void HandlerHasRun() noexcept {}

 private:
  void Fail(std::string message);

  std::string failure_;
  bool ending_ = false;
  int held_ = 0;
  int running_ = 0;
};

}  // namespace tarvo
