#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "frontends/qt/dispatcher.h"
#include "frontends/qt/form_window.h"
#include "frontends/qt/seam.h"

namespace tarvo::qt {

class HelpWindow;

// The front end with the toolkit's widgets. Needs the application object, and lives no longer.
class QtFrontEnd : public FrontEnd {
 public:
  QtFrontEnd();
  ~QtFrontEnd() override;

  // Runs what calls handlers from outside the event loop, such as the start procedure.
  void RunGuarded(const std::function<void()>& procedure) { dispatcher_.Run(procedure); }

  // Runs the event loop until no window is loaded or an error ends the program.
  void RunEventLoop();

  // The standard message of the error that ends the program; "" while there is none.
  const std::string& Failure() const { return dispatcher_.Failure(); }

  // Takes every window off the screen without running a handler: the windows' states may go away.
  void DiscardWindows();

  // The help window; null when there is none.
  QWidget* HelpWidget() const;

  // What draws a window; null for one that has not been drawn.
  QWidget* WidgetOf(const Form& form) const;

  void Repaint(Form& form) override;
  void Yield() override;
  void YieldUntilEvent(double seconds) override;
  Answer MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                std::string_view title) override;
  void ShowOpen(CommonDialog& dialog) override;
  void PopupMenu(MenuItem& menu, const MenuItem* defaultEntry) override;
  void ShowHelp(Form& owner, const HelpRequest& request) override;
  float TextWidth(std::string_view text) override;
  float TextWidth(std::string_view text, const Font& font) override;
  float ScaleWidth(const Form& form) override;
  float ScaleHeight(const Form& form) override;
  float ToolbarHeight(const Form& form) override;
  float StatusBarHeight(const Form& form) override;

 protected:
  void ShowWindow(Form& form) override;
  void RunModally(Form& form, Form& owner) override;
  void CloseWindow(Form& form) override;
  void PointerChanged(int pointer) override;

 private:
  FormWindow* Find(const Form& form) const;
  FormWindow& WindowOf(const Form& form);
  QWidget* Owner() const;
  void SyncAll();
  void SyncPointer();
  void WaitForDialog(const bool& finished);
  void CloseHelpOf(const Form& form);

  Dispatcher dispatcher_;
  Seam seam_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
  std::unique_ptr<HelpWindow> help_;
  const Form* helpOwner_ = nullptr;
};

}  // namespace tarvo::qt
