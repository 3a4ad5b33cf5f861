#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

// The name of the driver that a package installs: the file's name without its last four characters,
// cut before its first "_". Error 5 for a file name of less than four characters.
std::string DriverNameOfPackage(std::string_view path);

// Whether a name can be a driver's folder: not "", ".", "..", and without a separator of any
// system.
bool IsDriverName(std::string_view name);

// The packages to install, and who is looking.
struct InstallOrder {
  std::string firstPackage;  // path; a relative one starts in the current folder
  int index = 1;             // of the first package in DriverFileList; 0 for one not in it
  bool fromDialog = false;   // chosen in the open-file dialog
};

// A package that the install loop has refused.
struct RefusedPackage {
  std::string path;
  std::string reason;  // one English sentence
};

// The install loop: checks and unpacks one package after the other into "Drivers" of the current
// folder with its field definitions at the end of its description, lets each of its programs record
// its version and installs hand-held components. Afterwards starts the properties tool of a single
// new driver, unless the window is refreshing, and rebuilds the list.
//
// The first invalid package ends it at once with the message "Invalid Driver file": drivers
// installed before stay, the status text stays and the list is not rebuilt. That package is given
// back then; nothing otherwise. Error 5 for a package whose name is too short. Every other failure
// is passed over; a driver whose folder is a symbolic link is one, since what that leads to is no
// driver's.
std::optional<RefusedPackage> InstallDrivers(Globals& globals, MainWindow& window,
                                             const InstallOrder& order);

// Collects the packages in the base directory whose drivers are installed already, into
// DriverFileList from entry 1 on; entries behind them stay. Gives their number. Error 5 for a
// package file without "_" in its name, error 9 for more than 100.
int CollectPackagesOfInstalledDrivers(Globals& globals, MainWindow& window);

}  // namespace tarvo
