#include "frontends/qt/help_window.h"
#include "frontends/qt/qt_front_end.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {

// The file is read anew each time: it may have been replaced while the program runs.
void QtFrontEnd::ShowHelp(Form& owner, const HelpRequest& request) {
  dispatcher_.ThrowIfEnding();
  const HelpFile file = ReadHelpFile(SystemPlatform(), request.file);
  InstallUserLanguage();
  if (!help_) help_ = std::make_unique<HelpWindow>();
  helpOwner_ = &owner;
  help_->Show(file, request);
}

QWidget* QtFrontEnd::HelpWidget() const { return help_.get(); }

void QtFrontEnd::CloseHelpOf(const Form& form) {
  if (!help_ || helpOwner_ != &form) return;
  // Closing it may activate a window that is closed by this, so it may be in one of its own events.
  help_->hide();
  help_.release()->deleteLater();
}

}  // namespace tarvo::qt
