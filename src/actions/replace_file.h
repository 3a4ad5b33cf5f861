#pragma once

#include <functional>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Gives a file new content in one step: `write` fills a hidden file beside it, which then takes its
// name. Whoever looks finds the old file or the whole new one, after a crash too. A link of that
// name is replaced, not followed. Raises what `write`, writing and renaming raise; what is not
// complete is removed again, what a killed run has left by the next or by unpacking into the
// folder.
void ReplaceFile(Platform& platform, std::string_view path,
                 const std::function<void(File&)>& write);

// Copies all bytes of a file to the beginning of another; gives their number.
std::uint64_t CopyBytes(File& from, File& to);

}  // namespace tarvo
