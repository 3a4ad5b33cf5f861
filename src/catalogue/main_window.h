#pragma once

#include <array>
#include <string>

#include "catalogue/folder_monitor.h"
#include "catalogue/package_list.h"
#include "forms/controls.h"
#include "forms/form.h"
#include "forms/list_view.h"

namespace tarvo {

// The main window as plain state: its controls under their names with their design values, and what
// the window remembers. The driver list and the actions work on this; the handlers are those of
// frmDrivers.
class MainWindow : public Form {
 public:
  static constexpr int kViewModes = 4;
  static constexpr int kFirstViewButton = 5;  // number of the toolbar button of view mode 0

  MenuItem mnuFile, mnuFileOpen, mnuFileDownload, mnuFileUpload, mnuFileProperties,
      mnuFileMobileDevice, mnuFileInstallMobile, mnuFileDelete, mnuFileRename, mnuFileClose;
  MenuItem mnuView, mnuViewToolbar, mnuViewStatusBar, mnuViewLineUpIcons, mnuViewRefresh,
      mnuViewOptions;
  std::array<MenuItem, kViewModes> mnuListViewMode;  // index = view mode
  MenuItem mnuHelp, mnuHelpContents, mnuHelpSearch, mnuHelpAbout;
  std::array<MenuItem*, 3> MenuBar{&mnuFile, &mnuView, &mnuHelp};

  Toolbar tbToolBar;
  ListView lvListView;
  StatusBar sbStatusBar;
  ImageList imlListView, imlSListView;  // large and small icons of the list
  ImageControl imgNew, imgSNew;         // hidden: the "Add Driver" item's pictures
  CommonDialog dlgCommonDialog;
  FileListBox file_drivers;  // hidden: the packages in the base directory
  Timer tmrStuff;
  FolderMonitor TARVO1;  // watches where the running download tools write

  PackageList DriverFileList;  // program-wide: the packages to install
  std::string dataPath;        // the data folder, also the base directory
  std::string OldExeSetting;   // kept, not otherwise used
  std::string ExeSetting;
  bool Refreshing = false;     // while packages are installed unattended
  bool FirstActivate = false;  // until the first activation; for nobody else to read

 protected:
  MainWindow();

 private:
  void DesignMenus();
  void DesignToolbar();
  void DesignOthers();
  void Fill(MenuItem& menu, std::string name, std::string caption, std::vector<MenuItem*> entries);
  void Entry(MenuItem& entry, std::string name, std::string caption);

  std::array<MenuItem, 8> separators_;
};

}  // namespace tarvo
