#pragma once

#include <memory>

#include "frontends/win32/form_window.h"

namespace tarvo::win32 {

bool IsSplash(const Form& form);

// The window that draws a form: the main window, the splash window or a dialog of `owner`.
std::unique_ptr<FormWindow> MakeWindow(Form& form, Seam& seam, HWND owner);

}  // namespace tarvo::win32
