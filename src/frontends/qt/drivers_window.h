#pragma once

#include <QMainWindow>
#include <QTimer>

#include "catalogue/main_window.h"
#include "frontends/qt/bars.h"
#include "frontends/qt/form_window.h"
#include "frontends/qt/list_pane.h"
#include "frontends/qt/menus.h"
#include "frontends/qt/window_place.h"

namespace tarvo::qt {

// The main window: menus, toolbar, driver list and status bar.
class DriversWindow : public FormWindow {
 public:
  DriversWindow(MainWindow& form, Seam& seam);

  void Sync() override;
  void Show() override;
  void Close() override;
  QSize InnerSize() override;
  int ToolbarHeight() override { return toolbar_->sizeHint().height(); }
  int StatusBarHeight() override { return statusBar_->sizeHint().height(); }

 protected:
  bool WindowEvent(QEvent& event) override;

 private:
  int MenuHeight(int width) const;
  void PlaceControls();
  void SyncTimer();
  void StateChanged();
  void Resized();

  MainWindow& state_;
  QMainWindow* window_;
  Menus menus_;
  QWidget* client_;  // the inner area, in which everything below the menu stands
  ToolbarPane* toolbar_;
  ListPane* list_;
  StatusPane* statusBar_;
  WindowPlace place_;
  QTimer timer_;
};

}  // namespace tarvo::qt
