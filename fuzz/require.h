#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tarvo::fuzz {

// Ends the program when something does not hold that must hold for every input; `what` is said
// then.
inline void Require(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace tarvo::fuzz
