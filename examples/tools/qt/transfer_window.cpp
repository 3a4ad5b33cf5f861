#include "tools/qt/transfer_window.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "tools/qt/toolkit.h"
#include "tools/tool_windows.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

TransferWindow::TransferWindow(Transfer& transfer, const QString& title, const ToolOptions& options)
    : course_(transfer, options.fails),
      closes_(options.closes),
      lblActivity_(new QLabel(this)),
      pbTransfer_(new QProgressBar(this)),
      cmdClose_(new QPushButton(TextOf(texts::kCancel), this)),
      timer_(new QTimer(this)) {
  setWindowTitle(title);
  lblActivity_->setObjectName("lblActivity");
  lblActivity_->setTextFormat(Qt::PlainText);
  lblActivity_->setWordWrap(true);
  lblActivity_->setText(QString::fromStdString(course_.Message()));
  pbTransfer_->setObjectName("pbTransfer");
  pbTransfer_->setAccessibleName("Progress");
  pbTransfer_->setRange(0, 100);
  cmdClose_->setObjectName("cmdClose");

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblActivity_);
  layout->addWidget(pbTransfer_);
  layout->addWidget(cmdClose_, 0, Qt::AlignRight);
  resize(360, sizeHint().height());

  connect(cmdClose_, &QPushButton::clicked, this, &QWidget::close);
  connect(timer_, &QTimer::timeout, this, [this] { Step(); });
  timer_->start(static_cast<int>(options.seconds * 1000 / transfer.BlockCount()));
}

void TransferWindow::closeEvent(QCloseEvent* event) {
  timer_->stop();
  QWidget::closeEvent(event);
}

void TransferWindow::Step() {
  course_.Step();
  pbTransfer_->setValue(course_.Percent());
  lblActivity_->setText(QString::fromStdString(course_.Message()));
  if (course_.Now() == TransferCourse::State::kRunning) return;
  timer_->stop();
  cmdClose_->setText(TextOf(texts::kClose));
  if (Succeeded() || closes_) close();
}

int ShowTransfer(Tool& tool, std::string_view toolTitle, const ToolOptions& options,
                 const std::function<std::unique_ptr<Transfer>()>& makeTransfer) {
  Toolkit toolkit;
  const auto transfer = makeTransfer();
  TransferWindow window(*transfer, TextOf(texts::WindowTitle(tool, toolTitle)), options);
  toolkit.Run(window);
  return window.Succeeded() ? 0 : 1;
}

}  // namespace tarvo::tools
