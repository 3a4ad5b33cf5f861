#pragma once

#include <QWidget>
#include <functional>

#include "tools/tool.h"
#include "tools/transfer.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace tarvo::tools {

// Shows a transfer and drives it by a timer. It closes by itself when all went well; after a
// failure it stays with the reason until it is closed. Closing it earlier cancels the transfer.
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

// Runs a transfer in a window of its own, from the toolkit's start to its end; the exit code: 0
// when it succeeded, otherwise 1.
int ShowTransfer(Tool& tool, const char* toolTitle, const ToolOptions& options,
                 const std::function<std::unique_ptr<Transfer>()>& makeTransfer);

}  // namespace tarvo::tools
