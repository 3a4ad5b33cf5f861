#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "environment.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// A home of the test's own with folders for configuration and data of the user's and of the
// system's; nothing outside it is read.
class MimeFolders {
 public:
  // Desktop files; `more` are lines of "[Desktop Entry]".
  void Install(std::string_view name, std::string_view exec, std::string_view more = {}) const {
    InstallIn("data", name, exec, more);
  }
  void InstallIn(std::string_view dataFolder, std::string_view name, std::string_view exec,
                 std::string_view more = {}) const {
    home.WriteFile(std::string(dataFolder) + "/applications/" + std::string(name),
                   "[Desktop Entry]\nType=Application\nName=A program\nExec=" + std::string(exec) +
                       "\n" + std::string(more));
  }

  // The user's own mimeapps.list.
  void Configure(std::string_view text) const { home.WriteFile("config/mimeapps.list", text); }
  std::string Configuration() const { return home.ReadFile("config/mimeapps.list"); }

  const TemporaryFolder home;
  EnvironmentVariable homeVariable{"HOME", home.Path()};
  EnvironmentVariable configHome{"XDG_CONFIG_HOME", home / "config"};
  EnvironmentVariable configFolders{"XDG_CONFIG_DIRS", home / "etc-a:" + (home / "etc-b")};
  EnvironmentVariable dataHome{"XDG_DATA_HOME", home / "own-data"};
  EnvironmentVariable dataFolders{"XDG_DATA_DIRS", home / "data:" + (home / "data-b")};
  EnvironmentVariable desktop{"XDG_CURRENT_DESKTOP", std::nullopt};
};

}  // namespace tarvo::test
