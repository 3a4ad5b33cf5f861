#include "frontends/qt/menus.h"

#include "frontends/qt/text.h"

namespace tarvo::qt {

void Menus::Add(QMenuBar& bar, MenuItem& menu) {
  QMenu* const drawn = bar.addMenu(QString());
  drawn->setObjectName(ToText(menu.Name));
  shown_.push_back({&menu, drawn->menuAction()});
  for (MenuItem* item : menu.Items) Add(*drawn, *item);
}

void Menus::Add(QMenu& menu, MenuItem& item) {
  if (item.IsSeparator) {
    shown_.push_back({&item, menu.addSeparator()});
    return;
  }
  if (!item.Items.empty()) {
    QMenu* const submenu = menu.addMenu(QString());
    submenu->setObjectName(ToText(item.Name));
    shown_.push_back({&item, submenu->menuAction()});
    for (MenuItem* entry : item.Items) Add(*submenu, *entry);
    return;
  }
  QAction* const action = menu.addAction(QString());
  action->setObjectName(ToText(item.Name));
  action->setMenuRole(QAction::NoRole);
  QObject::connect(action, &QAction::triggered, action,
                   [this, &item] { dispatcher_.Run(item.Click); });
  shown_.push_back({&item, action});
}

QAction* Menus::Fill(QMenu& popup, MenuItem& menu, const MenuItem* entry) {
  popup.setObjectName(ToText(menu.Name));
  popup.setAccessibleName(WithoutAccessKey(menu.Caption));
  for (MenuItem* item : menu.Items) Add(popup, *item);
  Sync();
  for (const Shown& shown : shown_) {
    if (entry && shown.item == entry) return shown.action;
  }
  return nullptr;
}

void Menus::Sync() {
  for (const Shown& shown : shown_) Sync(shown);
}

void Menus::Sync(const Shown& shown) {
  shown.action->setVisible(shown.item->Visible);
  if (shown.item->IsSeparator) return;
  shown.action->setText(ToCaption(shown.item->Caption));
  shown.action->setEnabled(shown.item->Enabled && shown.item->Visible);
  if (shown.item->Checked) shown.action->setCheckable(true);
  shown.action->setChecked(shown.item->Checked);
}

}  // namespace tarvo::qt
