#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <vector>

#include "forms/list_view.h"

namespace tarvo::qt {

// A list view's items as a table, straight from the window's state. With one column the other ones
// stand in the items' accessible description.
class ListModel : public QAbstractTableModel {
 public:
  ListModel(const ListView& list, int columns);

  // Brings the views in line with the state; gives whether they must take over the selection.
  bool Sync();

  // The state is going away: the list is empty from now on.
  void Detach();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QVariant IconFor(const ListItem& item) const;
  QString Description(const ListItem& item) const;
  bool IsSynced() const;

  const ListView* list_;
  int columns_;
  unsigned generation_ = 0;
  int view_ = -1;
  std::vector<const ListItem*> items_;  // as the views know them
  mutable QHash<const Picture*, QIcon> icons_;
};

}  // namespace tarvo::qt
