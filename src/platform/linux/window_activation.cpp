#include "platform/linux/window_activation.h"

#include "base/runtime_error.h"

namespace tarvo {

void BringX11WindowToFront(int) {}

}  // namespace tarvo
