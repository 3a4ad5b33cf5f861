#include "forms/controls.h"

#include "base/runtime_error.h"

namespace tarvo {

std::vector<std::string*> Toolbar::TranslatableTexts() {
  std::vector<std::string*> texts{&ToolTipText};
  for (ToolbarButton& button : Buttons) texts.push_back(&button.ToolTipText);
  return texts;
}

void Toolbar::Press(int number) {
  if (number < 1 || number > static_cast<int>(Buttons.size()))
    throw RuntimeError(kIndexOutOfBounds);
  ToolbarButton& pressed = Buttons[static_cast<std::size_t>(number) - 1];
  for (ToolbarButton& button : Buttons) {
    if (pressed.Group > 0 && button.Group == pressed.Group) button.Pressed = false;
  }
  pressed.Pressed = true;
}

ToolbarButton& Toolbar::ButtonByKey(std::string_view key) {
  for (ToolbarButton& button : Buttons) {
    if (button.Key == key) return button;
  }
  throw RuntimeError(kElementNotFound);
}

}  // namespace tarvo
