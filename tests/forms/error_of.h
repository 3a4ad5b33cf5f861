#pragma once

#include <functional>

#include "base/runtime_error.h"

namespace tarvo::test {

// The number of the RuntimeError that a step throws; 0 when it throws none.
inline int ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace tarvo::test
