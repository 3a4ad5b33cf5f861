#pragma once

#include <string>

#include "platform/platform.h"

namespace tarvo {

// The path of a special folder (kCommonDocuments, kPersonalDocuments) with a separator at its end;
// the separator alone when the system has no such folder.
std::string GetSpecialFolder(Platform& platform, int identifier);

}  // namespace tarvo
