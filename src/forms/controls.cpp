#include "forms/controls.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

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

void FileListBox::Refresh(Platform& platform) {
  Entries.clear();
  ListIndex = -1;
  for (FolderEntry& file : ListFolder(platform, Path, Pattern, kNormal)) {
    Entries.push_back({std::move(file.name), false});
  }
  std::sort(Entries.begin(), Entries.end(), [](const Entry& a, const Entry& b) {
    const int order = CompareIgnoringCase(a.Name, b.Name);
    return order != 0 ? order < 0 : a.Name < b.Name;
  });
}

}  // namespace tarvo
