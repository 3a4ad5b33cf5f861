#pragma once

#include <QListWidget>

#include "forms/controls.h"

namespace tarvo::qt {

// Draws a file list and keeps its selected and current entries in line with what the user does.
class FileListWidget : public QListWidget {
 public:
  FileListWidget(FileListBox& list, QWidget* parent);

  void Sync(const FileListBox& list);

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  void TakeOverNames(const FileListBox& list);
  void TellState();

  FileListBox& list_;
};

}  // namespace tarvo::qt
