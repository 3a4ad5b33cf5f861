#pragma once

#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/forwarding_platform.h"
#include "support/memory_registry.h"

namespace tarvo::test {

// The real system with a clock moved by hand, and with the locale, the special folders and the
// system registry that a test chooses: at first CSV files open in the viewer. The files and the
// processes are real; what the desktop would show is only noted.
// Tests set the members, or derive and override more.
class HandMovedPlatform : public ForwardingPlatform {
 public:
  HandMovedPlatform() : ForwardingPlatform(SystemPlatform()) {
    registry.SetString(".csv", "csvFile");
    registry.SetString("csvFile\\shell\\open\\command", "csvview \"%1\"");
  }

  // The clock: 45000 is 15 March 2023. Each reading is followed by `secondsPerReading`, so that a
  // loop that watches the clock sees time pass.
  double day = 45000;
  double secondsOfDay = 12 * 3600.0;
  double secondsPerReading = 0;

  std::string decimalSign = ".";
  // Runs of "d", "m" and "y" stand for the date's parts, padded with zeros to the length of the run
  // ("yy" for the last two digits of the year); everything else stands for itself.
  std::string shortDatePattern = "mm/dd/yyyy";

  // A look-up of a folder that is not here fails.
  std::map<int, std::string> specialFolders;

  MemoryRegistry registry;  // its only root

  // What the desktop was asked to do; it does nothing. Set, `desktopError` is raised instead.
  std::vector<std::string> openedFolders, shownFiles, openedByVerb, classicHelp;
  std::vector<int> broughtToFront;
  std::optional<RuntimeError> desktopError;

  // The sections of program settings that were to be deleted, as "application/section"; the first
  // fails with `settingsError`, if that is set.
  std::vector<std::string> deletedSettings;
  std::optional<RuntimeError> settingsError;

  std::string refusesAttributesOf;  // a file whose attributes cannot be set
  std::string refusesToList;        // a folder that cannot be listed
  bool refusesToWatch = false;      // any folder

  bool hasTerminal = false;  // to answer questions on

  // What was started, the program's path with its arguments behind it; every one really is.
  std::vector<std::string> started;
  int lastProcess = 0;

  // Moves the clock, past midnight as needed.
  void PassSeconds(double seconds) {
    secondsOfDay += seconds;
    const double days = std::floor(secondsOfDay / kSecondsPerDay);
    day += days;
    secondsOfDay -= days * kSecondsPerDay;
  }

  double Now() override {
    const double now = day + secondsOfDay / kSecondsPerDay;
    PassSeconds(secondsPerReading);
    return now;
  }

  double SecondsSinceMidnight() override {
    const double now = secondsOfDay;
    PassSeconds(secondsPerReading);
    return now;
  }

  std::string DecimalSeparator() override { return decimalSign; }

  std::string ShortDate(CalendarDate date) override {
    std::string text;
    for (std::size_t i = 0; i < shortDatePattern.size();) {
      const char letter = shortDatePattern[i];
      std::size_t run = shortDatePattern.find_first_not_of(letter, i);
      if (run == std::string::npos) run = shortDatePattern.size();
      run -= i;
      if (letter == 'd' || letter == 'm') {
        text += Padded(letter == 'd' ? date.day : date.month, run);
      } else if (letter == 'y') {
        text += Padded(run == 2 ? date.year % 100 : date.year, run);
      } else {
        text.append(run, letter);
      }
      i += run;
    }
    return text;
  }

  OpenedKey OpenRegistryKey(RegistryRoot, std::string_view path, RegistryAccess access) override {
    return registry.Open(path, access);
  }
  OpenedKey MakeRegistryKey(RegistryRoot, std::string_view path) override {
    return registry.Make(path);
  }

  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    lastProcess = ForwardingPlatform::StartProcess(program, arguments, window);
    std::string& call = started.emplace_back(program);
    for (const std::string& argument : arguments) call.append(" ").append(argument);
    if (window == StartWindow::kMinimised) call += " (minimised)";
    return lastProcess;
  }
  bool InputIsTerminal() override { return hasTerminal; }
  void BringToFront(int process) override { broughtToFront.push_back(process); }
  void OpenFolder(std::string_view path) override { Ask(openedFolders, path); }
  void ShowFile(std::string_view path) override { Ask(shownFiles, path); }
  void OpenByVerb(std::string_view path, std::string_view workingFolder) override {
    Ask(openedByVerb, std::string(path) + " in " + std::string(workingFolder));
  }
  void OpenClassicHelp(std::string_view path, HelpCommand command, std::string_view key) override {
    Ask(classicHelp, std::string(path) + " " + std::to_string(static_cast<int>(command)) + " \"" +
                         std::string(key) + "\"");
  }

  void SetAttributes(std::string_view path, unsigned attributes) override {
    if (path == refusesAttributesOf && !path.empty()) throw RuntimeError(kPermissionDenied);
    ForwardingPlatform::SetAttributes(path, attributes);
  }
  std::vector<FolderEntry> Entries(std::string_view path) override {
    if (path == refusesToList && !path.empty()) throw RuntimeError(kPermissionDenied);
    return ForwardingPlatform::Entries(path);
  }
  std::unique_ptr<FolderWatch> WatchFolder(std::string_view path) override {
    if (refusesToWatch) throw RuntimeError(kPathFileAccessError);
    return ForwardingPlatform::WatchFolder(path);
  }

  void DeleteProgramSettings(std::string_view application, std::string_view section) override {
    deletedSettings.push_back(std::string(application).append("/").append(section));
    if (settingsError) throw RuntimeError(*settingsError);
  }

  std::optional<std::string> SpecialFolder(int identifier) override {
    const auto folder = specialFolders.find(identifier);
    if (folder == specialFolders.end()) return std::nullopt;
    return folder->second;
  }

 private:
  void Ask(std::vector<std::string>& asked, std::string_view what) {
    if (desktopError) throw RuntimeError(*desktopError);
    asked.emplace_back(what);
  }

  static constexpr double kSecondsPerDay = 86400;

  static std::string Padded(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
  }
};

}  // namespace tarvo::test
