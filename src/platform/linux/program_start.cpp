#include "platform/program_start.h"

namespace tarvo {

std::vector<std::string> ProgramArguments(int count, const char* const* values) {
  return {values + (count > 0 ? 1 : 0), values + count};
}

// Terminals of this system take what a program writes in the user's encoding, which is UTF-8.
Utf8Output::Utf8Output() {}
Utf8Output::~Utf8Output() {}

}  // namespace tarvo
