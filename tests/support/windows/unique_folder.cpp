#include "support/unique_folder.h"

#include <windows.h>

#include <filesystem>
#include <stdexcept>

namespace tarvo::test {
namespace fs = std::filesystem;

std::string MakeUniqueFolder() {
  static int count = 0;
  const fs::path temporary = fs::canonical(fs::temp_directory_path());
  const std::string start = "tarvo-test-" + std::to_string(::GetCurrentProcessId()) + "-";
  // A process before this one may have had the same identifier and left something behind.
  for (int i = 0; i < 1000; ++i) {
    const fs::path path = temporary / (start + std::to_string(++count));
    if (fs::create_directory(path)) return path.string();
  }
  throw std::runtime_error("cannot make a temporary folder");
}

// Read-only files are not removed.
void MakeRemovable(const std::string& path) {
  std::error_code error;
  for (fs::recursive_directory_iterator entry(path, error), end; !error && entry != end;
       entry.increment(error)) {
    const DWORD attributes = ::GetFileAttributesW(entry->path().c_str());
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
      ::SetFileAttributesW(entry->path().c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    }
  }
}

}  // namespace tarvo::test
