#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/driver_description.h"
#include "tools/readings.h"

namespace tarvo::tools {

// What a download has brought from the device.
struct DeviceLog {
  std::string driver;
  std::string site;  // "" when the device has no place of its own
  DriverDescription description;
  std::vector<Reading> readings;
};

// The extension of a kind of file, without the dot, in small letters.
std::string_view ExtensionOf(FileKind kind);

// The log as the text of a data file, with CR LF line ends:
//  CSV  a heading line "Date,Time,Supply Voltage (V),...", then a line for each reading
//  ASC  what a hand-held device prints: a head, then columns aligned to the right
//  TXT  the same readings for people: a title with the place, then columns
//  HVD  the fields with their last values: comments, a title, the line of the column names, a line
//       for each field, with "|" between columns
std::string DataText(FileKind kind, const DeviceLog& log);

}  // namespace tarvo::tools
