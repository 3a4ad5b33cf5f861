#include "tools/transfer.h"

#include "base/runtime_error.h"

namespace tarvo::tools {

TransferCourse::TransferCourse(Transfer& transfer, bool breaks)
    : transfer_(transfer), breaks_(breaks), message_(transfer.Activity()) {}

void TransferCourse::Step() {
  if (state_ != State::kRunning) return;
  const int count = transfer_.BlockCount();
  if (breaks_ && moved_ >= count / 2) {
    state_ = State::kFailed;
    message_ = "The connection to the device was lost.";
    return;
  }
  try {
    transfer_.MoveBlock();
    if (++moved_ < count) return;
    message_ = transfer_.Finish();
    state_ = State::kDone;
  } catch (const RuntimeError& error) {
    state_ = State::kFailed;
    message_ = error.Description();
  }
}

int TransferCourse::Percent() const { return 100 * moved_ / transfer_.BlockCount(); }

}  // namespace tarvo::tools
