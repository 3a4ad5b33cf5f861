#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "settings/registry_replacement.h"
#include "tools/driver_description.h"

namespace tarvo::tools {

// The driver that a tool belongs to: the folder that holds the tool's program. The folder's name is
// the driver's name.
class Tool {
 public:
  // Opens the settings store, which the platform finds; neither is closed before the object ends.
  Tool(Platform& platform, std::string driverFolder);

  Platform& System() { return platform_; }
  RegistryReplacement& Settings() { return settings_; }
  const std::string& DriverFolder() const { return driverFolder_; }
  std::string DriverName() const;

  // The folder's "driver.inf", in any letter case; throws 53 when there is none.
  DriverDescription Description();

  // Stores the driver's version under "tarvo.versions_" + driver + `suffix`. All tools of a driver
  // are started at once, and programs that write in the same instant can overwrite each other's
  // entries; so it looks again after a pause, up to ten times, whether the value has stayed.
  // `pause` should take a time of its own in every process. Throws 53 when there is no
  // "driver.inf", 5 when it names no version or the driver's name cannot be part of a key, 57 when
  // the value does not stay.
  void RecordVersion(std::string_view suffix, const std::function<void()>& pause);

 private:
  Platform& platform_;
  std::string driverFolder_;
  RegistryReplacement settings_;
};

// The command line of a tool.
struct ToolOptions {
  bool recordsVersion = false;  // "/v" or "/V": record the version and end, without a window
  double seconds = 3;           // "--seconds N": how long a transfer takes, 0 to 3600
  bool fails = false;           // "--fail": the connection breaks halfway
  bool closes = false;          // "--close": the window answers itself (Close, or OK) and goes
};

// Nothing when an argument is not understood.
std::optional<ToolOptions> ReadOptions(const std::vector<std::string>& arguments);

// The variable whose blank-separated words stand before a tool's arguments: for whoever starts a
// tool through another program and wants options to reach it.
inline constexpr const char* kOptionsVariable = "TARVO_SAMPLE_TOOL_OPTIONS";

// The `main` of every tool: reads the options, records the version or shows the window, and gives
// the program's exit code: 0, 1 when something failed, 2 when the options are wrong. Failures go to
// the standard error output.
int RunTool(std::string_view versionSuffix, int argc, char** argv,
            const std::function<int(Tool&, const ToolOptions&)>& showWindow);

}  // namespace tarvo::tools
