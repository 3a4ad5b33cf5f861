#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "platform/platform.h"

namespace tarvo {

// Takes hold of a folder; see Platform::HoldFolder.
std::unique_ptr<HeldFolder> HoldLinuxFolder(std::string_view path);

// A place in a held folder.
struct HeldPlace {
  int folder;             // open as long as the folder is held
  std::string_view rest;  // of the path, without separators at its ends; "" for the folder itself
};

// Where a path lies when it begins with that of a held folder, of several with the longest one.
std::optional<HeldPlace> HeldPlaceOf(std::string_view path);

// Opens the folder that `names`, separated by "/", lead to from `folder` on, and follows no link:
// one on the way fails, and so does "..". A descriptor of -1, with errno set, for a failure.
Descriptor EnterBelow(int folder, std::string_view names);

// The same name by name, for systems that cannot do it in one step.
Descriptor EnterNameByName(int folder, std::string_view names);

}  // namespace tarvo
