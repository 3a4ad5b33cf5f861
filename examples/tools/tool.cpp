#include "tools/tool.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>
#include <utility>

#include "app/globals/settings_keys.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo::tools {

namespace {

constexpr const char* kMaker = "Halvex Limited";
constexpr int kRecordAttempts = 10;

// Long enough for other programs to have finished their writing.
void PauseForOthers() {
  std::random_device random;
  std::this_thread::sleep_for(std::chrono::milliseconds(100 + random() % 100));
}

std::vector<std::string> Arguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  if (const char* words = std::getenv(kOptionsVariable)) {
    for (std::string_view rest = words; !rest.empty();) {
      const std::string_view word = rest.substr(0, rest.find(' '));
      if (!word.empty()) arguments.emplace_back(word);
      rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
  }
  for (int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
  return arguments;
}

}  // namespace

Tool::Tool(Platform& platform, std::string driverFolder)
    : platform_(platform), driverFolder_(std::move(driverFolder)), settings_(platform) {
  settings_.OpenLocalRegistry(kMaker);
}

std::string Tool::DriverName() const { return std::string(FileNameOf(driverFolder_)); }

DriverDescription Tool::Description() {
  return ReadDescription(ReadWholeFile(platform_, JoinPath(driverFolder_, "driver.inf")));
}

void Tool::RecordVersion(std::string_view suffix, const std::function<void()>& pause) {
  const std::string version = Description().version;
  if (version.empty()) {
    throw RuntimeError(kInvalidProcedureCall, "The file \"driver.inf\" names no version");
  }
  const std::string key = std::string(keys::kToolVersion.name) + DriverName() + std::string(suffix);
  for (int attempt = 0; attempt < kRecordAttempts; ++attempt) {
    // A store of its own each time: its identity comes from the moment when it is made.
    RegistryReplacement store(platform_);
    store.OpenLocalRegistry(kMaker);
    store.SaveSetting(key, version);
    pause();
    if (store.GetSetting(key, "") == version) return;
  }
  throw RuntimeError(kDeviceIoError, "The version could not be stored");
}

std::optional<ToolOptions> ReadOptions(const std::vector<std::string>& arguments) {
  ToolOptions options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    if (EqualIgnoringCase(*argument, "/v")) {
      options.recordsVersion = true;
    } else if (*argument == "--fail") {
      options.fails = true;
    } else if (*argument == "--close") {
      options.closes = true;
    } else if (*argument == "--seconds" && argument + 1 != arguments.end()) {
      if (!ReadNumber(*++argument, ".", options.seconds)) return std::nullopt;
      if (!(options.seconds >= 0 && options.seconds <= 3600)) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  return options;
}

int RunTool(std::string_view versionSuffix, int argc, char** argv,
            const std::function<int(Tool&, const ToolOptions&)>& showWindow) {
  const std::string program(FileNameOf(argv[0]));
  const auto options = ReadOptions(Arguments(argc, argv));
  if (!options) {
    std::fprintf(stderr, "Usage: %s [/v] [--seconds N] [--fail] [--close]\n", program.c_str());
    return 2;
  }
  try {
    Tool tool(SystemPlatform(), SystemPlatform().ProgramFolder());
    if (!options->recordsVersion) return showWindow(tool, *options);
    tool.RecordVersion(versionSuffix, PauseForOthers);
    return 0;
  } catch (const RuntimeError& error) {
    std::fprintf(stderr, "%s: %s\n", program.c_str(), error.Description().c_str());
    return 1;
  }
}

}  // namespace tarvo::tools
