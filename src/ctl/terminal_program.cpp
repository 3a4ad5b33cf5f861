#include "ctl/terminal_program.h"

#include <algorithm>
#include <limits>

#include "app/globals/version.h"
#include "base/runtime_error.h"
#include "ctl/commands.h"
#include "ctl/table.h"
#include "ctl/terminal_front_end.h"

namespace tarvo {
namespace {

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();
constexpr std::string_view kJsonOption = "--json";
constexpr std::string_view kYesOption = "--yes";

std::string CallOf(const Command& command) {
  std::string call(command.words);
  if (!command.arguments.empty()) call.append(" ").append(command.arguments);
  if (command.takesYes) call.append(" [--yes]");
  if (command.takesJson) call.append(" [--json]");
  return call;
}

void WriteHelp(std::ostream& out) {
  out << "tarvoctl: Tarvo's settings and drivers from a terminal\n\n";
  std::vector<std::vector<std::string>> rows;
  for (const Command& command : AllCommands()) {
    rows.push_back({"  tarvoctl " + CallOf(command), std::string(command.help)});
  }
  rows.push_back({"  tarvoctl --help", "show this help"});
  rows.push_back({"  tarvoctl --version", "show the version"});
  out << AlignedTable(rows)
      << "\nThe dictionary is TARVO.DIC in the current folder. PARAMETERS are separated by \"¦\".\n"
         "Exit codes: 0 success, 1 not found or failed, 2 wrong usage.\n";
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    words.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return words;
}

const Command* FindCommand(const std::vector<std::string>& arguments) {
  for (const Command& command : AllCommands()) {
    const auto words = Words(command.words);
    if (arguments.size() >= words.size() &&
        std::equal(words.begin(), words.end(), arguments.begin())) {
      return &command;
    }
  }
  return nullptr;
}

// Runs the command and turns every failure into one sentence.
int RunCommand(const Command& command, CommandRun& run, std::ostream& err) {
  try {
    command.run(run);
    run.out.flush();
    if (run.out) return kSuccess;
    err << "tarvoctl: The results could not be written.\n";
  } catch (const CommandFailure& failure) {
    err << "tarvoctl: " << failure.what() << '\n';
  } catch (const RuntimeError& error) {
    err << "tarvoctl: " << OneLine(error.Description()) << " (error " << error.Number() << ").\n";
  }
  return kFailed;
}

int WrongUsage(std::ostream& err, const std::string& sentence) {
  err << "tarvoctl: " << sentence << " See tarvoctl --help.\n";
  return kWrongUsage;
}

}  // namespace

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> commands{
      {"settings list", "", 0, 0, false, false, "list all settings: key, tabulator, value",
       ListSettings},
      {"settings get", "KEY", 1, 1, false, false, "show a setting's value", GetSettingValue},
      {"settings set", "KEY VALUE", 2, 2, false, false, "store a setting", SetSetting},
      {"settings delete", "KEY", 1, 1, false, false, "delete a setting; letter case counts",
       DeleteSetting},
      {"drivers list", "", 0, 0, true, false, "list the installed drivers as the window does",
       ListDrivers},
      {"drivers install", "FILE...", 1, kAnyNumber, false, false,
       "install drivers from packages, as the window does", InstallPackages},
      {"drivers refresh", "", 0, 0, false, false,
       "install the packages in the data folder whose drivers are installed already",
       RefreshInstalledDrivers},
      {"drivers remove", "NAME", 1, 1, true, true,
       "remove a driver and its data, asking as the window does", RemoveInstalledDriver},
      {"drivers versions", "", 0, 0, true, false,
       "let every tool record its version, wait and list them", RecordToolVersions},
      {"package check", "FILE...", 1, kAnyNumber, true, false,
       "check driver packages; .pkg needs no driver.inf", CheckPackages},
      {"package unpack", "FILE FOLDER", 2, 2, false, false,
       "check a package and unpack it into a folder", UnpackPackage},
      {"doctor", "", 0, 0, true, false, "say what is missing or odd on this machine",
       ExamineSystem},
      {"translate", "PHRASE [PARAMETERS]", 1, 2, false, false, "translate a phrase",
       TranslatePhrase},
  };
  return commands;
}

int RunTerminalProgram(Platform& platform, const std::vector<std::string>& arguments,
                       std::ostream& out, std::ostream& err, std::istream& in) {
  if (arguments.empty()) return WrongUsage(err, "No command was given.");
  if (arguments.size() == 1 && arguments[0] == "--help") {
    WriteHelp(out);
    return kSuccess;
  }
  if (arguments.size() == 1 && arguments[0] == "--version") {
    out << "tarvoctl " << kVersion << '\n';
    return kSuccess;
  }
  const Command* command = FindCommand(arguments);
  if (!command)
    return WrongUsage(err, "\"" + OneLine(arguments[0]) + "\" is no command, or lacks a word.");

  TerminalFrontEnd frontEnd(in, err);
  Globals globals(platform, frontEnd, "");
  std::vector<std::string> rest(
      arguments.begin() + static_cast<std::ptrdiff_t>(Words(command->words).size()),
      arguments.end());
  CommandRun run{globals, std::move(rest), out};
  if (command->takesYes) run.yes = std::erase(run.arguments, kYesOption) > 0;
  if (run.yes) frontEnd.AssumeYes();
  if (command->takesJson) run.json = std::erase(run.arguments, kJsonOption) > 0;
  if (run.arguments.size() < command->fewest || run.arguments.size() > command->most) {
    return WrongUsage(err, "The call is: tarvoctl " + CallOf(*command) + ".");
  }
  return RunCommand(*command, run, err);
}

}  // namespace tarvo
