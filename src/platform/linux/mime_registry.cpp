#include "platform/linux/mime_registry.h"

#include "base/runtime_error.h"

namespace tarvo {

OpenedKey OpenMimeKey(RegistryRoot, std::string_view, RegistryAccess) {
  return {RegistryStatus::kNotFound, nullptr};
}
OpenedKey MakeMimeKey(RegistryRoot, std::string_view) { return {RegistryStatus::kFailed, nullptr}; }

}  // namespace tarvo
