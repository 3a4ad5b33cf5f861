#include "settings/trace.h"

#include <cstdio>

namespace tarvo {

void Trace([[maybe_unused]] std::string_view text) {
#ifndef NDEBUG
  std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
#endif
}

}  // namespace tarvo
