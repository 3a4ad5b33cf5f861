#include <filesystem>
#include <stdexcept>

#include "support/temporary_folder.h"

namespace tarvo::test {

std::string TemporaryFolder::WriteProgram(std::string_view name, std::string_view commands) const {
  if (!commands.empty()) throw std::invalid_argument("there is no shell here");
  const std::string path = WriteFile(name);
  std::filesystem::copy_file(IDLE_PROGRAM, path, std::filesystem::copy_options::overwrite_existing);
  return path;
}

}  // namespace tarvo::test
