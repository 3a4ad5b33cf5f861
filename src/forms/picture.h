#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tarvo {

// A picture: either a file that has been found readable (an icon file with one or more images, or a
// bitmap), whose bytes a front end decodes when it first draws it, or one of the program's own
// icons by its name.
struct Picture {
  std::string bytes;
  std::string icon;
};
using PicturePointer = std::shared_ptr<const Picture>;

// The largest picture file and the largest width or height that are accepted.
inline constexpr std::size_t kMaxPictureBytes = std::size_t{16} * 1024 * 1024;
inline constexpr unsigned kMaxPictureSide = 4096;

// One of the program's own icons.
PicturePointer OwnIcon(std::string_view name);

// Whether the bytes are an icon file (ICO, its images as bitmaps or PNG) or a bitmap file (BMP,
// uncompressed or with bit masks, 1 to 32 bits per pixel) whose every part lies inside the file.
// The images of an icon file do not share bytes. All front ends judge a picture by this alone,
// because it decides the image indexes of the driver list.
bool IsReadablePicture(std::string_view bytes);

}  // namespace tarvo
