#pragma once

namespace tarvo {

// See Platform::BringToFront.
void BringWindowsWindowToFront(int process);

}  // namespace tarvo
