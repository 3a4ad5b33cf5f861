#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// The main window's control that watches one folder while a tool writes data into it.
class FolderMonitor {
 public:
  // Begins to watch a folder; a watch that is on moves there. Raises what Platform::WatchFolder
  // raises, and watches nothing then.
  void Start(Platform& platform, std::string_view folder);

  // Ends the watch and gives the newest file written meanwhile; "" when there was none, or when no
  // watch was on.
  std::string Stop();

  bool IsOn() const { return watch_ != nullptr; }

 private:
  std::unique_ptr<FolderWatch> watch_;
};

// Starts the watch of a folder, or, without one, stops it and shows the newest file written
// meanwhile.
void FileMonitor(Platform& platform, FolderMonitor& monitor, std::string_view pth = {});

// Shows a file in the system's file manager. Nothing waits for it, and every failure is passed
// over.
void showfile(Platform& platform, std::string_view fil);

}  // namespace tarvo
