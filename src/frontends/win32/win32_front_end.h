#pragma once

#include <memory>
#include <string>
#include <vector>

#include "forms/front_end.h"
#include "frontends/win32/event_loop.h"
#include "frontends/win32/form_window.h"
#include "frontends/win32/seam.h"

namespace tarvo::win32 {

// The front end with the system's own controls.
class Win32FrontEnd : public FrontEnd {
 public:
  Win32FrontEnd();
  ~Win32FrontEnd() override;

  // Runs what calls handlers from outside the event loop, such as the start procedure.
  void RunGuarded(const std::function<void()>& procedure) { loop_.Run(procedure); }

  // Runs the event loop until no window is loaded or an error ends the program.
  void RunEventLoop();

  // The standard message of the error that ends the program; "" while there is none.
  const std::string& Failure() const { return loop_.Failure(); }

  // Takes every window off the screen without running a handler: the windows' states may go away.
  void DiscardWindows();

  // What draws a window; null for one that has not been drawn.
  HWND WindowShowing(const Form& form) const;

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
  class DialogOnScreen;

  FormWindow* Find(const Form& form) const;
  FormWindow& WindowOf(const Form& form);
  HWND Owner() const;
  void SyncAll();
  void SyncPointer();
  void EnableOthers(const FormWindow* modal, bool enabled);
  bool TakesKey(MSG& message);

  EventLoop loop_;
  Seam seam_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
  std::vector<std::unique_ptr<FormWindow>> closed_;  // off the screen, perhaps in an event still
  std::vector<const Form*> modal_;                   // from the outermost to the innermost
  int shownPointer_ = kDefaultPointer;
};

}  // namespace tarvo::win32
