#pragma once

#include <filesystem>
#include <string>

#include "support/temporary_folder.h"

namespace tarvo::test {

// Gives a file the beginning of a year, in universal time, as the time when it was written.
void SetTime(const std::string& path, int year);

// Waits until a file that is written now gets a later time than one written before: the clock for
// the times of files moves in steps of some milliseconds.
inline void WaitForLaterFileTime() {
  const TemporaryFolder folder;
  const auto timeOfNewFile = [&] {
    return std::filesystem::last_write_time(folder.WriteFile("file"));
  };
  const auto first = timeOfNewFile();
  while (timeOfNewFile() == first) continue;
}

}  // namespace tarvo::test
