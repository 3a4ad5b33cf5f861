#include "settings/trace.h"

#include <iostream>

namespace tarvo {

void Trace([[maybe_unused]] std::string_view text) {
#ifndef NDEBUG
  std::cerr << text << '\n';
#endif
}

}  // namespace tarvo
