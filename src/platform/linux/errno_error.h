#pragma once

#include <string>

#include "base/runtime_error.h"

namespace tarvo {

// The error for an `errno` value of the system. `subject`, when not empty, names the file or folder
// and is appended to the description.
RuntimeError ErrorFromErrno(int code, const std::string& subject = {});

}  // namespace tarvo
