#pragma once

#include <string>

namespace tarvo::test {

// Makes a folder of a new name among the temporary ones; gives its real path.
std::string MakeUniqueFolder();

// Takes away what would keep a folder and what it holds from being removed.
void MakeRemovable(const std::string& path);

}  // namespace tarvo::test
