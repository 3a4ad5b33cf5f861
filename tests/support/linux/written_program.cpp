#include <filesystem>

#include "support/temporary_folder.h"

namespace tarvo::test {

std::string TemporaryFolder::WriteProgram(std::string_view name, std::string_view commands) const {
  const std::string path = WriteFile(name, "#!/bin/sh\n" + std::string(commands) + "\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

std::string TemporaryFolder::WriteNotingProgram(std::string_view name, const std::string& notes,
                                                std::string_view commands) const {
  return WriteProgram(name, "echo \"$0 $*\" >> '" + notes + "'\n" + std::string(commands));
}

}  // namespace tarvo::test
