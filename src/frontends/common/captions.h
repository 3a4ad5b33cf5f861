#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// A caption as it is read: without the "&" before its access key; "&&" is one "&".
std::string WithoutAccessKey(std::string_view caption);

// The text with a carriage return, alone or before a line feed, as a line feed.
std::string WithLineFeeds(std::string_view text);

}  // namespace tarvo
