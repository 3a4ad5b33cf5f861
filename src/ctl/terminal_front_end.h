#pragma once

#include <istream>
#include <ostream>

#include "forms/null_front_end.h"

namespace tarvo {

// Puts questions to the user of a terminal: the text, then "[y/n]"; "y" and "yes", in any letter
// case, answer Yes, and everything else, the end of the input too, answers No. Messages without a
// choice are not shown.
class TerminalFrontEnd : public NullFrontEnd {
 public:
  TerminalFrontEnd(std::istream& in, std::ostream& prompts) : in_(in), prompts_(prompts) {}

  Answer MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                std::string_view title) override;

  bool ShowsPictures() const override { return false; }

  // Answers every question with Yes, without asking.
  void AssumeYes() { assumesYes_ = true; }

 private:
  std::istream& in_;
  std::ostream& prompts_;
  bool assumesYes_ = false;
};

}  // namespace tarvo
