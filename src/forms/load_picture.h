#pragma once

#include <string_view>

#include "forms/picture.h"
#include "platform/platform.h"

namespace tarvo {

// Loads a picture file, found in any letter case of its name. Error 53 when it is missing, 481 when
// it is no readable picture (see IsReadablePicture), or what opening and reading it raise.
PicturePointer LoadPicture(Platform& platform, std::string_view path);

}  // namespace tarvo
