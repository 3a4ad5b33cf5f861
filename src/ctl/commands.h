#pragma once

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/globals/globals.h"

namespace tarvo {

// A failure of a command, said in one sentence.
class CommandFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What a command works with: the run's globals with the settings file named but nothing loaded yet,
// the arguments behind the command's words without its options, and the standard output.
struct CommandRun {
  Globals& globals;
  std::vector<std::string> arguments;
  std::ostream& out;
  bool json = false;
  bool yes = false;  // every question is answered with Yes
};

struct Command {
  std::string_view words;      // "settings get"
  std::string_view arguments;  // "KEY", as the help shows them
  std::size_t fewest;          // how many arguments it takes
  std::size_t most;
  bool takesJson;
  bool takesYes;
  std::string_view help;
  void (*run)(CommandRun&);
};

// Every command of the terminal program.
const std::vector<Command>& AllCommands();

// Writes rows of texts as an aligned table, or as JSON where that was asked for; the first row
// names the columns.
void WriteRows(CommandRun& run, std::vector<std::vector<std::string>> rows);

void ListSettings(CommandRun& run);
void GetSettingValue(CommandRun& run);
void SetSetting(CommandRun& run);
void DeleteSetting(CommandRun& run);
void ListDrivers(CommandRun& run);
void InstallPackages(CommandRun& run);
void RefreshInstalledDrivers(CommandRun& run);
void RemoveInstalledDriver(CommandRun& run);
void RecordToolVersions(CommandRun& run);
void ExamineSystem(CommandRun& run);
void TranslatePhrase(CommandRun& run);
void CheckPackages(CommandRun& run);
void UnpackPackage(CommandRun& run);

}  // namespace tarvo
