#pragma once

#include <memory>

#include "catalogue/main_window.h"
#include "frontends/common/kept_place.h"
#include "frontends/win32/form_window.h"
#include "frontends/win32/list_pane.h"
#include "frontends/win32/menus.h"
#include "frontends/win32/status_pane.h"
#include "frontends/win32/toolbar_pane.h"

namespace tarvo::win32 {

// The main window: menus, toolbar, driver list and status bar.
class DriversWindow : public FormWindow {
 public:
  DriversWindow(MainWindow& form, Seam& seam);
  ~DriversWindow() override;

  void Sync() override;
  void Show() override;
  void Close() override;
  SIZE InnerSize() override;
  int ToolbarHeight() override { return toolbar_.Height(); }
  int StatusBarHeight() override { return statusBar_.Height(); }

 protected:
  std::optional<LRESULT> HandleMessage(const Message& message) override;
  bool Navigates(MSG& message) override;

 private:
  std::optional<LRESULT> Command(const Message& message);
  std::optional<LRESULT> Notified(NMHDR& notification);
  void ApplyPlace();
  void ObservePlace();
  void PlaceControls();
  void SyncTimer();
  void StateChanged(WPARAM kind);
  void ResolutionChanged(const RECT& place);
  void TakeResolution();

  MainWindow& state_;
  Menus menus_;
  ToolbarPane toolbar_;
  ListPane list_;
  StatusPane statusBar_;
  KeptPlace place_;
  FontHandle font_;
  int timerInterval_ = 0;
  bool shown_ = false;
};

}  // namespace tarvo::win32
