#pragma once

#include <string>

namespace tarvo::tools {

// Data that goes between the computer and a device, block by block.
class Transfer {
 public:
  virtual ~Transfer() = default;

  // What is shown while it runs, as "Reading the device's memory ...".
  virtual std::string Activity() const = 0;

  // At least 1.
  virtual int BlockCount() const = 0;

  // Moves the next block; called BlockCount times.
  virtual void MoveBlock() = 0;

  // Called once, when all blocks have been moved: only now are files or settings written. Gives a
  // sentence for the user.
  virtual std::string Finish() = 0;
};

// The course of a transfer: a step at a time, so that whoever drives it keeps the clock.
class TransferCourse {
 public:
  enum class State { kRunning, kDone, kFailed };

  // With `breaks` the connection is lost halfway. The transfer must outlive the object.
  TransferCourse(Transfer& transfer, bool breaks);

  // Moves a block; with the last one the transfer is finished. Does nothing once it is done or has
  // failed. An error of the transfer is a failure; none leaves this function.
  void Step();

  State Now() const { return state_; }
  int Percent() const;
  const std::string& Message() const { return message_; }  // the activity, then the outcome

 private:
  Transfer& transfer_;
  bool breaks_;
  int moved_ = 0;
  State state_ = State::kRunning;
  std::string message_;
};

}  // namespace tarvo::tools
