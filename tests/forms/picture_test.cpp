#include "forms/picture.h"

#include <gtest/gtest.h>

#include <limits>

#include "picture_bytes.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

constexpr std::int32_t kLargestSide = 4096;

BitmapFields WithSides(std::int32_t width, std::int32_t height) {
  BitmapFields fields;
  fields.width = width;
  fields.height = height;
  return fields;
}

BitmapFields WithBits(std::uint16_t bits) {
  BitmapFields fields;
  fields.bits = bits;
  return fields;
}

std::string With(std::string bytes, std::size_t at, const std::string& patch) {
  return bytes.replace(at, patch.size(), patch);
}

// A copy of just that many bytes, so that reading beyond them is noticed.
void ExpectOnlyTheWholeIsReadable(const std::string& bytes, const std::string& what) {
  EXPECT_TRUE(IsReadablePicture(bytes)) << what;
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const std::string cut(bytes.data(), length);
    EXPECT_FALSE(IsReadablePicture(cut)) << what << " cut to " << length << " bytes";
  }
}

TEST(ReadablePicture, IsTheBitmapOfEveryDepthButNotAPartOfIt) {
  for (const std::uint16_t bits : {1, 4, 8, 16, 24, 32}) {
    ExpectOnlyTheWholeIsReadable(MakeBitmapFile(WithBits(bits)), std::to_string(bits) + " bits");
  }
}

TEST(ReadablePicture, IsTheIconOfEveryDepthButNotAPartOfIt) {
  for (const std::uint16_t bits : {1, 4, 8, 16, 24, 32}) {
    ExpectOnlyTheWholeIsReadable(MakeIconFile({MakeIconImage(WithBits(bits))}),
                                 std::to_string(bits) + " bits");
  }
}

TEST(ReadablePicture, IsTheIconOfAPngImageButNotAPartOfIt) {
  ExpectOnlyTheWholeIsReadable(MakeIconFile({MakePng(256, 256)}), "PNG");
}

TEST(ReadablePicture, IsTheIconOfSeveralImagesButNotAPartOfIt) {
  ExpectOnlyTheWholeIsReadable(
      MakeIconFile({MakeIconImage(WithBits(4)), MakePng(16, 16), MakeIconImage(WithBits(32))}),
      "three images");
}

TEST(ReadablePicture, IsEverySampleOfTheProject) {
  for (const char* name : {"/Meter/driver.ICO", "/Tide Gauge/Large.ICO", "/Tide Gauge/Small.BMP"}) {
    EXPECT_TRUE(IsReadablePicture(ReadFileAt(std::string(EXAMPLES) + name))) << name;
  }
  EXPECT_TRUE(IsReadablePicture(IconFile()));
  EXPECT_TRUE(IsReadablePicture(BitmapFile()));
}

TEST(ReadablePicture, IsASampleOnlyAsAWhole) {
  for (const char* name : {"/Tide Gauge/Large.ICO", "/Tide Gauge/Small.BMP"}) {
    const std::string bytes = ReadFileAt(std::string(EXAMPLES) + name);
    for (std::size_t length = 0; length < bytes.size(); length += length < 2000 ? 1 : 997) {
      EXPECT_FALSE(IsReadablePicture(std::string(bytes.data(), length))) << name << length;
    }
  }
}

TEST(ReadablePicture, IsNoFileOfAnotherKind) {
  EXPECT_FALSE(IsReadablePicture(""));
  EXPECT_FALSE(IsReadablePicture("BM"));
  EXPECT_FALSE(IsReadablePicture(MakePng(16, 16))) << "PNG counts inside icons only";
  EXPECT_FALSE(IsReadablePicture("GIF89a" + std::string(100, '\1')));
  EXPECT_FALSE(IsReadablePicture(std::string(1000, '\0')));
  EXPECT_FALSE(IsReadablePicture(std::string(1000, '\xFF')));
  EXPECT_FALSE(IsReadablePicture(With(MakeBitmapFile({}), 0, "BA")));
  const std::string icon = MakeIconFile({MakeIconImage({})});
  EXPECT_FALSE(IsReadablePicture(With(icon, 2, Little16(2)))) << "a mouse pointer";
  EXPECT_FALSE(IsReadablePicture(With(icon, 0, Little16(1))));
}

TEST(ReadablePicture, HasSidesWithinTheLimit) {
  EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(WithSides(1, 1))));
  EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(WithSides(kLargestSide, 1))));
  EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(WithSides(1, kLargestSide))));
  EXPECT_FALSE(IsReadablePicture(MakeBitmapFile(WithSides(kLargestSide + 1, 1))));
  EXPECT_FALSE(IsReadablePicture(MakeBitmapFile(WithSides(1, kLargestSide + 1))));
  EXPECT_FALSE(IsReadablePicture(MakeBitmapFile(WithSides(1, -kLargestSide - 1))));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakeIconImage(WithSides(kLargestSide + 1, 1))})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakeIconImage(WithSides(1, kLargestSide + 1))})));
  EXPECT_TRUE(IsReadablePicture(MakeIconFile({MakePng(kLargestSide, kLargestSide)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakePng(kLargestSide + 1, 1)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakePng(1, kLargestSide + 1)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakePng(0, 1)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakePng(0xFFFFFFFF, 0xFFFFFFFF)})));
}

TEST(ReadablePicture, HasNoSidesThatOverflow) {
  const std::string bitmap = MakeBitmapFile({});
  const std::string image = MakeIconImage({});
  for (const std::uint32_t side : {0U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0x40000001U}) {
    EXPECT_FALSE(IsReadablePicture(With(bitmap, 18, Little32(side)))) << "width " << side;
    EXPECT_FALSE(IsReadablePicture(MakeIconFile({With(image, 4, Little32(side))}))) << side;
    EXPECT_FALSE(IsReadablePicture(MakeIconFile({With(image, 8, Little32(side))}))) << side;
    if (side != 0xFFFFFFFFU) {
      EXPECT_FALSE(IsReadablePicture(With(bitmap, 22, Little32(side)))) << "height " << side;
    }
  }
}

TEST(ReadablePicture, MayBeABitmapThatRunsFromTopToBottom) {
  EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(WithSides(5, -3))));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({With(MakeIconImage({}), 8, Little32(-6U))})));
}

TEST(ReadablePicture, HasAKnownDepthOnly) {
  for (const std::uint16_t bits : {0, 2, 3, 5, 12, 15, 31, 33, 48, 64, 0xFFFF}) {
    EXPECT_FALSE(IsReadablePicture(With(MakeBitmapFile(WithBits(32)), 28, Little16(bits)))) << bits;
    const std::string image = With(MakeIconImage(WithBits(32)), 14, Little16(bits));
    EXPECT_FALSE(IsReadablePicture(MakeIconFile({image}))) << bits;
  }
}

TEST(ReadablePicture, HasAKnownHeader) {
  for (const std::uint32_t size : {40, 52, 56, 108, 124}) {
    BitmapFields fields;
    fields.headerSize = size;
    EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(fields))) << size;
    EXPECT_EQ(IsReadablePicture(MakeIconFile({MakeIconImage(fields)})), size == 40) << size;
  }
  for (const std::uint32_t size : {0U, 12U, 16U, 39U, 41U, 64U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsReadablePicture(With(MakeBitmapFile({}), 14, Little32(size)))) << size;
  }
}

TEST(ReadablePicture, IsUncompressed) {
  for (const std::uint32_t compression : {1U, 2U, 4U, 5U, 6U, 0xFFFFFFFFU}) {
    for (const std::uint16_t bits : {4, 8, 24, 32}) {
      EXPECT_FALSE(
          IsReadablePicture(With(MakeBitmapFile(WithBits(bits)), 30, Little32(compression))))
          << compression << " with " << bits;
    }
  }
}

TEST(ReadablePicture, MayHaveBitMasksWithADepthThatTakesThem) {
  for (const std::uint16_t bits : {1, 4, 8, 16, 24, 32}) {
    BitmapFields fields = WithBits(bits);
    fields.compression = 3;
    const bool takesMasks = bits == 16 || bits == 32;
    EXPECT_EQ(IsReadablePicture(MakeBitmapFile(fields)), takesMasks) << bits;
    EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakeIconImage(fields)}))) << "in an icon";
  }
  BitmapFields fields = WithBits(32);
  fields.compression = 3;
  ExpectOnlyTheWholeIsReadable(MakeBitmapFile(fields), "masks");
  const std::string overlapping = With(MakeBitmapFile(fields), 10, Little32(54));
  EXPECT_FALSE(IsReadablePicture(overlapping)) << "the pixels lie on the masks";
}

TEST(ReadablePicture, MayHaveAShorterPalette) {
  BitmapFields fields = WithBits(8);
  fields.paletteEntries = 7;
  ExpectOnlyTheWholeIsReadable(MakeBitmapFile(fields), "bitmap of 7 colours");
  ExpectOnlyTheWholeIsReadable(MakeIconFile({MakeIconImage(fields)}), "icon of 7 colours");
  fields.paletteEntries = 257;
  EXPECT_FALSE(IsReadablePicture(MakeBitmapFile(fields))) << "more colours than 8 bits can name";
  fields.paletteEntries = 256;
  EXPECT_TRUE(IsReadablePicture(MakeBitmapFile(fields)));
  for (const std::uint32_t entries : {257U, 0x40000000U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsReadablePicture(With(MakeBitmapFile(fields), 46, Little32(entries))));
  }
}

TEST(ReadablePicture, HasItsPixelsBehindItsHeaderAndPalette) {
  const std::string bitmap = MakeBitmapFile(WithBits(8));
  for (const std::uint32_t offset : {0U, 14U, 54U, 54U + 1023, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsReadablePicture(With(bitmap, 10, Little32(offset)))) << offset;
  }
  const std::string gap = With(bitmap, 10, Little32(54 + 1024 + 9)) + std::string(9, '\0');
  EXPECT_TRUE(IsReadablePicture(gap)) << "a gap before the pixels does no harm";
}

TEST(ReadablePicture, MayLeaveOutTheMaskOfAnImageWithTransparency) {
  EXPECT_TRUE(IsReadablePicture(MakeIconFile({MakeIconImage(WithBits(32), false)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakeIconImage(WithBits(24), false)})));
}

TEST(ReadablePicture, IsNoIconWithoutImages) {
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({})));
  const std::string icon = MakeIconFile({MakeIconImage({})});
  EXPECT_FALSE(IsReadablePicture(With(icon, 4, Little16(0))));
  EXPECT_FALSE(IsReadablePicture(With(icon, 4, Little16(2)))) << "one entry is missing";
  EXPECT_FALSE(IsReadablePicture(With(icon, 4, Little16(0xFFFF))));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({""}))) << "the image is empty";
}

TEST(ReadablePicture, IsNoIconWithOneBrokenImage) {
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({MakeIconImage({}), std::string(200, 'x')})));
}

TEST(ReadablePicture, IsNoIconWithAPngImageThatHasNoEnd) {
  const std::string png = MakePng(16, 16);
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({png.substr(0, png.size() - 1)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({png.substr(0, png.size() - 12)})));
  EXPECT_FALSE(IsReadablePicture(MakeIconFile({With(png, png.size() - 8, "XXXX")})));
}

TEST(ReadablePicture, IsNoIconWithAPngImageOfWhichAnyByteIsDamaged) {
  const std::string png = PngHeader(16, 16) + PngChunk("tEXt", "an odd size") +
                          PngChunk("IDAT", "not inflated") + PngChunk("IEND", "");
  ASSERT_TRUE(IsReadablePicture(MakeIconFile({png})));
  for (std::size_t at = 0; at < png.size(); ++at) {
    std::string damaged = png;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    EXPECT_FALSE(IsReadablePicture(MakeIconFile({damaged}))) << at;
  }
}

TEST(ReadablePicture, IsNoIconWithAPngImageThatLacksAPart) {
  const std::string data = PngChunk("IDAT", "x");
  const std::string end = PngChunk("IEND", "");
  const auto isReadable = [](const std::string& png) {
    return IsReadablePicture(MakeIconFile({png}));
  };
  EXPECT_TRUE(isReadable(PngHeader(1, 1) + data + data + end));
  EXPECT_FALSE(isReadable(PngHeader(1, 1) + end)) << "no data";
  EXPECT_FALSE(isReadable(PngHeader(1, 1) + data)) << "no end";
  EXPECT_FALSE(isReadable(PngHeader(1, 1).substr(0, 8) + data + end)) << "no header";
  const std::string withPalette = PngHeader(1, 1, std::string("\x08\x03\0\0\0", 5));
  EXPECT_FALSE(isReadable(withPalette + data + end)) << "no palette";
  EXPECT_TRUE(isReadable(withPalette + PngChunk("PLTE", "rgb") + data + end));
}

TEST(ReadablePicture, HasAPngHeaderOfAKnownKind) {
  const auto isReadable = [](const std::string& kind) {
    return IsReadablePicture(MakeIconFile({PngHeader(1, 1, kind) + PngChunk("PLTE", "rgb") +
                                           PngChunk("IDAT", "x") + PngChunk("IEND", "")}));
  };
  const auto kind = [](int bits, int colours, int interlaced = 0) {
    return std::string{static_cast<char>(bits), static_cast<char>(colours), 0, 0,
                       static_cast<char>(interlaced)};
  };
  for (const int bits : {1, 2, 4, 8, 16}) {
    EXPECT_TRUE(isReadable(kind(bits, 0))) << bits;
    EXPECT_EQ(isReadable(kind(bits, 3)), bits < 16) << bits;
    for (const int colours : {2, 4, 6}) EXPECT_EQ(isReadable(kind(bits, colours)), bits >= 8);
    for (const int colours : {1, 5, 7}) EXPECT_FALSE(isReadable(kind(bits, colours)));
  }
  EXPECT_FALSE(isReadable(kind(3, 0)));
  EXPECT_TRUE(isReadable(kind(8, 6, 1)));
  EXPECT_FALSE(isReadable(kind(8, 6, 2)));
  EXPECT_FALSE(isReadable(std::string("\x08\x06\1\0\0", 5)));
  EXPECT_FALSE(isReadable(std::string("\x08\x06\0\1\0", 5)));
  EXPECT_FALSE(isReadable(kind(8, 6) + "x")) << "longer than a header";
}

TEST(ReadablePicture, HasEveryImageInsideTheFile) {
  const std::string icon = MakeIconFile({MakeIconImage({})});
  const auto size = static_cast<std::uint32_t>(icon.size());
  for (const std::uint32_t offset : {23U, size - 1, size, size + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsReadablePicture(With(icon, 18, Little32(offset)))) << offset;
  }
  for (const std::uint32_t length : {0U, 39U, size - 21, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    EXPECT_FALSE(IsReadablePicture(With(icon, 14, Little32(length)))) << length;
  }
}

TEST(ReadablePicture, HasImagesThatDoNotShareBytes) {
  const std::string image = MakePng(16, 16);
  const std::string shared = MakeIconFile({image, ""});
  const auto length = static_cast<std::uint32_t>(image.size());
  const std::string twice = With(shared, 22 + 8, Little32(length) + Little32(6 + 2 * 16));
  EXPECT_FALSE(IsReadablePicture(twice));
}

TEST(ReadablePicture, IsJudgedQuicklyWhateverItsNumberOfImages) {
  constexpr std::uint32_t kCount = 0xFFFF;
  const std::string large =
      PngHeader(16, 16) + PngChunk("IDAT", std::string(8'000'000, '\0')) + PngChunk("IEND", "");
  std::string file = Little16(0) + Little16(1) + Little16(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) {
    file += std::string(8, '\0') + Little32(static_cast<std::uint32_t>(large.size())) +
            Little32(6 + 16 * kCount);
  }
  EXPECT_FALSE(IsReadablePicture(file + large));
}

TEST(ReadablePicture, IsNoLargerThanTheLimit) {
  std::string bytes = MakeBitmapFile({});
  bytes.resize(kMaxPictureBytes);
  EXPECT_TRUE(IsReadablePicture(bytes)) << "bytes behind the picture do no harm";
  bytes += '\0';
  EXPECT_FALSE(IsReadablePicture(bytes));
}

TEST(ReadablePicture, OrNotIsSaidOfAnyChangeOfAnyByte) {
  for (const std::string& bytes :
       {MakeBitmapFile(WithBits(4)), MakeIconFile({MakeIconImage(WithBits(1)), MakePng(9, 9)})}) {
    int refused = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
      for (const char value : {'\0', '\1', '\x7F', '\x80', '\xFF'}) {
        std::string changed = bytes;
        changed[at] = value;
        refused += IsReadablePicture(changed) ? 0 : 1;
      }
    }
    EXPECT_GT(refused, 0);
  }
}

}  // namespace
}  // namespace tarvo::test
