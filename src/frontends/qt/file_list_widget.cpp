#include "frontends/qt/file_list_widget.h"

#include <QSignalBlocker>

#include "frontends/qt/dialog_controls.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {

FileListWidget::FileListWidget(FileListBox& list, QWidget* parent)
    : QListWidget(parent), list_(list) {
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideMiddle);
  connect(this, &QListWidget::itemSelectionChanged, this, [this] { TellState(); });
  connect(this, &QListWidget::currentRowChanged, this, [this] { TellState(); });
}

void FileListWidget::Sync(const FileListBox& list) {
  const QSignalBlocker quiet(this);
  SyncBasics(*this, list);
  setToolTip(ToToolTip(list.ToolTipText));
  TakeOverNames(list);
  for (int row = 0; row < count(); ++row) {
    item(row)->setSelected(list.Entries[static_cast<std::size_t>(row)].Selected);
  }
  if (currentRow() != list.ListIndex) {
    setCurrentRow(list.ListIndex, QItemSelectionModel::NoUpdate);
  }
}

// The focus alone makes no entry current: Enter would close the window with nothing chosen.
void FileListWidget::focusInEvent(QFocusEvent* event) {
  const QSignalBlocker quiet(this);
  QListWidget::focusInEvent(event);
  setCurrentRow(list_.ListIndex, QItemSelectionModel::NoUpdate);
}

void FileListWidget::TakeOverNames(const FileListBox& list) {
  bool isSame = static_cast<std::size_t>(count()) == list.Entries.size();
  for (int row = 0; isSame && row < count(); ++row) {
    isSame = item(row)->text() == ToText(list.Entries[static_cast<std::size_t>(row)].Name);
  }
  if (isSame) return;
  clear();
  for (const FileListBox::Entry& entry : list.Entries) addItem(ToText(entry.Name));
}

void FileListWidget::TellState() {
  if (static_cast<std::size_t>(count()) != list_.Entries.size()) return;
  for (int row = 0; row < count(); ++row) {
    list_.Entries[static_cast<std::size_t>(row)].Selected = item(row)->isSelected();
  }
  list_.ListIndex = currentRow();
}

}  // namespace tarvo::qt
