#include "forms/null_front_end.h"

#include "base/runtime_error.h"
#include "base/text.h"

namespace tarvo {
namespace {

constexpr float kTwipsPerCharacter = 90;
constexpr float kDefaultFontSize = 8.25F;

}  // namespace

Answer NullFrontEnd::MsgBox(std::string_view, MessageButtons buttons, MessageIcon,
                            std::string_view) {
  return buttons == MessageButtons::kYesNo ? Answer::kNo : Answer::kOk;
}

void NullFrontEnd::ShowOpen(CommonDialog&) { throw RuntimeError(kDialogCancelled); }

float NullFrontEnd::TextWidth(std::string_view text) {
  return kTwipsPerCharacter * static_cast<float>(CharacterCount(text));
}

float NullFrontEnd::TextWidth(std::string_view text, const Font& font) {
  return TextWidth(text) * font.Size / kDefaultFontSize;
}

// Nobody could ever close the window, so it closes itself.
void NullFrontEnd::RunModally(Form& form, Form&) { Unload(form); }

}  // namespace tarvo
