#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tools/tool.h"

namespace tarvo::tools {

// What the properties window offers and allows.
inline constexpr std::array<std::string_view, 5> kPorts{"COM1", "COM2", "COM3", "COM4", "USB"};
inline constexpr int kLongestSite = 60;      // characters
inline constexpr int kShortestInterval = 1;  // minutes
inline constexpr int kLongestInterval = 1440;

// What the user chooses in the properties window, kept per driver under "tarvo.settings_" + driver
// + "_PORT", "_SITE" and "_INTERVAL".
struct DeviceSettings {
  std::string port = "COM1";
  std::string site;   // "" when the device has no place of its own
  int interval = 30;  // minutes between two readings

  bool operator==(const DeviceSettings&) const = default;
};

// The stored values; the defaults for those that are missing or make no sense.
DeviceSettings LoadDeviceSettings(Tool& tool);

void SaveDeviceSettings(Tool& tool, const DeviceSettings& values);

// The interval that the simulated device works with: its memory is a value of its own,
// "tarvo.device_" + driver + "_INTERVAL", so that a new choice counts from the next upload on.
int IntervalOfDevice(Tool& tool);
void SetIntervalOfDevice(Tool& tool, int minutes);

}  // namespace tarvo::tools
