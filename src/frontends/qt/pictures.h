#pragma once

#include <QIcon>

#include "forms/picture.h"

namespace tarvo::qt {

// An icon that draws a picture. It is decoded when it is first drawn, from that image of the
// picture which suits the number of the screen's pixels: one that is large enough where there is
// one, otherwise the largest, not enlarged beyond the screen's scale factor. Whatever cannot be
// decoded, and no picture, draws as nothing. It fills the size it is given, so that lists stay
// aligned.
QIcon IconOf(PicturePointer picture);

// One of the program's own icons.
QIcon OwnQIcon(std::string_view name);

// The program's icon in the sizes that window managers show.
QIcon WindowIcon();

}  // namespace tarvo::qt
