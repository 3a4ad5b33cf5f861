#include "platform/special_folder.h"

#include "base/paths.h"

namespace tarvo {

std::string GetSpecialFolder(Platform& platform, int identifier) {
  return WithSeparator(platform.SpecialFolder(identifier).value_or(""));
}

}  // namespace tarvo
