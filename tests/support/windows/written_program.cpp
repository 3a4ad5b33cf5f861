#include <stdexcept>

#include "support/temporary_folder.h"

namespace tarvo::test {

std::string TemporaryFolder::WriteProgram(std::string_view name, std::string_view commands) const {
  if (!commands.empty()) throw std::invalid_argument("there is no shell here");
  return WriteFile(name, ReadFileAt(NOTING_PROGRAM));
}

// The program reads where to note from its own end, since a file beside it would be in the test's
// way.
std::string TemporaryFolder::WriteNotingProgram(std::string_view name, const std::string& notes,
                                                std::string_view commands) const {
  const std::string program = ReadFileAt(WriteProgram(name, commands));
  return WriteFile(name, program + "notes=" + notes);
}

}  // namespace tarvo::test
