#pragma once

#include <QWidget>

#include "tools/tool.h"
#include "tools/transfer.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace tarvo::tools {

// The window of ShowTransfer.
class TransferWindow : public QWidget {
 public:
  TransferWindow(Transfer& transfer, const QString& title, const ToolOptions& options);

  bool Succeeded() const { return course_.Now() == TransferCourse::State::kDone; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Step();

  TransferCourse course_;
  bool closes_;
  QLabel* lblActivity_;
  QProgressBar* pbTransfer_;
  QPushButton* cmdClose_;
  QTimer* timer_;
};

}  // namespace tarvo::tools
