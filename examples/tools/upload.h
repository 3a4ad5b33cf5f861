#pragma once

#include <string>

#include "tools/device_settings.h"
#include "tools/transfer.h"

namespace tarvo::tools {

// Sends the interval that the user has chosen to the simulated device.
class Upload : public Transfer {
 public:
  explicit Upload(Tool& tool) : tool_(tool), interval_(LoadDeviceSettings(tool).interval) {}

  std::string Activity() const override { return "Sending the settings to the device ..."; }
  int BlockCount() const override { return 16; }
  void MoveBlock() override {}
  std::string Finish() override {
    SetIntervalOfDevice(tool_, interval_);
    return "The device has its new settings.";
  }

 private:
  Tool& tool_;
  int interval_;  // minutes
};

}  // namespace tarvo::tools
