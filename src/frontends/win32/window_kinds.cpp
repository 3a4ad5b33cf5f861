#include "frontends/win32/window_kinds.h"

#include "frontends/win32/dialog_window.h"
#include "frontends/win32/drivers_window.h"
#include "ui/frm_splash.h"

namespace tarvo::win32 {

bool IsSplash(const Form& form) { return dynamic_cast<const frmSplash*>(&form) != nullptr; }

std::unique_ptr<FormWindow> MakeWindow(Form& form, Seam& seam, HWND owner) {
  if (auto* const mainWindow = dynamic_cast<MainWindow*>(&form))
    return std::make_unique<DriversWindow>(*mainWindow, seam);
  if (IsSplash(form))
    return std::make_unique<DialogWindow>(form, seam, DialogWindow::Kind::kSplash, nullptr);
  return std::make_unique<DialogWindow>(form, seam, DialogWindow::Kind::kDialog, owner);
}

}  // namespace tarvo::win32
