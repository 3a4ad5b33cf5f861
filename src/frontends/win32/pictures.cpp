#include "frontends/win32/pictures.h"

#include <cstring>
#include <string>

#include "frontends/common/icon_images.h"
#include "frontends/win32/resources.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr int kOwnSizes[] = {16, 24, 32, 48, 64, 96, 128, 256};
constexpr DWORD kIconFormat = 0x00030000;  // the version of icon resources that all systems write

BITMAPINFO HeaderFor(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // from top to bottom
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

Pixels PixelsOf(HBITMAP bitmap) {
  BITMAP shape{};
  if (!bitmap || GetObjectW(bitmap, sizeof shape, &shape) == 0) return {};
  Pixels pixels(shape.bmWidth, shape.bmHeight);
  BITMAPINFO info = HeaderFor(pixels.width, pixels.height);
  const MemoryContext context(CreateCompatibleDC(nullptr));
  const int rows = GetDIBits(context.Get(), bitmap, 0, static_cast<UINT>(pixels.height),
                             pixels.values.data(), &info, DIB_RGB_COLORS);
  return rows == pixels.height ? pixels : Pixels();
}

bool HasAlpha(const Pixels& pixels) {
  for (const std::uint32_t value : pixels.values) {
    if (value >> 24 != 0) return true;
  }
  return false;
}

// Pictures without alpha are transparent where their mask is white.
void TakeAlphaFromMask(Pixels& pixels, const Pixels& mask) {
  for (std::size_t i = 0; i < pixels.values.size(); ++i) {
    const bool hidden = i < mask.values.size() && (mask.values[i] & 0xFF) != 0;
    pixels.values[i] = hidden ? 0 : pixels.values[i] | 0xFF000000U;
  }
}

Pixels PixelsOf(HICON icon) {
  ICONINFO info{};
  if (!icon || !GetIconInfo(icon, &info)) return {};
  const BitmapHandle colour(info.hbmColor);
  const BitmapHandle mask(info.hbmMask);
  Pixels pixels = PixelsOf(colour.Get());
  if (!HasAlpha(pixels)) TakeAlphaFromMask(pixels, PixelsOf(mask.Get()));
  return pixels;
}

// A PNG image, or a bitmap with its mask as icon files hold it.
Pixels DecodeImage(std::string_view bytes) {
  std::string copy(bytes);
  const IconHandle icon(CreateIconFromResourceEx(reinterpret_cast<BYTE*>(copy.data()),
                                                 static_cast<DWORD>(copy.size()), TRUE, kIconFormat,
                                                 0, 0, LR_DEFAULTCOLOR));
  return PixelsOf(icon.Get());
}

template <class Value>
Value ValueAt(const std::string& bytes, std::size_t offset) {
  Value value{};
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// Bitmaps with masks for the colours may have one for alpha too (BITMAPV3INFOHEADER and later). The
// system does not draw by it.
void TakeAlphaFromFile(Pixels& pixels, const std::string& bytes) {
  constexpr std::size_t kAlphaMask = sizeof(BITMAPFILEHEADER) + 52;
  const auto file = ValueAt<BITMAPFILEHEADER>(bytes, 0);
  const auto info = ValueAt<BITMAPINFOHEADER>(bytes, sizeof file);
  const bool mayHaveAlpha =
      info.biSize >= 56 && info.biCompression == BI_BITFIELDS && info.biBitCount == 32;
  const std::uint32_t mask = mayHaveAlpha ? ValueAt<std::uint32_t>(bytes, kAlphaMask) : 0;
  for (int y = 0; y < pixels.height; ++y) {
    const auto row = static_cast<std::size_t>(info.biHeight < 0 ? y : pixels.height - 1 - y);
    const std::size_t values =
        file.bfOffBits + row * static_cast<std::size_t>(pixels.width) * sizeof mask;
    for (int x = 0; x < pixels.width; ++x) {
      std::uint32_t alpha = 255;
      if (mask != 0) {
        const auto value =
            ValueAt<std::uint32_t>(bytes, values + static_cast<std::size_t>(x) * sizeof mask);
        alpha = static_cast<std::uint32_t>((value & mask) * std::uint64_t{255} / mask);
      }
      pixels.At(x, y) = (pixels.At(x, y) & 0xFFFFFFU) | alpha << 24;
    }
  }
}

// The bytes have been judged readable (IsReadablePicture): every part lies inside them.
Pixels DecodeBitmapFile(const std::string& bytes) {
  const auto file = ValueAt<BITMAPFILEHEADER>(bytes, 0);
  const auto info = ValueAt<BITMAPINFOHEADER>(bytes, sizeof file);
  const int width = info.biWidth;
  const int height = std::abs(info.biHeight);
  const BITMAPINFO target = HeaderFor(width, height);
  const MemoryContext context(CreateCompatibleDC(nullptr));
  void* bits = nullptr;
  const BitmapHandle bitmap(
      CreateDIBSection(context.Get(), &target, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return {};
  {
    const Selected selected(context.Get(), bitmap.Get());
    StretchDIBits(
        context.Get(), 0, 0, width, height, 0, 0, width, height, bytes.data() + file.bfOffBits,
        reinterpret_cast<const BITMAPINFO*>(bytes.data() + sizeof file), DIB_RGB_COLORS, SRCCOPY);
    GdiFlush();
  }
  Pixels pixels = PixelsOf(bitmap.Get());
  if (!pixels.IsEmpty()) TakeAlphaFromFile(pixels, bytes);
  return pixels;
}

Pixels DecodeFile(const std::string& bytes, int side) {
  if (bytes.starts_with("BM")) return DecodeBitmapFile(bytes);
  for (const IconImage& image : ImagesBySuitability(bytes, side)) {
    Pixels pixels = DecodeImage(image.bytes);
    if (!pixels.IsEmpty()) return pixels;
  }
  return {};
}

Pixels DecodeOwn(const std::string& name, int side) {
  std::string_view best;
  for (const int size : kOwnSizes) {
    const std::string_view bytes =
        ResourceBytes(Wide(name + "-" + std::to_string(size)), kPngResource);
    if (bytes.empty()) continue;
    best = bytes;
    if (size >= side) break;
  }
  return best.empty() ? Pixels() : DecodeImage(best);
}

// A bit for each pixel, set where nothing is to be seen, in rows of whole words. Alpha decides what
// is drawn; but of a picture without any, the system takes the mask alone.
std::vector<BYTE> TransparentBits(const Pixels& pixels) {
  const std::size_t rowBytes = (static_cast<std::size_t>(pixels.width) + 15) / 16 * 2;
  std::vector<BYTE> bits(rowBytes * static_cast<std::size_t>(pixels.height));
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      if (pixels.At(x, y) >> 24 != 0) continue;
      const std::size_t place =
          static_cast<std::size_t>(y) * rowBytes + static_cast<std::size_t>(x) / 8;
      bits[place] = static_cast<BYTE>(bits[place] | 0x80 >> x % 8);
    }
  }
  return bits;
}

}  // namespace

Pixels Decode(const Picture* picture, int side) {
  if (!picture) return {};
  return picture->icon.empty() ? DecodeFile(picture->bytes, side) : DecodeOwn(picture->icon, side);
}

Pixels Drawn(const Picture* picture, int side, unsigned dotsPerInch) {
  return Fitted(Decode(picture, side), side, side,
                static_cast<double>(dotsPerInch) / USER_DEFAULT_SCREEN_DPI);
}

IconHandle MakeIcon(const Pixels& pixels) {
  const BITMAPINFO info = HeaderFor(pixels.width, pixels.height);
  void* bits = nullptr;
  const BitmapHandle colour(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!colour) return {};
  std::copy(pixels.values.begin(), pixels.values.end(), static_cast<std::uint32_t*>(bits));
  const std::vector<BYTE> transparent = TransparentBits(pixels);
  const BitmapHandle mask(CreateBitmap(pixels.width, pixels.height, 1, 1, transparent.data()));
  ICONINFO icon{};
  icon.fIcon = TRUE;
  icon.hbmColor = colour.Get();
  icon.hbmMask = mask.Get();
  return IconHandle(CreateIconIndirect(&icon));
}

IconHandle ProgramIcon(int sizeMetric, unsigned dotsPerInch) {
  const int size = GetSystemMetricsForDpi(sizeMetric, dotsPerInch);
  return IconHandle(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr),
                                                  MAKEINTRESOURCEW(kProgramIconResource),
                                                  IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

}  // namespace tarvo::win32
