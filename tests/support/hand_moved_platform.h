#pragma once

#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "platform/forwarding_platform.h"
#include "support/memory_registry.h"

namespace tarvo::test {

// The real system with a clock moved by hand, and with the locale, the special folders and the
// system registry that a test chooses: at first CSV files open in the viewer. The files are real.
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

  std::optional<std::string> SpecialFolder(int identifier) override {
    const auto folder = specialFolders.find(identifier);
    if (folder == specialFolders.end()) return std::nullopt;
    return folder->second;
  }

 private:
  static constexpr double kSecondsPerDay = 86400;

  static std::string Padded(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
  }
};

}  // namespace tarvo::test
