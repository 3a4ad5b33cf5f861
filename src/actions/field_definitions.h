#pragma once

#include <string>
#include <string_view>

#include "archive/package.h"
#include "platform/platform.h"

namespace tarvo {

// Field definitions: what a driver's description says of each value that its device records. They
// are derived from the driver's sample data file and appended to its "Driver.inf".
//
// A sample is a text of lines. Empty lines and lines that begin with "#" do not count. Of the
// others, the first is a title, the second names the columns, separated by "|", and every further
// one describes a field. Of the columns, FIELDNAME and CSVNAME are used, in any letter case and
// order.

// The definition of one field as a line of "Driver.inf" without its end:
//   "KEY","Display name","TEXT","unit"
// The display name is the field's name without a unit in parentheses at its end; the key is the
// column name for CSV files when there is one, else the display name's word characters, in upper
// case. The type is always TEXT, whatever the sample says. UTF-8.
std::string FieldDefinition(std::string_view fieldName, std::string_view csvName);

// All definitions that a sample's bytes give, each line with CR LF at its end. Bytes are taken and
// given in the system's code page, so that those of any other encoding come through unchanged.
// Error 75 for definitions of more than 2 MiB: no device has as many values.
std::string FieldDefinitions(Platform& platform, std::string_view sample);

// The sample of a driver's folder: of its "*.hvd" files that can be read the first by name, letter
// case ignored, so that a package gives the same definitions on every disk. Its bare name; "" when
// there is none.
std::string SampleFile(Platform& platform, std::string_view driverFolder);

// The definitions of the sample that a driver's folder will have once a checked package has been
// unpacked into it; "" when there will be none. Raises what reading raises; error 75 for a sample
// of more than 1 MiB.
std::string DefinitionsWithPackage(Platform& platform, Package& package,
                                   std::string_view driverFolder);

// Whether the definitions of a driver's sample are the last lines of its description already; false
// without a sample, or when a file cannot be read.
bool HasFieldDefinitions(Platform& platform, std::string_view driverFolder);

// Appends definitions to a description as lines of their own; nothing for "".
void AppendDefinitions(File& description, std::string_view definitions);

// Appends the definitions of a driver's sample to its "Driver.inf", which is made when it is
// missing and otherwise keeps what it holds. Nothing without a sample, and when they stand at the
// end of the file already. All lines come in one step: whoever looks finds none or all of them,
// after a crash too. Raises what reading and writing raise; error 75 for a sample of more than
// 1 MiB or a description that is a link.
void AppendFieldDefinitions(Platform& platform, std::string_view driverFolder);

}  // namespace tarvo
