#include "ctl/terminal_front_end.h"

#include <algorithm>
#include <string>

#include "base/text.h"

namespace tarvo {

Answer TerminalFrontEnd::MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                                std::string_view title) {
  if (buttons != MessageButtons::kYesNo) return NullFrontEnd::MsgBox(text, buttons, icon, title);
  if (assumesYes_) return Answer::kYes;
  std::string lines(text);
  std::replace(lines.begin(), lines.end(), '\r', '\n');
  prompts_ << lines << " [y/n] " << std::flush;
  std::string answer;
  std::getline(in_, answer);
  const bool isYes = EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
  return isYes ? Answer::kYes : Answer::kNo;
}

}  // namespace tarvo
