#pragma once

#include <QWidget>
#include <memory>

#include "frontends/qt/form_window.h"

namespace tarvo::qt {

bool IsSplash(const Form& form);

// The window that draws a form: the main window, the splash window or a dialog of `owner`.
std::unique_ptr<FormWindow> MakeWindow(Form& form, Seam& seam, QWidget* owner);

}  // namespace tarvo::qt
