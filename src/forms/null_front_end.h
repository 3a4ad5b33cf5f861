#pragma once

#include "forms/front_end.h"

namespace tarvo {

// A front end with nothing to see: windows live and their handlers run, messages answer themselves
// with the choice that changes nothing. It serves the terminal program and the tests, which
// override what they ask about. Every character is six pixels wide and a window's frame takes
// nothing away.
class NullFrontEnd : public FrontEnd {
 public:
  void Repaint(Form&) override {}
  void Yield() override {}
  void YieldUntilEvent(double) override {}
  Answer MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                std::string_view title) override;
  void ShowOpen(CommonDialog& dialog) override;
  void PopupMenu(MenuItem&, const MenuItem*) override {}
  void ShowHelp(Form&, const HelpRequest&) override {}
  float TextWidth(std::string_view text) override;
  float TextWidth(std::string_view text, const Font& font) override;
  float ScaleWidth(const Form& form) override { return form.Place.Width; }
  float ScaleHeight(const Form& form) override { return form.Place.Height; }
  float ToolbarHeight(const Form&) override { return 420; }
  float StatusBarHeight(const Form&) override { return 330; }

 protected:
  void ShowWindow(Form&) override {}
  void RunModally(Form& form, Form& owner) override;
  void CloseWindow(Form&) override {}
  void PointerChanged(int) override {}
};

}  // namespace tarvo
