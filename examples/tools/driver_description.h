#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::tools {

// One quantity that a device measures.
struct Field {
  std::string key;
  std::string name;
  std::string unit;  // may be ""

  bool operator==(const Field&) const = default;
};

enum class FileKind { kCsv, kAsc, kTxt, kHvd };

// What the sample tools take from a "driver.inf".
struct DriverDescription {
  std::string model;
  std::string version;
  std::string serial = "000000";
  std::vector<FileKind> files;  // what a download writes; CSV when the text names none
  std::vector<Field> fields;
};

// Reads the text of a "driver.inf": "Model" and "Version" in [Driver], "Serial" and "Files" (names
// of kinds with commas between them) in [Device], and the lines of [Fields]. Names of sections,
// entries and kinds match in any letter case; lines may end in LF alone; what is not understood is
// passed over. Bytes are kept as they stand.
DriverDescription ReadDescription(std::string_view text);

}  // namespace tarvo::tools
