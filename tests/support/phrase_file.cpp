#include "support/made_dictionary.h"

namespace tarvo::test {

std::string PoHeader(std::string_view charset) {
  return "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=" + std::string(charset) +
         "\\nPlural-Forms: nplurals=2; plural=(n != 1);\\n\"\n\n";
}

std::string PoText(const Phrases& phrases) {
  std::string text = PoHeader();
  for (const auto& [english, translation] : phrases) {
    text += "msgid \"" + english + "\"\nmsgstr \"" + translation + "\"\n\n";
  }
  return text;
}

}  // namespace tarvo::test
