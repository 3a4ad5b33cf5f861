#pragma once

#include <QListWidget>
#include <vector>

#include "forms/controls.h"

namespace tarvo::qt {

// Draws a file list and keeps its selected and current entries in line with what the user does.
class FileListWidget : public QListWidget {
 public:
  FileListWidget(FileListBox& list, QWidget* parent);

  void Sync(const FileListBox& list);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  void TakeOver(const std::vector<FileListBox::Entry>& entries);
  void TellState();

  FileListBox& list_;
  std::vector<FileListBox::Entry> shown_;
};

}  // namespace tarvo::qt
