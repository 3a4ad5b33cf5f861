#pragma once

#include <QListView>
#include <QStackedWidget>
#include <QTreeView>

#include "forms/list_view.h"
#include "frontends/qt/list_gestures.h"
#include "frontends/qt/list_model.h"
#include "frontends/qt/seam.h"

namespace tarvo::qt {

class CellDelegate;

// A list view with its four views: icons and list by one widget, details by another, which is made
// when it is first needed.
class ListPane : public QStackedWidget, private ListGestures {
 public:
  ListPane(ListView& list, Seam& seam, QWidget* parent);

  void Sync(const QString& accessibleName);
  void Detach();

  // The widget of the present view.
  QAbstractItemView& View() const;

 private:
  void ItemChosen(int row) override;
  void ItemDoubleClicked(int row) override;
  void MouseReleased(Qt::MouseButton button) override;
  bool KeyTyped(int character) override;
  void MenuKeyPressed(const QPoint& screenPosition) override;

  void MakeDetails();
  void ChooseView();
  void ArrangeIcons();
  QSize SmallCell() const;
  void TakeOverColumns();
  void TakeOverSelection();

  ListView* list_;
  Seam& seam_;
  ListModel names_;
  ListModel table_;
  QListView* icons_;
  QTreeView* details_ = nullptr;
  CellDelegate* delegate_;
  int view_ = -1;
  unsigned arranged_ = 0;  // generation that the cells were measured for
};

}  // namespace tarvo::qt
