#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// One way to get a platform: the real one, or one that tests use in its place.
struct PlatformKind {
  const char* name;
  std::function<std::shared_ptr<Platform>()> make;
};

inline void PrintTo(const PlatformKind& kind, std::ostream* output) { *output << kind.name; }

// What every platform promises. Each case runs against the real system and against every platform
// that stands in for it in tests, in an empty folder that is the current one.
class PlatformContract : public ::testing::TestWithParam<PlatformKind> {
 protected:
  void SetUp() override { platform.ChangeCurrentFolder(folder.Path()); }

  const std::shared_ptr<Platform> owned_ = GetParam().make();
  Platform& platform = *owned_;
  const TemporaryFolder folder;
};

// The number of the RuntimeError that a step throws; 0 when it throws none.
inline int ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

// A path with the system's separator for each "/".
inline std::string InSystemForm(std::string path) {
  std::replace(path.begin(), path.end(), '/', kSeparator);
  return path;
}

}  // namespace tarvo::test
