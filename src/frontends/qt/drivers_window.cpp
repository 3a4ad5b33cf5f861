#include "frontends/qt/drivers_window.h"

#include <QEvent>
#include <QLayout>
#include <algorithm>
#include <memory>

#include "frontends/qt/text.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {

DriversWindow::DriversWindow(MainWindow& form, Seam& seam)
    : FormWindow(form, seam, std::make_unique<QMainWindow>()),
      state_(form),
      window_(static_cast<QMainWindow*>(widget_.data())),
      menus_(seam.dispatcher),
      client_(new QWidget(window_)),
      toolbar_(new ToolbarPane(form.tbToolBar, seam.dispatcher, client_)),
      list_(new ListPane(form.lvListView, seam, client_)),
      statusBar_(new StatusPane(form.sbStatusBar, client_)),
      place_(*window_, form) {
  // Any size is accepted: the resize handler says which one is too small.
  window_->layout()->setSizeConstraint(QLayout::SetNoConstraint);
  window_->setCentralWidget(client_);
  window_->menuBar()->setNativeMenuBar(false);
  window_->menuBar()->setObjectName("menuBar");
  for (MenuItem* menu : form.MenuBar) menus_.Add(*window_->menuBar(), *menu);
  connect(&timer_, &QTimer::timeout, this, [this] { seam_.dispatcher.Run(state_.tmrStuff.Tick); });
  list_->setFocus();
}

void DriversWindow::Sync() {
  FormWindow::Sync();
  menus_.Sync();
  toolbar_->Sync(WithoutAccessKey(state_.mnuViewToolbar.Caption));
  statusBar_->Sync(WithoutAccessKey(state_.mnuViewStatusBar.Caption));
  list_->Sync(ToText(state_.Caption));
  SyncTimer();
  if (shown_) {
    place_.Observe();
    if (place_.IsAssigned()) place_.Apply();
  }
  PlaceControls();
}

void DriversWindow::Show() {
  if (!shown_) place_.Apply();
  FormWindow::Show();
  place_.Observe();
}

void DriversWindow::Close() {
  timer_.stop();
  list_->Detach();
  FormWindow::Close();
}

int DriversWindow::MenuHeight(int width) const {
  const QMenuBar& bar = *window_->menuBar();
  const int height = bar.heightForWidth(std::max(width, bar.minimumWidth()));
  return std::max(height < 0 ? bar.sizeHint().height() : height, bar.minimumSizeHint().height());
}

QSize DriversWindow::InnerSize() {
  if (shown_ && place_.IsAssigned()) place_.Apply();
  const QSize size = shown_ ? window_->size() : place_.InnerSize();
  return {size.width(), std::max(0, size.height() - MenuHeight(size.width()))};
}

void DriversWindow::PlaceControls() {
  const QSize inner = InnerSize();
  toolbar_->setGeometry(0, 0, inner.width(), ToolbarHeight());
  statusBar_->setGeometry(0, inner.height() - StatusBarHeight(), inner.width(), StatusBarHeight());
  list_->setVisible(state_.lvListView.Visible);
  list_->setGeometry(ToPixels(state_.lvListView.Place));
}

void DriversWindow::SyncTimer() {
  const int interval =
      state_.tmrStuff.Enabled && shown_ ? std::max(0, state_.tmrStuff.Interval) : 0;
  if (interval == 0) {
    timer_.stop();
  } else if (!timer_.isActive() || timer_.interval() != interval) {
    timer_.start(interval);
  }
}

bool DriversWindow::WindowEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::WindowStateChange:
      StateChanged();
      break;
    case QEvent::Move:
      if (shown_) place_.Observe();
      break;
    case QEvent::Resize:
      if (shown_) Resized();
      break;
    case QEvent::Close:
      // A frame that changes after the last move or resize tells nobody.
      if (shown_) place_.Observe();
      break;
    default:
      break;
  }
  return FormWindow::WindowEvent(event);
}

void DriversWindow::StateChanged() {
  if (window_->isMinimized()) {
    state_.State = WindowState::kMinimised;
  } else if (window_->isMaximized()) {
    state_.State = WindowState::kMaximised;
  } else {
    state_.State = WindowState::kNormal;
  }
  if (shown_) place_.Observe();
}

void DriversWindow::Resized() {
  place_.Observe();
  if (state_.State == WindowState::kMinimised) return;
  seam_.dispatcher.Run([this] { state_.Form_Resize(); });
}

}  // namespace tarvo::qt
