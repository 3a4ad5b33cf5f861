#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <time.h>

#include <string>

#include "support/temporary_folder.h"

namespace tarvo::test {

// Gives a file the beginning of a year, in universal time, as the time when it was written.
inline void SetTime(const std::string& path, int year) {
  tm calendar{};
  calendar.tm_year = year - 1900;
  calendar.tm_mday = 1;
  const timespec time{::timegm(&calendar), 0};
  const timespec times[] = {time, time};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

// Waits until a file that is written now gets a later time than one written before: the clock for
// the times of files moves in steps of some milliseconds.
inline void WaitForLaterFileTime() {
  const TemporaryFolder folder;
  const auto timeOfNewFile = [&] {
    struct stat status {};
    EXPECT_EQ(::stat(folder.WriteFile("file").c_str(), &status), 0);
    return status.st_mtim;
  };
  const timespec first = timeOfNewFile();
  timespec now = first;
  while (now.tv_sec == first.tv_sec && now.tv_nsec == first.tv_nsec) now = timeOfNewFile();
}

}  // namespace tarvo::test
