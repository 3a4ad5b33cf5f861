#pragma once

#include <string>

#include "tools/tool.h"

namespace tarvo::tools {

// What the user chooses in the properties window, kept per driver under "tarvo.settings_" + driver
// + "_PORT", "_SITE" and "_INTERVAL".
struct DeviceSettings {
  std::string port = "COM1";
  std::string site;   // "" when the device has no place of its own
  int interval = 30;  // minutes between two readings, 1 to 1440

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
