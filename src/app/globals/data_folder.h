#pragma once

#include <string>

#include "app/globals/globals.h"

namespace tarvo {

// The data folder: the stored setting exactly as it stands, which need not exist; else "Halvex
// Limited" and in it "Halvex Tarvo" below the common documents folder, or the user's when there is
// none, made as needed, with a separator at the end. Folders that cannot be made are no error here.
std::string GetDataDirectory(Globals& globals);

}  // namespace tarvo
