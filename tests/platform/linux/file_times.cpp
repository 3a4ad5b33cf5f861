#include "platform/file_times.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <time.h>

namespace tarvo::test {

// Both times are set: the system takes a file whose time of writing alone is set for a written one.
void SetTime(const std::string& path, int year) {
  tm calendar{};
  calendar.tm_year = year - 1900;
  calendar.tm_mday = 1;
  const timespec time{::timegm(&calendar), 0};
  const timespec times[] = {time, time};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

}  // namespace tarvo::test
