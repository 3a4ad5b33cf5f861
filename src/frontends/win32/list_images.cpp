#include "frontends/win32/list_images.h"

#include "frontends/win32/pictures.h"

namespace tarvo::win32 {
namespace {

constexpr int kMoreAtATime = 32;

}  // namespace

ListImages::ListImages(int side, SIZE cell, unsigned dotsPerInch)
    : side_(side),
      cell_(cell),
      dotsPerInch_(dotsPerInch),
      images_(ImageList_Create(cell.cx, cell.cy, ILC_COLOR32 | ILC_MASK, 0, kMoreAtATime)) {}

void ListImages::Clear() {
  ImageList_RemoveAll(images_.Get());
  indexes_.clear();
}

int ListImages::IndexOf(const PicturePointer& picture) {
  const auto known = indexes_.find(picture);
  if (known != indexes_.end()) return known->second;
  const Pixels drawn = Drawn(picture.get(), side_, dotsPerInch_);
  const IconHandle icon = MakeIcon(Fitted(drawn, cell_.cx, cell_.cy, 1));
  return indexes_[picture] = ImageList_ReplaceIcon(images_.Get(), -1, icon.Get());
}

}  // namespace tarvo::win32
