#pragma once

#include <string>
#include <vector>

#include "tools/data_texts.h"
#include "tools/tool.h"
#include "tools/transfer.h"

namespace tarvo::tools {

// Fetches the last 24 hours from the simulated device, a reading a block, and writes the kinds of
// files that the driver's description names into the folder "Data" of the driver (found in any
// letter case, made when it is missing), as "<driver> <date>.csv". A name that is taken in any
// letter case, by any kind of this download, gives all of them " 2", " 3", ... behind the date: no
// earlier download is ever replaced.
class Download : public Transfer {
 public:
  // Takes the moment from the clock, the interval from the device and the place from the settings.
  explicit Download(Tool& tool);

  std::string Activity() const override { return "Reading the device's memory ..."; }
  int BlockCount() const override;
  void MoveBlock() override;
  std::string Finish() override;

 private:
  std::string FreeName(const std::string& folder) const;

  Tool& tool_;
  DeviceLog log_;
  double end_;
  int interval_;  // minutes
};

}  // namespace tarvo::tools
