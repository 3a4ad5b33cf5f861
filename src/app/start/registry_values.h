#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Reads a value of the system registry; the name "" is the key's default value. A string comes
// without one NUL at its end. A 32-bit number comes as the decimal text of its bytes' hexadecimal
// digits, highest byte first, where no byte is padded to two digits, so that numbers with a lower
// byte below 16 come out wrong: 266 (0x10A) gives 26 (0x1A). False when there is no such value,
// with `result` "", or when it is longer than 1,024 bytes; a value of another type leaves `result`
// as it was.
bool ReadRegistryValue(Platform& platform, RegistryRoot root, std::string_view path,
                       std::string_view valueName, std::string& result);

// Writes a string, making the key if it is missing. False when that fails, with `value` "".
bool WriteRegistryString(Platform& platform, RegistryRoot root, std::string_view path,
                         std::string_view valueName, std::string& value);

}  // namespace tarvo
