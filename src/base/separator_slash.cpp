#include "base/paths.h"

namespace tarvo {

const char kSeparator = '/';

}  // namespace tarvo
