#include "support/unique_folder.h"

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>

namespace tarvo::test {
namespace fs = std::filesystem;

std::string MakeUniqueFolder() {
  std::string pattern = (fs::canonical(fs::temp_directory_path()) / "tarvo-test-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
  return pattern;
}

void MakeRemovable(const std::string&) {}

}  // namespace tarvo::test
