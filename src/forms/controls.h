#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/control.h"
#include "forms/picture.h"
#include "platform/platform.h"

namespace tarvo {

// An entry of a menu bar or of a menu.
class MenuItem : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&Caption}; }

  std::string Caption;  // "&" marks the access key
  bool Checked = false;
  bool IsSeparator = false;
  std::vector<MenuItem*> Items;  // a menu's entries from top to bottom; empty for a command
  std::function<void()> Click;   // runs the command
};

struct ToolbarButton {
  std::string Key;  // "" for a separator
  std::string ToolTipText;
  std::string Image;  // name of the icon
  bool IsSeparator = false;
  bool Enabled = true;
  bool Pressed = false;
  int Group = 0;  // of the buttons with the same number above 0, one is pressed at a time
};

class Toolbar : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override;

  // Presses a button by its number, counted from 1, and releases the others of its group.
  // Error 35600 when there is no such button.
  void Press(int number);

  // The button with exactly this key; error 35601 when there is none.
  ToolbarButton& ButtonByKey(std::string_view key);

  std::string ToolTipText;
  std::vector<ToolbarButton> Buttons;
  std::function<void(const ToolbarButton&)> ButtonClick;
};

enum class PanelStyle { kText, kTime = 5, kDate = 6 };

struct StatusPanel {
  PanelStyle Style =
      PanelStyle::kText;  // a date or time panel shows the present one in the user's locale
  std::string Text;
};

class StatusBar : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&ToolTipText}; }

  std::string ToolTipText;
  std::vector<StatusPanel> Panels;  // panel 1 is Panels[0]
};

class Label : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&Caption, &ToolTipText}; }

  std::string Caption;
  std::string ToolTipText;
  tarvo::Font Font;
};

class Button : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&Caption, &ToolTipText}; }

  std::string Caption;
  std::string ToolTipText;
  bool IsDefault = false;  // Enter presses it
  bool IsCancel = false;   // Escape presses it
  std::function<void()> Click;
};

class Frame : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&Caption, &ToolTipText}; }

  std::string Caption;
  std::string ToolTipText;
};

// A picture on a window, or a hidden one that other controls take.
class ImageControl : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&ToolTipText}; }

  std::string ToolTipText;
  PicturePointer Picture;
};

// A decoration: a straight line.
class Line : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {}; }
};

// Lists the files of a folder that match a pattern.
class FileListBox : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&ToolTipText}; }

  // Reads the plain files of Path that match Pattern, hidden ones excepted, and sorts them by name,
  // letter case ignored. Nothing is selected or current afterwards. Raises what listing a folder
  // raises, and is empty then.
  void Refresh(Platform& platform);

  struct Entry {
    std::string Name;
    bool Selected = false;
    bool operator==(const Entry&) const = default;
  };

  std::string ToolTipText;
  std::string Path;
  std::string Pattern = "*.*";
  std::vector<Entry> Entries;
  int ListIndex = -1;  // the current entry, counted from 0; -1 for none
  std::function<void()> DblClick;
};

class CommonDialog : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&DialogTitle, &Filter}; }

  std::string DialogTitle;
  std::string Filter;  // "description (pattern)"
  std::string DefaultExt;
  std::string FileName;
  std::string InitDir;
};

class Timer : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {}; }

  int Interval = 0;  // milliseconds; 0 switches it off
  std::function<void()> Tick;
};

}  // namespace tarvo
