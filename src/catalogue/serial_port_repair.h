#pragma once

#include "app/globals/globals.h"

namespace tarvo {

// Runs the program "MscommPatch.exe" in the program's own folder once, where it has been put:
// starts it minimised, lets it work for ten seconds while the windows stay live, and removes it.
// Nothing happens without it. Raises what starting and removing raise. No command runs this.
void Check4MscommPatch(Globals& globals);

}  // namespace tarvo
