#pragma once

#include <windows.h>

#include <memory>

namespace tarvo {

// Gives a kernel object back; what marks the absence of one is not given back.
struct CloseKernelHandle {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) ::CloseHandle(handle);
  }
};

// A file, process, event or another kernel object. Functions that open files give
// INVALID_HANDLE_VALUE when they fail, the others a null handle.
using KernelHandle = std::unique_ptr<HANDLE, CloseKernelHandle>;

inline bool IsOpen(const KernelHandle& handle) {
  return handle && handle.get() != INVALID_HANDLE_VALUE;
}

}  // namespace tarvo
