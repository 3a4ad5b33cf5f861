#include "support/made_dictionary.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarvo::test {

std::string MakeDictionary(const TemporaryFolder& folder, std::string_view poText,
                           const std::string& options, const std::string& name) {
  const std::string source = folder.WriteFile("phrases.po", poText);
  const std::string target = folder / name;
  const std::string command =
      MSGFMT " " + options + " --output-file='" + target + "' '" + source + "' 2>/dev/null";
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  return folder.ReadFile(name);
}

}  // namespace tarvo::test
