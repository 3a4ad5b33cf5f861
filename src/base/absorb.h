#pragma once

#include "base/runtime_error.h"

namespace tarvo {

// Runs one step of a procedure that goes on with its next step when this one fails. False when it
// failed.
template <typename Step>
bool Absorb(Step&& step) {
  try {
    step();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace tarvo
