#include "base/paths.h"

namespace tarvo {

const char kSeparator = '/';

std::size_t RootSize(std::string_view path) { return path.starts_with(kSeparator) ? 1 : 0; }

}  // namespace tarvo
