#pragma once

#include <string>

namespace tarvo::test {

// A small icon file with one picture of 1 by 1 pixels, and a bitmap file of the same size. `shade`
// makes pictures that differ.
std::string IconFile(unsigned char shade = 0);
std::string BitmapFile(unsigned char shade = 0);

}  // namespace tarvo::test
