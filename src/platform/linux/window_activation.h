#pragma once

namespace tarvo {

// Brings a process's window to the front; see Platform::BringToFront. Asks the window manager of
// the X11 display, as the Extended Window Manager Hints define it.
void BringX11WindowToFront(int process);

}  // namespace tarvo
