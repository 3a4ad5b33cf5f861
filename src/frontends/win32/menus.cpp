#include "frontends/win32/menus.h"

#include <algorithm>

#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr UINT kFirstIdentifier = 1000;

std::vector<const MenuItem*> VisibleOf(const std::vector<MenuItem*>& items) {
  std::vector<const MenuItem*> visible;
  for (const MenuItem* item : items) {
    if (item->Visible) visible.push_back(item);
  }
  return visible;
}

UINT StateOf(const MenuItem& item) {
  return static_cast<UINT>((item.Enabled ? MFS_ENABLED : MFS_DISABLED) |
                           (item.Checked ? MFS_CHECKED : MFS_UNCHECKED));
}

}  // namespace

HMENU Menus::MakeBar(const std::vector<MenuItem*>& menus) {
  bar_ = menus;
  return Make(bar_, CreateMenu());
}

MenuHandle Menus::MakePopup(MenuItem& menu, const MenuItem* defaultEntry) {
  MenuHandle popup(Make(menu.Items, CreatePopupMenu()));
  const auto found = std::find(commands_.begin(), commands_.end(), defaultEntry);
  if (found != commands_.end()) {
    const auto number = static_cast<UINT>(found - commands_.begin());
    SetMenuDefaultItem(popup.Get(), kFirstIdentifier + number, FALSE);
  }
  return popup;
}

HMENU Menus::Make(const std::vector<MenuItem*>& items, HMENU menu) {
  shown_.push_back({menu, &items, {}});
  Fill(shown_.back());
  return menu;
}

UINT Menus::IdentifierOf(MenuItem& item) {
  const auto found = std::find(commands_.begin(), commands_.end(), &item);
  const auto number = static_cast<UINT>(found - commands_.begin());
  if (found == commands_.end()) commands_.push_back(&item);
  return kFirstIdentifier + number;
}

// Deletes the entries of a menu, submenus included.
void Menus::Empty(HMENU menu) {
  while (GetMenuItemCount(menu) > 0) {
    if (HMENU const submenu = GetSubMenu(menu, 0)) {
      Empty(submenu);
      shown_.remove_if([submenu](const Shown& shown) { return shown.menu == submenu; });
    }
    DeleteMenu(menu, 0, MF_BYPOSITION);
  }
}

void Menus::Fill(Shown& shown) {
  Empty(shown.menu);
  shown.visible = VisibleOf(*shown.items);
  for (MenuItem* item : *shown.items) {
    if (!item->Visible) continue;
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_ID;
    info.fType = item->IsSeparator ? MFT_SEPARATOR : MFT_STRING;
    info.wID = IdentifierOf(*item);
    std::wstring caption = WideCaption(item->Caption);
    if (!item->IsSeparator) {
      info.fMask |= MIIM_STRING | MIIM_STATE;
      info.dwTypeData = caption.data();
      info.fState = StateOf(*item);
    }
    if (!item->Items.empty()) {
      info.fMask |= MIIM_SUBMENU;
      info.hSubMenu = Make(item->Items, CreatePopupMenu());
    }
    InsertMenuItemW(shown.menu, static_cast<UINT>(GetMenuItemCount(shown.menu)), TRUE, &info);
  }
}

bool Menus::Sync() {
  bool barChanged = false;
  for (Shown& shown : shown_) {
    if (SyncOne(shown) && shown.items == &bar_) barChanged = true;
  }
  return barChanged;
}

// Gives whether anything has been changed.
bool Menus::SyncOne(Shown& shown) {
  if (VisibleOf(*shown.items) != shown.visible) {
    Fill(shown);
    return true;
  }
  bool changed = false;
  for (std::size_t i = 0; i < shown.visible.size(); ++i) {
    const MenuItem& item = *shown.visible[i];
    if (item.IsSeparator) continue;
    const auto position = static_cast<UINT>(i);
    std::wstring caption = WideCaption(item.Caption);
    std::wstring present(caption.size() + 2, L'\0');
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_STATE;
    info.dwTypeData = present.data();
    info.cch = static_cast<UINT>(present.size());
    GetMenuItemInfoW(shown.menu, position, TRUE, &info);
    present.resize(info.cch);
    const UINT state = info.fState & (MFS_DISABLED | MFS_CHECKED);
    if (present == caption && state == StateOf(item)) continue;
    info.dwTypeData = caption.data();
    info.fState = (info.fState & ~static_cast<UINT>(MFS_DISABLED | MFS_CHECKED)) | StateOf(item);
    SetMenuItemInfoW(shown.menu, position, TRUE, &info);
    changed = true;
  }
  return changed;
}

void Menus::Run(UINT identifier) {
  const std::size_t number = identifier - kFirstIdentifier;
  if (identifier < kFirstIdentifier || number >= commands_.size()) return;
  MenuItem& item = *commands_[number];
  if (item.Enabled && item.Visible) loop_.Run(item.Click);
}

}  // namespace tarvo::win32
