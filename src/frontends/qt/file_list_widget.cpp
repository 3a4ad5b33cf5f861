#include "frontends/qt/file_list_widget.h"

#include <QSignalBlocker>
#include <algorithm>

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
  TakeOver(list.Entries);
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

// Without a current entry every key leads to the first one, this one too.
QModelIndex FileListWidget::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveEnd && count() > 0 && currentRow() < 0) return model()->index(count() - 1, 0);
  return QListWidget::moveCursor(action, modifiers);
}

// Nothing is done for entries that are shown already: a handler that yields at each of them comes
// by here as often.
void FileListWidget::TakeOver(const std::vector<FileListBox::Entry>& entries) {
  if (entries == shown_) return;
  const auto sameName = [](const auto& a, const auto& b) { return a.Name == b.Name; };
  if (!std::equal(entries.begin(), entries.end(), shown_.begin(), shown_.end(), sameName)) {
    clear();
    for (const FileListBox::Entry& entry : entries) addItem(ToText(entry.Name));
  }
  for (int row = 0; row < count(); ++row) {
    item(row)->setSelected(entries[static_cast<std::size_t>(row)].Selected);
  }
  shown_ = entries;
}

void FileListWidget::TellState() {
  if (static_cast<std::size_t>(count()) != list_.Entries.size()) return;
  for (int row = 0; row < count(); ++row) {
    list_.Entries[static_cast<std::size_t>(row)].Selected = item(row)->isSelected();
  }
  list_.ListIndex = currentRow();
  shown_ = list_.Entries;
}

}  // namespace tarvo::qt
