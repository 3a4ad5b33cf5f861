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
    {&MainWindow::mnuFileDownload, &frmDrivers::mnuFileDownload_Click},
    {&MainWindow::mnuFileUpload, &frmDrivers::mnuFileUpload_Click},
    {&MainWindow::mnuFileProperties, &frmDrivers::mnuFileProperties_Click},
    {&MainWindow::mnuFileMobileDevice, &frmDrivers::mnuFileMobileDevice_Click},
    {&MainWindow::mnuFileInstallMobile, &frmDrivers::mnuFileInstallMobile_Click},
    {&MainWindow::mnuFileDelete, &frmDrivers::mnuFileDelete_Click},
    {&MainWindow::mnuFileRename, &frmDrivers::mnuFileRename_Click},
    {&MainWindow::mnuFileClose, &frmDrivers::mnuFileClose_Click},
    {&MainWindow::mnuViewToolbar, &frmDrivers::mnuViewToolbar_Click},
    {&MainWindow::mnuViewStatusBar, &frmDrivers::mnuViewStatusBar_Click},
    {&MainWindow::mnuViewLineUpIcons, &frmDrivers::mnuViewLineUpIcons_Click},
    {&MainWindow::mnuViewRefresh, &frmDrivers::mnuViewRefresh_Click},
    {&MainWindow::mnuViewOptions, &frmDrivers::mnuViewOptions_Click},
    {&MainWindow::mnuHelpContents, &frmDrivers::mnuHelpContents_Click},
    {&MainWindow::mnuHelpSearch, &frmDrivers::mnuHelpSearch_Click},
    {&MainWindow::mnuHelpAbout, &frmDrivers::mnuHelpAbout_Click},
};

// What a toolbar button runs, by its key, letter case included.
struct ToolbarCommand {
  std::string_view key;
  void (frmDrivers::*handler)();
  MenuItem MainWindow::*condition;  // the entry that must be enabled; null for none
};

// Two keys reach the properties tool and differ on purpose: "DriverProperties" obeys the menu,
// "Properties" does not look at it.
inline constexpr ToolbarCommand kToolbarCommands[] = {
    {"Delete", &frmDrivers::mnuFileDelete_Click, &MainWindow::mnuFileDelete},
    {"Properties", &frmDrivers::mnuFileProperties_Click, nullptr},
    {"Download", &frmDrivers::mnuFileDownload_Click, &MainWindow::mnuFileDownload},
    {"Upload", &frmDrivers::mnuFileUpload_Click, &MainWindow::mnuFileUpload},
    {"DriverProperties", &frmDrivers::mnuFileProperties_Click, &MainWindow::mnuFileProperties},
};

// The view buttons, by view mode.
inline constexpr std::string_view kViewButtonKeys[MainWindow::kViewModes] = {
    "ViewLarge", "ViewSmall", "ViewList", "ViewDetails"};

}  // namespace tarvo
