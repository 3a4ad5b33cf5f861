#include "frontends/qt/list_model.h"

#include "frontends/qt/pictures.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

std::string_view TextOf(const ListItem& item, int column) {
  if (column == 0) return item.Text;
  return item.SubItems[static_cast<std::size_t>(column) - 1];
}

}  // namespace

ListModel::ListModel(const ListView& list, int columns) : list_(&list), columns_(columns) {
  generation_ = list.Generation() - 1;
}

bool ListModel::Sync() {
  if (!list_ || (generation_ == list_->Generation() && view_ == list_->View())) return false;
  generation_ = list_->Generation();
  view_ = list_->View();
  std::vector<const ListItem*> items;
  items.reserve(static_cast<std::size_t>(list_->Count()));
  for (int i = 0; i < list_->Count(); ++i) items.push_back(&list_->ItemAt(i));
  if (items == items_) {
    // New texts or pictures of the same items: the user's place in the list stays.
    if (!items.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, columns_ - 1));
    return false;
  }
  beginResetModel();
  items_ = std::move(items);
  icons_.clear();
  endResetModel();
  return true;
}

void ListModel::Detach() {
  beginResetModel();
  list_ = nullptr;
  items_.clear();
  endResetModel();
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

// Between a change of the list and the next Sync the views may ask for items that are gone.
bool ListModel::IsSynced() const { return list_ && generation_ == list_->Generation(); }

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!IsSynced() || !index.isValid()) return {};
  const ListItem& item = list_->ItemAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return ToText(TextOf(item, index.column()));
    case Qt::DecorationRole:
      return index.column() == 0 ? IconFor(item) : QVariant();
    case Qt::AccessibleDescriptionRole:
      return columns_ == 1 ? Description(item) : QVariant();
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!list_ || orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const auto column = static_cast<std::size_t>(section);
  if (column >= list_->ColumnHeaders.size()) return {};
  return ToText(list_->ColumnHeaders[column].Text);
}

QVariant ListModel::IconFor(const ListItem& item) const {
  const bool large = list_->View() == kLargeIcons;
  const ImageList* images = large ? list_->Icons : list_->SmallIcons;
  if (!images) return {};
  const PicturePointer picture = images->At(large ? item.Icon : item.SmallIcon);
  QIcon& icon = icons_[picture.get()];
  if (icon.isNull()) icon = IconOf(picture);
  return icon;
}

QString ListModel::Description(const ListItem& item) const {
  QStringList parts;
  for (std::size_t i = 0; i < item.SubItems.size() && i + 1 < list_->ColumnHeaders.size(); ++i) {
    if (item.SubItems[i].empty()) continue;
    parts += ToText(list_->ColumnHeaders[i + 1].Text) + ": " + ToText(item.SubItems[i]);
  }
  return parts.join(", ");
}

}  // namespace tarvo::qt
