#pragma once

namespace tarvo {

// The two ways into a help file, with their classic numbers: its contents, and the search by
// keyword.
enum class HelpCommand { kContents = 3, kPartialKey = 261 };

}  // namespace tarvo
