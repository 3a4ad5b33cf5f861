#include "platform/file_times.h"

#include <chrono>

namespace tarvo::test {

void SetTime(const std::string& path, int year) {
  using std::chrono::January;
  const std::chrono::sys_seconds moment =
      std::chrono::sys_days(std::chrono::year(year) / January / 1);
  std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(moment));
}

}  // namespace tarvo::test
