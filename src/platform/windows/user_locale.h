#pragma once

#include <string>

#include "platform/platform.h"

namespace tarvo {

// What the user has chosen in the system's settings; see the functions of Platform with the same
// names.
std::string UsersShortDate(CalendarDate date);
std::string UsersDecimalSeparator();

}  // namespace tarvo
