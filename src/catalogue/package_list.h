#pragma once

#include <array>
#include <string>

#include "base/runtime_error.h"

namespace tarvo {

// What driver packages are called.
inline constexpr const char* kPackagePattern = "*.drv";

// The list of package paths that the windows and the install loop share, with indexes 0 to 100,
// used from 1. Entry 1 "CANCEL" means that the user cancelled, an empty entry 1 that he asks for
// another disk; the list ends at the first empty entry. Who fills it next finds what was left in
// it.
class PackageList {
 public:
  static constexpr int kLast = 100;
  static constexpr const char* kCancel = "CANCEL";

  // Error 9 outside 0 to 100.
  std::string& operator[](int index) {
    if (index < 0 || index > kLast) throw RuntimeError(kSubscriptOutOfRange);
    return entries_[static_cast<std::size_t>(index)];
  }

  // The entry behind another one; "" behind the last, where the list ends.
  const std::string& After(int index) {
    static const std::string end;
    return index >= kLast ? end : (*this)[index + 1];
  }

 private:
  std::array<std::string, kLast + 1> entries_;
};

}  // namespace tarvo
