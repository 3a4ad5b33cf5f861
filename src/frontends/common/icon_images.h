#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tarvo {

// One image of an icon file, as the file's directory describes it.
struct IconImage {
  int number;  // from 0, in the order of the file
  int width;   // in pixels
  int bitsPerPixel;
  std::string_view bytes;  // a PNG image or a bitmap with its mask
};

// The images of an icon file in the order in which they suit a square of `side` pixels: the
// smallest that is large enough, then larger ones, then ever smaller ones; of the same size the one
// with most colours first. Images that do not lie inside the file are left out. The bytes must
// outlive the result.
std::vector<IconImage> ImagesBySuitability(std::string_view iconFile, int side);

}  // namespace tarvo
