#include "frontends/qt/form_window.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QWindow>
#include <utility>

#include "frontends/qt/key_codes.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {

FormWindow::FormWindow(Form& form, Seam& seam, std::unique_ptr<QWidget> widget)
    : form_(form), seam_(seam), widget_(widget.release()) {
  widget_->setObjectName(ToText(form.Name));
  // Sees the window's own events and the keys of its controls, which reach the window first.
  QCoreApplication::instance()->installEventFilter(this);
}

FormWindow::~FormWindow() { delete widget_.data(); }

void FormWindow::Sync() {
  if (closed_) return;
  const QString caption = ToText(form_.Caption);
  if (widget_->windowTitle() != caption) widget_->setWindowTitle(caption);
}

void FormWindow::Show() {
  Sync();
  awaitsFirstActivation_ = awaitsFirstActivation_ || !shown_;
  widget_->show();
  shown_ = true;
}

void FormWindow::Repaint() {
  const QWindow* const window = widget_->windowHandle();
  if (window && window->isExposed()) {
    wasDrawn_ = true;
    const Dispatcher::Hold hold(seam_.dispatcher);
    widget_->repaint();
  } else if (shown_ && !wasDrawn_) {
    QGuiApplication::sync();
  }
}

void FormWindow::Close() {
  closed_ = true;
  QCoreApplication::instance()->removeEventFilter(this);
  // An owner may have taken it along: an error in the main window's load leaves a dialog behind.
  if (widget_) widget_->hide();
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  if (closed_) return false;
  if (watched == widget_.data()) {
    if (WindowEvent(*event)) return true;
  }
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  // A key that nobody takes comes by again on its way through the parents.
  auto& receiver = static_cast<QWidget&>(*watched);
  const QWidget* const focus = QApplication::focusWidget();
  if (receiver.window() != widget_.data() || (focus ? focus : widget_.data()) != &receiver)
    return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  return !KeyDown(key.key(), key.modifiers().testFlag(Qt::KeypadModifier));
}

// False when the handler has swallowed the key.
bool FormWindow::KeyDown(int key, bool fromKeypad) {
  int keyCode = ClassicKeyCode(key, fromKeypad);
  if (keyCode == 0) return true;
  seam_.dispatcher.Run([this, &keyCode] { form_.Form_KeyDown(keyCode); });
  return keyCode != 0;
}

bool FormWindow::WindowEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::Paint:
      wasDrawn_ = true;
      return false;
    case QEvent::Close:
      event.ignore();
      seam_.dispatcher.Run([this] { seam_.frontEnd.Unload(form_); });
      return true;
    case QEvent::WindowActivate:
      Activated();
      return false;
    case QEvent::WindowDeactivate:
      lostToOwnDialog_ = seam_.dialogs > 0;
      return false;
    default:
      return false;
  }
}

// The first activation has been delivered with the show, and coming back from one of the program's
// own dialogs is none.
void FormWindow::Activated() {
  const bool isOwn = std::exchange(awaitsFirstActivation_, false) || lostToOwnDialog_;
  lostToOwnDialog_ = false;
  if (!isOwn) seam_.dispatcher.Run([this] { form_.Form_Activate(); });
}

}  // namespace tarvo::qt
