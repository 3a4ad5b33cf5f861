#include "frontends/qt/dialog_window.h"

#include <QApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QDialog>
#include <QScreen>
#include <QWindow>
#include <memory>

#include "frontends/qt/dialog_controls.h"
#include "frontends/qt/file_list_widget.h"
#include "frontends/qt/text.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {
namespace {

constexpr int kLongestWaitForSplash = 300;  // milliseconds

// Escape presses the cancel button; without one it does nothing.
class DialogWidget : public QDialog {
 public:
  using QDialog::QDialog;
  void reject() override {
    if (cancel) cancel->click();
  }
  QPushButton* cancel = nullptr;
};

std::unique_ptr<QWidget> MakeWidget(DialogWindow::Kind kind, QWidget* owner) {
  auto widget = std::make_unique<DialogWidget>(owner);
  if (kind == DialogWindow::Kind::kSplash) {
    widget->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
  } else {
    widget->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowCloseButtonHint);
    widget->setWindowModality(Qt::ApplicationModal);
  }
  return widget;
}

}  // namespace

DialogWindow::DialogWindow(Form& form, Seam& seam, Kind kind, QWidget* owner)
    : FormWindow(form, seam, MakeWidget(kind, owner)), kind_(kind) {
  for (Control* control : form.Controls()) Add(*control);
}

template <class Kept, class Drawn>
void DialogWindow::Keep(Kept& state, Drawn* drawn) {
  syncs_.push_back([&state, drawn] { drawn->Sync(state); });
}

void DialogWindow::Add(Control& control) {
  QWidget* const parent = widget_.data();
  if (auto* label = dynamic_cast<Label*>(&control)) {
    Keep(*label, new LabelWidget(parent));
  } else if (auto* frame = dynamic_cast<Frame*>(&control)) {
    Keep(*frame, new FrameWidget(parent));
  } else if (auto* image = dynamic_cast<ImageControl*>(&control)) {
    Keep(*image, new ImageWidget(parent));
  } else if (auto* line = dynamic_cast<Line*>(&control)) {
    Keep(*line, new LineWidget(parent));
  } else if (auto* files = dynamic_cast<FileListBox*>(&control)) {
    auto* const drawn = new FileListWidget(*files, parent);
    connect(drawn, &QListWidget::itemDoubleClicked, this,
            [this, files] { seam_.dispatcher.Run(files->DblClick); });
    drawn->setAccessibleName(ToText(form_.Caption));
    drawn->setFocus();
    Keep(*files, drawn);
  } else if (auto* button = dynamic_cast<Button*>(&control)) {
    auto* const drawn = new ButtonWidget(parent);
    connect(drawn, &QPushButton::clicked, this,
            [this, button] { seam_.dispatcher.Run(button->Click); });
    if (button->IsCancel) static_cast<DialogWidget*>(parent)->cancel = drawn;
    if (button->IsDefault && !parent->focusWidget()) drawn->setFocus();
    Keep(*button, drawn);
  }
}

void DialogWindow::Sync() {
  FormWindow::Sync();
  const QSize size = ToPixels(form_.Place).size().expandedTo({1, 1});
  if (widget_->size() != size || widget_->minimumSize() != size) widget_->setFixedSize(size);
  for (const auto& sync : syncs_) sync();
}

void DialogWindow::Show() {
  if (!shown_) {
    Sync();
    Centre();
  }
  FormWindow::Show();
}

void DialogWindow::Centre() {
  const QWidget* const owner = widget_->parentWidget();
  QScreen* screen = owner ? owner->screen() : QGuiApplication::screenAt(QCursor::pos());
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect around = owner ? owner->frameGeometry() : screen->availableGeometry();
  QRect place(QPoint(), widget_->size());
  place.moveCenter(around.center());
  const QRect limits = screen->availableGeometry();
  place.moveLeft(std::max(limits.left(), std::min(place.left(), limits.right() - place.width())));
  place.moveTop(std::max(limits.top(), std::min(place.top(), limits.bottom() - place.height())));
  widget_->move(place.topLeft());
}

void DialogWindow::Repaint() {
  if (kind_ == Kind::kSplash && shown_) WaitUntilSeen();
  FormWindow::Repaint();
}

// What follows may take long without returning to the event loop, so the window system must have
// put the window on the screen before.
void DialogWindow::WaitUntilSeen() {
  const Dispatcher::Hold hold(seam_.dispatcher);
  const QDeadlineTimer deadline(kLongestWaitForSplash);
  const QWindow* const handle = widget_->windowHandle();
  while (handle && !handle->isExposed() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(
        QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents,
        static_cast<int>(std::max<qint64>(1, deadline.remainingTime())));
  }
}

void DialogWindow::Close() {
  syncs_.clear();
  FormWindow::Close();
}

}  // namespace tarvo::qt
