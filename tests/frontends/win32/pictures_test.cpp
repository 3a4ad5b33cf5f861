#include "frontends/win32/pictures.h"

#include <gmock/gmock.h>

#include "forms/picture.h"
#include "frontends/win32/resources.h"
#include "support/pictures.h"

namespace tarvo::win32 {
namespace {

Pixels Filled(int width, int height, std::uint32_t value) {
  Pixels pixels(width, height);
  pixels.values.assign(pixels.values.size(), value);
  return pixels;
}

TEST(PixelsTest, ASmallerPictureHasTheMeanOfWhatItCovers) {
  Pixels picture(2, 1);
  picture.values = {0xFF000000, 0xFFFFFFFF};
  EXPECT_EQ(Scaled(picture, 1, 1).values, std::vector<std::uint32_t>{0xFF808080});
}

TEST(PixelsTest, ATransparentPixelLendsNoColour) {
  Pixels picture(2, 1);
  picture.values = {0xFF102030, 0x00FFFFFF};
  EXPECT_EQ(Scaled(picture, 1, 1).values, std::vector<std::uint32_t>{0x80102030});
}

TEST(PixelsTest, ALargerPictureKeepsItsColours) {
  EXPECT_EQ(Scaled(Filled(3, 3, 0x80112233), 7, 7).values, Filled(7, 7, 0x80112233).values);
}

TEST(PixelsTest, APictureStandsInTheMiddleUnlessItMayGrow) {
  const Pixels picture = Filled(2, 2, 0xFF112233);
  const Pixels fitted = Fitted(picture, 4, 4, 1);
  EXPECT_EQ(fitted.At(0, 0), 0U);
  EXPECT_EQ(fitted.At(1, 1), 0xFF112233);
  EXPECT_EQ(fitted.At(2, 2), 0xFF112233);
  EXPECT_EQ(fitted.At(3, 3), 0U);
  EXPECT_EQ(Fitted(picture, 4, 4, 2).values, Filled(4, 4, 0xFF112233).values);
}

TEST(PixelsTest, ATooLargePictureIsMadeSmallerAndKeepsItsShape) {
  const Pixels fitted = Fitted(Filled(8, 4, 0xFF112233), 4, 4, 1);
  EXPECT_EQ(fitted.At(0, 0), 0U);
  EXPECT_EQ(fitted.At(0, 1), 0xFF112233);
  EXPECT_EQ(fitted.At(3, 2), 0xFF112233);
  EXPECT_EQ(fitted.At(3, 3), 0U);
}

TEST(PixelsTest, NoPictureDrawsAsNothing) {
  EXPECT_EQ(Fitted(Pixels(), 4, 4, 1).values, Pixels(4, 4).values);
}

TEST(PixelsTest, ADisabledPictureIsGreyAndHalfTransparent) {
  const Pixels greyed = Greyed(Filled(1, 1, 0xFFFF0000));
  EXPECT_EQ(greyed.values, std::vector<std::uint32_t>{0x7F4C4C4C});
}

TEST(PicturesTest, TheProgramsOwnIconsAreThereInTheSizesThatAreAskedFor) {
  for (const char* name :
       {"tarvo", "add-driver", "delete", "properties", "view-large", "view-small", "view-list",
        "view-details", "download", "upload", "driver-properties"}) {
    for (const int side : {16, 24, 32, 48}) {
      const PicturePointer own = OwnIcon(name);
      const Pixels decoded = Decode(own.get(), side);
      EXPECT_GE(decoded.width, side) << name;
      const Pixels drawn = Drawn(own.get(), side, USER_DEFAULT_SCREEN_DPI);
      EXPECT_NE(drawn.values, Pixels(side, side).values) << name;
    }
  }
}

TEST(PicturesTest, AnUnknownOwnIconDrawsAsNothing) {
  const PicturePointer own = OwnIcon("no-such-icon");
  EXPECT_TRUE(Decode(own.get(), 16).IsEmpty());
  EXPECT_EQ(Drawn(own.get(), 16, USER_DEFAULT_SCREEN_DPI).values, Pixels(16, 16).values);
}

TEST(PicturesTest, AnIconKeepsItsPixels) {
  Pixels picture(4, 4);
  picture.At(1, 2) = 0xFF123456;
  picture.At(3, 3) = 0x80FF0000;
  const IconHandle icon = MakeIcon(picture);
  ASSERT_TRUE(icon);
  ICONINFO info{};
  ASSERT_TRUE(GetIconInfo(icon.Get(), &info));
  const BitmapHandle colour(info.hbmColor);
  const BitmapHandle mask(info.hbmMask);
  BITMAP shape{};
  GetObjectW(colour.Get(), sizeof shape, &shape);
  EXPECT_EQ(shape.bmWidth, 4);
  EXPECT_EQ(shape.bmBitsPixel, 32);
}

// The colour of a pixel of a magenta surface on which the icon has been drawn.
COLORREF OnMagenta(const Pixels& picture, int x, int y) {
  constexpr COLORREF kMagenta = RGB(0xFF, 0, 0xFF);
  HDC const screen = GetDC(nullptr);
  const MemoryContext context(CreateCompatibleDC(screen));
  const BitmapHandle surface(CreateCompatibleBitmap(screen, picture.width, picture.height));
  ReleaseDC(nullptr, screen);
  const Selected selected(context.Get(), surface.Get());
  for (int i = 0; i < picture.width * picture.height; ++i)
    SetPixel(context.Get(), i % picture.width, i / picture.width, kMagenta);
  const IconHandle icon = MakeIcon(picture);
  DrawIconEx(context.Get(), 0, 0, icon.Get(), picture.width, picture.height, 0, nullptr, DI_NORMAL);
  return GetPixel(context.Get(), x, y);
}

TEST(PicturesTest, AnIconHidesNothingWhereItsPictureIsTransparent) {
  const Pixels nothing(20, 20);
  EXPECT_EQ(OnMagenta(nothing, 0, 0), RGB(0xFF, 0, 0xFF));
  EXPECT_EQ(OnMagenta(nothing, 19, 19), RGB(0xFF, 0, 0xFF));
  Pixels point(20, 20);
  point.At(17, 3) = 0xFF123456;
  EXPECT_EQ(OnMagenta(point, 17, 3), RGB(0x12, 0x34, 0x56));
  EXPECT_EQ(OnMagenta(point, 16, 3), RGB(0xFF, 0, 0xFF));
}

TEST(PicturesTest, TheProgramHasItsIcon) {
  EXPECT_TRUE(ProgramIcon(SM_CXICON, USER_DEFAULT_SCREEN_DPI));
  EXPECT_TRUE(ProgramIcon(SM_CXSMICON, USER_DEFAULT_SCREEN_DPI));
}

// A bitmap file of one row: the header, then masks where the header has room, then values.
std::string BitmapFile(std::uint32_t headerSize, std::uint32_t compression,
                       const std::vector<std::uint32_t>& masks,
                       const std::vector<std::uint32_t>& values) {
  std::string file(14 + headerSize, '\0');
  const auto put = [&file](std::size_t at, std::uint32_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) file[at + i] = static_cast<char>(value >> (8 * i));
  };
  file[0] = 'B';
  file[1] = 'M';
  put(10, 14 + headerSize, 4);
  put(14, headerSize, 4);
  put(18, static_cast<std::uint32_t>(values.size()), 4);
  put(22, 1, 4);
  put(26, 1, 2);
  put(28, 32, 2);
  put(30, compression, 4);
  for (std::size_t i = 0; i < masks.size(); ++i) put(54 + 4 * i, masks[i], 4);
  for (const std::uint32_t value : values) {
    file.append(4, '\0');
    put(file.size() - 4, value, 4);
  }
  return file;
}

std::vector<std::uint32_t> DecodedBitmap(const std::string& file) {
  EXPECT_TRUE(IsReadablePicture(file));
  const Picture picture{file, ""};
  return Decode(&picture, 16).values;
}

TEST(PicturesTest, ABitmapWithoutAlphaIsOpaque) {
  EXPECT_EQ(DecodedBitmap(BitmapFile(40, BI_RGB, {}, {0x00112233, 0xFF445566})),
            (std::vector<std::uint32_t>{0xFF112233, 0xFF445566}));
}

TEST(PicturesTest, ABitmapWithAMaskForAlphaHasAlpha) {
  EXPECT_EQ(
      DecodedBitmap(BitmapFile(108, BI_BITFIELDS, {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000},
                               {0x00112233, 0x80445566, 0xFF778899})),
      (std::vector<std::uint32_t>{0x00112233, 0x80445566, 0xFF778899}));
}

TEST(PicturesTest, TheColoursAreWhereTheMasksSay) {
  EXPECT_EQ(DecodedBitmap(BitmapFile(
                108, BI_BITFIELDS, {0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000}, {0x80112233})),
            (std::vector<std::uint32_t>{0x80332211}));
}

TEST(PicturesTest, WhatCannotBeDecodedDrawsAsNothing) {
  const Picture broken{"no picture at all", ""};
  EXPECT_TRUE(Decode(&broken, 16).IsEmpty());
  EXPECT_TRUE(Decode(nullptr, 16).IsEmpty());
}

}  // namespace
}  // namespace tarvo::win32
