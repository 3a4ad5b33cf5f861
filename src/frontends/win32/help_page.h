#pragma once

#include <string>
#include <string_view>

#include "forms/front_end.h"
#include "forms/help_file.h"

namespace tarvo::win32 {

// The page that a web browser is to show for a request: the help file as it stands, which opens at
// the contents in the user's language, at the index for a search, or at the first topic that has a
// keyword which begins as the request's key does.
std::string HelpPage(std::string_view fileBytes, const HelpFile& help, const HelpRequest& request);

}  // namespace tarvo::win32
