#include "platform/linux/sd_bus.h"

namespace tarvo {

const SdBus& TheSdBus() {
  static const SdBus functions;
  return functions;
}

}  // namespace tarvo
