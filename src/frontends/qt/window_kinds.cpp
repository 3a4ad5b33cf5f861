#include "frontends/qt/window_kinds.h"

#include "frontends/qt/dialog_window.h"
#include "frontends/qt/drivers_window.h"
#include "ui/frm_splash.h"

namespace tarvo::qt {

bool IsSplash(const Form& form) { return dynamic_cast<const frmSplash*>(&form) != nullptr; }

std::unique_ptr<FormWindow> MakeWindow(Form& form, Seam& seam, QWidget* owner) {
  if (auto* const mainWindow = dynamic_cast<MainWindow*>(&form))
    return std::make_unique<DriversWindow>(*mainWindow, seam);
  if (IsSplash(form))
    return std::make_unique<DialogWindow>(form, seam, DialogWindow::Kind::kSplash, nullptr);
  return std::make_unique<DialogWindow>(form, seam, DialogWindow::Kind::kDialog, owner);
}

}  // namespace tarvo::qt
