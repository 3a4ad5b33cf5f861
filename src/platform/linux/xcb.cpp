#include "platform/linux/xcb.h"

namespace tarvo {

const Xcb& TheXcb() {
  static const Xcb functions;
  return functions;
}

}  // namespace tarvo
