#include "platform/linux/late_library.h"

#include <dlfcn.h>

namespace tarvo {

LateLibrary::LateLibrary(const char* name)
    : handle_(::dlopen(name, RTLD_LAZY | RTLD_LOCAL)), isWhole_(handle_ != nullptr) {}

void* LateLibrary::Find(const char* name) {
  void* const found = handle_ ? ::dlsym(handle_, name) : nullptr;
  if (!found) isWhole_ = false;
  return found;
}

}  // namespace tarvo
