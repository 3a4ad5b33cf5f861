#include "catalogue/main_window.h"

#include <utility>

namespace tarvo {
namespace {

constexpr int kViewGroup = 1;
constexpr float kNameColumnWidth = 2200;
constexpr int kClockInterval = 10000;

ToolbarButton CommandButton(const char* key, const char* toolTip, const char* image) {
  ToolbarButton button;
  button.Key = key;
  button.ToolTipText = toolTip;
  button.Image = image;
  return button;
}

ToolbarButton ViewButton(const char* key, const char* toolTip, const char* image) {
  ToolbarButton button = CommandButton(key, toolTip, image);
  button.Group = kViewGroup;
  return button;
}

// A command on one driver; nothing is selected at first.
ToolbarButton DriverButton(const char* key, const char* toolTip, const char* image) {
  ToolbarButton button = CommandButton(key, toolTip, image);
  button.Enabled = false;
  return button;
}

ToolbarButton Separator() {
  ToolbarButton button;
  button.IsSeparator = true;
  return button;
}

}  // namespace

MainWindow::MainWindow() : Form("frmDrivers", Phrase("Tarvo")) {
  for (MenuItem& separator : separators_) separator.IsSeparator = true;
  DesignMenus();
  DesignToolbar();
  DesignOthers();
}

void MainWindow::Entry(MenuItem& entry, std::string name, std::string caption) {
  entry.Caption = std::move(caption);
  Enter(entry, std::move(name));
}

void MainWindow::Fill(MenuItem& menu, std::string name, std::string caption,
                      std::vector<MenuItem*> entries) {
  Entry(menu, std::move(name), std::move(caption));
  menu.Items = std::move(entries);
}

void MainWindow::DesignMenus() {
  auto* line = separators_.data();
  Fill(mnuFile, "mnuFile", Phrase("&File"),
       {&mnuFileOpen, line, &mnuFileDownload, &mnuFileUpload, &mnuFileProperties,
        &mnuFileMobileDevice, &mnuFileInstallMobile, line + 1, &mnuFileDelete, &mnuFileRename,
        line + 2, &mnuFileClose});
  Entry(mnuFileOpen, "mnuFileOpen", Phrase("&Open"));
  Entry(mnuFileDownload, "mnuFileDownload", Phrase("Do&wnload"));
  Entry(mnuFileUpload, "mnuFileUpload", Phrase("&Upload"));
  Entry(mnuFileProperties, "mnuFileProperties", Phrase("Propert&ies..."));
  Entry(mnuFileMobileDevice, "mnuFileMobileDevice", Phrase("Win32 Mobile Device..."));
  Entry(mnuFileInstallMobile, "mnuFileInstallMobile", Phrase("Install Mobile Driver..."));
  Entry(mnuFileDelete, "mnuFileDelete", Phrase("&Delete"));
  Entry(mnuFileRename, "mnuFileRename", Phrase("Rena&me"));
  Entry(mnuFileClose, "mnuFileClose", Phrase("&Close"));
  mnuFileInstallMobile.Enabled = false;

  Fill(mnuView, "mnuView", Phrase("&View"),
       {&mnuViewToolbar, &mnuViewStatusBar, line + 3, &mnuListViewMode[0], &mnuListViewMode[1],
        &mnuListViewMode[2], &mnuListViewMode[3], line + 4, &mnuViewLineUpIcons, line + 5,
        &mnuViewRefresh, &mnuViewOptions});
  Entry(mnuViewToolbar, "mnuViewToolbar", Phrase("&Toolbar"));
  Entry(mnuViewStatusBar, "mnuViewStatusBar", Phrase("Status &Bar"));
  mnuViewToolbar.Checked = true;
  mnuViewStatusBar.Checked = true;
  Entry(mnuListViewMode[kLargeIcons], "mnuListViewMode0", Phrase("Lar&ge Icons"));
  Entry(mnuListViewMode[kSmallIcons], "mnuListViewMode1", Phrase("S&mall Icons"));
  Entry(mnuListViewMode[kList], "mnuListViewMode2", Phrase("&List"));
  Entry(mnuListViewMode[kDetails], "mnuListViewMode3", Phrase("&Details"));
  Entry(mnuViewLineUpIcons, "mnuViewLineUpIcons", Phrase("Li&ne Up Icons"));
  Entry(mnuViewRefresh, "mnuViewRefresh", Phrase("&Refresh"));
  Entry(mnuViewOptions, "mnuViewOptions", Phrase("&Options..."));

  Fill(mnuHelp, "mnuHelp", Phrase("&Help"),
       {&mnuHelpContents, &mnuHelpSearch, line + 6, &mnuHelpAbout});
  Entry(mnuHelpContents, "mnuHelpContents", Phrase("&Contents"));
  Entry(mnuHelpSearch, "mnuHelpSearch", Phrase("&Search For Help On..."));
  Entry(mnuHelpAbout, "mnuHelpAbout", Phrase("&About Tarvo..."));
}

void MainWindow::DesignToolbar() {
  Enter(tbToolBar, "tbToolBar");
  // The view buttons are numbers 5 to 8: the view code presses button view mode + kFirstViewButton.
  tbToolBar.Buttons = {
      CommandButton("Delete", Phrase("Delete"), "delete"),
      CommandButton("Properties", Phrase("Properties"), "properties"),
      Separator(),
      Separator(),
      ViewButton("ViewLarge", Phrase("Large Icon View"), "view-large"),
      ViewButton("ViewSmall", Phrase("Small Icon View"), "view-small"),
      ViewButton("ViewList", Phrase("List View"), "view-list"),
      ViewButton("ViewDetails", Phrase("Details View"), "view-details"),
      Separator(),
      DriverButton("Download", Phrase("Download"), "download"),
      DriverButton("Upload", Phrase("Upload"), "upload"),
      DriverButton("DriverProperties", Phrase("Properties"), "driver-properties"),
  };
}

void MainWindow::DesignOthers() {
  Enter(lvListView, "lvListView");
  lvListView.ColumnHeaders.resize(1 + ListItem::kSubItems);
  lvListView.ColumnHeaders[0] = {"Name", kNameColumnWidth};
  lvListView.ColumnHeaders[1].Text = "Downloads";

  Enter(sbStatusBar, "sbStatusBar");
  sbStatusBar.Panels = {{PanelStyle::kText, ""}, {PanelStyle::kDate, ""}, {PanelStyle::kTime, ""}};

  Enter(imlListView, "imlListView");
  Enter(imlSListView, "imlSListView");
  Enter(imgNew, "imgNew");
  Enter(imgSNew, "imgSNew");
  imgNew.Visible = imgSNew.Visible = false;
  imgNew.Picture = imgSNew.Picture = OwnIcon("add-driver");

  Enter(dlgCommonDialog, "dlgCommonDialog");
  dlgCommonDialog.DefaultExt = "drv";
  dlgCommonDialog.DialogTitle = Phrase("Add Driver");
  dlgCommonDialog.FileName = kPackagePattern;
  dlgCommonDialog.Filter = Phrase("Driver Files (*.drv)");

  Enter(file_drivers, "file_drivers");
  file_drivers.Pattern = kPackagePattern;
  file_drivers.Visible = false;

  Enter(tmrStuff, "tmrStuff");
  tmrStuff.Interval = kClockInterval;
}

}  // namespace tarvo
