#pragma once

#include <string>
#include <vector>

#include "tools/driver_description.h"

namespace tarvo::tools {

// One row of a device's memory.
struct Reading {
  std::string date;                 // "2026-04-21"
  std::string time;                 // "06:20"
  std::vector<std::string> values;  // one for each field
};

// A moment as "2026-04-21" and "06:20"; `moment` is in days since 30 December 1899, a part of a
// minute is left out.
std::string DateText(double moment);
std::string TimeText(double moment);

// What the simulated device has measured at a moment: always the same for the same moment and
// fields, and like the real quantity (a voltage about its nominal value, a tide that comes and
// goes). `number` counts the readings of a download from 1.
Reading Measure(const std::vector<Field>& fields, double moment, int number);

}  // namespace tarvo::tools
