#include "frontends/qt/pictures.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPixmap>
#include <vector>

#include "support/pictures.h"

namespace tarvo::qt {
namespace {

void AppendNumber(std::string& bytes, unsigned value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xff);
}

std::string Png(int side, QColor colour) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes.toStdString();
}

struct IconImage {
  int side;
  QColor colour;
};

// An icon file with one image of a plain colour for each size.
PicturePointer Icon(const std::vector<IconImage>& images) {
  auto picture = std::make_shared<Picture>();
  std::string& bytes = picture->bytes;
  std::string pixels;
  AppendNumber(bytes, 0x10000, 4);
  AppendNumber(bytes, static_cast<unsigned>(images.size()), 2);
  for (const IconImage& image : images) {
    const std::string png = Png(image.side, image.colour);
    AppendNumber(bytes, static_cast<unsigned>(image.side % 256), 1);
    AppendNumber(bytes, static_cast<unsigned>(image.side % 256), 1);
    AppendNumber(bytes, 0, 2);
    AppendNumber(bytes, 1, 2);
    AppendNumber(bytes, 32, 2);
    AppendNumber(bytes, static_cast<unsigned>(png.size()), 4);
    AppendNumber(bytes, static_cast<unsigned>(6 + 16 * images.size() + pixels.size()), 4);
    pixels += png;
  }
  bytes += pixels;
  return picture;
}

QImage Drawn(const PicturePointer& picture, int side, qreal scale = 1) {
  return IconOf(picture).pixmap(QSize(side, side), scale).toImage();
}

bool IsBlank(const QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) != 0) return false;
    }
  }
  return true;
}

// How many pixels wide the middle of the image is painted.
int PaintedWidth(const QImage& image) {
  int painted = 0;
  for (int x = 0; x < image.width(); ++x) {
    if (qAlpha(image.pixel(x, image.height() / 2)) != 0) ++painted;
  }
  return painted;
}

QColor Middle(const QImage& image) {
  return image.pixelColor(image.width() / 2, image.height() / 2);
}

TEST(PicturesTest, TheImageOfTheWantedSizeIsChosen) {
  const auto picture = Icon({{16, Qt::red}, {48, Qt::green}, {96, Qt::blue}});
  EXPECT_EQ(Middle(Drawn(picture, 48)), QColor(Qt::green));
  EXPECT_EQ(Middle(Drawn(picture, 16)), QColor(Qt::red));
}

TEST(PicturesTest, AScreenWithTwiceThePixelsGetsTheLargerImage) {
  const auto picture = Icon({{16, Qt::red}, {48, Qt::green}, {96, Qt::blue}});
  const QImage image = Drawn(picture, 48, 2);
  EXPECT_EQ(image.size(), QSize(96, 96));
  EXPECT_EQ(Middle(image), QColor(Qt::blue));
}

TEST(PicturesTest, AnImageThatIsTooLargeIsReduced) {
  const QImage image = Drawn(Icon({{256, Qt::blue}}), 16);
  EXPECT_EQ(image.size(), QSize(16, 16));
  EXPECT_EQ(PaintedWidth(image), 16);
}

TEST(PicturesTest, ASmallImageIsNotEnlargedButStandsInTheMiddle) {
  const QImage image = Drawn(Icon({{16, Qt::red}}), 48);
  EXPECT_EQ(image.size(), QSize(48, 48));
  EXPECT_EQ(PaintedWidth(image), 16);
  EXPECT_EQ(Middle(image), QColor(Qt::red));
}

TEST(PicturesTest, ASmallImageIsEnlargedByTheScreensScaleFactorOnly) {
  EXPECT_EQ(PaintedWidth(Drawn(Icon({{16, Qt::red}}), 48, 2)), 32);
}

TEST(PicturesTest, ABitmapFileIsDrawn) {
  auto picture = std::make_shared<Picture>();
  picture->bytes = test::BitmapFile();
  EXPECT_FALSE(IsBlank(Drawn(picture, 16)));
}

TEST(PicturesTest, WhatCannotBeDecodedDrawsAsNothing) {
  auto picture = std::make_shared<Picture>();
  for (const std::string& bytes : {std::string(), std::string("BM"), std::string("\0\0\1\0\1\0", 6),
                                   Icon({{16, Qt::red}})->bytes.substr(0, 40)}) {
    picture->bytes = bytes;
    EXPECT_TRUE(IsBlank(Drawn(picture, 16))) << bytes.size() << " bytes";
  }
}

TEST(PicturesTest, NoPictureDrawsAsNothing) { EXPECT_TRUE(IsBlank(Drawn(nullptr, 16))); }

TEST(PicturesTest, OwnIconsAreCrispAtEveryScale) {
  const QImage single = Drawn(OwnIcon("download"), 24);
  const QImage twice = Drawn(OwnIcon("download"), 24, 2);
  EXPECT_EQ(single.convertToFormat(QImage::Format_ARGB32_Premultiplied),
            QImage(":/icons/download-24.png").convertToFormat(QImage::Format_ARGB32_Premultiplied));
  QImage expected =
      QImage(":/icons/download-48.png").convertToFormat(QImage::Format_ARGB32_Premultiplied);
  expected.setDevicePixelRatio(twice.devicePixelRatio());
  EXPECT_EQ(twice.convertToFormat(QImage::Format_ARGB32_Premultiplied), expected);
}

TEST(PicturesTest, AnUnknownOwnIconDrawsAsNothing) {
  EXPECT_TRUE(IsBlank(Drawn(OwnIcon("no such icon"), 16)));
}

TEST(PicturesTest, TheWindowIconHasTheUsualSizes) {
  EXPECT_EQ(WindowIcon().pixmap(QSize(32, 32), 1.0).size(), QSize(32, 32));
}

}  // namespace
}  // namespace tarvo::qt
