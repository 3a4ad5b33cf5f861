#pragma once

#include <map>

#include "forms/list_view.h"
#include "frontends/win32/handles.h"

namespace tarvo::win32 {

// The pictures of a list in one size, as a list view of the system's takes them. A picture is
// decoded when it is first asked for.
class ListImages {
 public:
  // Pictures of `side` pixels on a screen of that many dots per inch, each in the middle of a cell.
  ListImages(int side, SIZE cell, unsigned dotsPerInch);

  HIMAGELIST Get() const { return images_.Get(); }

  // Forgets all pictures.
  void Clear();

  // The index of a picture in the system's list.
  int IndexOf(const PicturePointer& picture);

 private:
  int side_;
  SIZE cell_;
  unsigned dotsPerInch_;
  ImagesHandle images_;
  std::map<PicturePointer, int> indexes_;
};

}  // namespace tarvo::win32
