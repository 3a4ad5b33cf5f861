#pragma once

#include <string_view>

#include "ui/frm_drivers.h"

namespace tarvo {

// What a menu entry runs.
struct MenuCommand {
  MenuItem MainWindow::*entry;
  void (frmDrivers::*handler)();
};

inline constexpr MenuCommand kMenuCommands[] = {
    {&MainWindow::mnuFileOpen, &frmDrivers::mnuFileOpen_Click},
    {&MainWindow::mnuFileRename, &frmDrivers::mnuFileRename_Click},
    {&MainWindow::mnuFileClose, &frmDrivers::mnuFileClose_Click},
    {&MainWindow::mnuViewToolbar, &frmDrivers::mnuViewToolbar_Click},
    {&MainWindow::mnuViewStatusBar, &frmDrivers::mnuViewStatusBar_Click},
    {&MainWindow::mnuViewLineUpIcons, &frmDrivers::mnuViewLineUpIcons_Click},
    {&MainWindow::mnuViewRefresh, &frmDrivers::mnuViewRefresh_Click},
    {&MainWindow::mnuViewOptions, &frmDrivers::mnuViewOptions_Click},
    {&MainWindow::mnuHelpAbout, &frmDrivers::mnuHelpAbout_Click},
};

// The view buttons, by view mode.
inline constexpr std::string_view kViewButtonKeys[MainWindow::kViewModes] = {
    "ViewLarge", "ViewSmall", "ViewList", "ViewDetails"};

}  // namespace tarvo
