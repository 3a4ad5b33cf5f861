#include "forms/load_picture.h"

#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {

PicturePointer LoadPicture(Platform& platform, std::string_view path) {
  const auto file = platform.OpenFile(ResolveName(platform, path), OpenFor::kReading);
  const std::uint64_t size = file->Size();
  if (size > kMaxPictureBytes) throw RuntimeError(kInvalidPicture);
  auto picture = std::make_shared<Picture>();
  picture->bytes = file->ReadAt(0, static_cast<std::size_t>(size));
  if (!IsReadablePicture(picture->bytes)) throw RuntimeError(kInvalidPicture);
  return picture;
}

}  // namespace tarvo
