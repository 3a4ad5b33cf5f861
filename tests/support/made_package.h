#pragma once

#include <map>
#include <string>

#include "support/temporary_folder.h"

namespace tarvo::test {

// Files of a package: name in the package and content.
using PackageFiles = std::map<std::string, std::string>;

// Packs files into a file below the folder and gives its path. On Linux the program "zip" does it;
// fails the running test when that cannot be done. Elsewhere the files are stored as they are.
// Names that end in ".exe" or ".EXE" are programs.
std::string MakePackage(const TemporaryFolder& folder, const std::string& package,
                        const PackageFiles& files);

}  // namespace tarvo::test
