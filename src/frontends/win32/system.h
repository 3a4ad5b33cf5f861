#pragma once

// The system's own headers, in the order that they need.
#include <windows.h>
//
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <uxtheme.h>
#include <windowsx.h>

// A leftover of 16-bit systems that would eat the front end's function of that name.
#undef Yield

namespace tarvo::win32 {

// A pointer or handle that the system passes on as a number.
template <class Pointer, class Number>
Pointer FromNumber(Number number) {
  return reinterpret_cast<Pointer>(number);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace tarvo::win32
