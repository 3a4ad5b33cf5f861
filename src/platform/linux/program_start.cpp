#include "platform/program_start.h"

namespace tarvo {

std::vector<std::string> ProgramArguments(int count, const char* const* values) {
  return {values + (count > 0 ? 1 : 0), values + count};
}

Utf8Output::Utf8Output() = default;
Utf8Output::~Utf8Output() = default;

}  // namespace tarvo
