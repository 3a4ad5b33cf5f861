#include "tools/device_settings.h"

#include "base/numbers.h"

namespace tarvo::tools {

namespace {

std::string ChosenKey(const Tool& tool, const char* name) {
  return "tarvo.settings_" + tool.DriverName() + name;
}

std::string IntervalKeyOfDevice(const Tool& tool) {
  return "tarvo.device_" + tool.DriverName() + "_INTERVAL";
}

int StoredInterval(Tool& tool, const std::string& key) {
  double interval = 0;
  const bool isNumber = ReadNumber(tool.Settings().GetSetting(key, ""), ".", interval);
  if (!isNumber || !(interval >= kShortestInterval && interval <= kLongestInterval))
    return DeviceSettings{}.interval;
  return static_cast<int>(interval);
}

}  // namespace

DeviceSettings LoadDeviceSettings(Tool& tool) {
  const DeviceSettings defaults;
  DeviceSettings values;
  values.port = tool.Settings().GetSetting(ChosenKey(tool, "_PORT"), defaults.port);
  values.site = tool.Settings().GetSetting(ChosenKey(tool, "_SITE"), defaults.site);
  values.interval = StoredInterval(tool, ChosenKey(tool, "_INTERVAL"));
  return values;
}

void SaveDeviceSettings(Tool& tool, const DeviceSettings& values) {
  tool.Settings().SaveSetting(ChosenKey(tool, "_PORT"), values.port);
  tool.Settings().SaveSetting(ChosenKey(tool, "_SITE"), values.site);
  tool.Settings().SaveSetting(ChosenKey(tool, "_INTERVAL"), std::to_string(values.interval));
}

int IntervalOfDevice(Tool& tool) { return StoredInterval(tool, IntervalKeyOfDevice(tool)); }

void SetIntervalOfDevice(Tool& tool, int minutes) {
  tool.Settings().SaveSetting(IntervalKeyOfDevice(tool), std::to_string(minutes));
}

}  // namespace tarvo::tools
