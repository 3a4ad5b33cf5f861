#pragma once

#include <string>

namespace tarvo {

// The user's file manager as the session bus has it: whoever owns, or would be started for, the
// name org.freedesktop.FileManager1 (File Manager D-Bus Interface). Nothing here throws, and
// nothing waits for the file manager; the bus itself is given up after five seconds.
enum class FileManager {
  kNoLibrary,  // libsystemd, which speaks to the bus, is missing or damaged
  kNoBus,      // no session bus answers
  kNone,       // nobody has the name, or who was started for it has failed before
  kStartable,  // the bus starts it at the first call
  kRunning,
};

FileManager FindFileManager();

// Asks the file manager to open a folder, or to show a file selected in its folder. False when none
// could be asked.
bool OpenInFileManager(const std::string& folderUri);
bool ShowInFileManager(const std::string& fileUri);

}  // namespace tarvo
