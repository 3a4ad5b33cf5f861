#include "frontends/win32/fonts.h"

#include <algorithm>
#include <cmath>

#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr float kPointsPerInch = 72;

LOGFONTW UsersFont(unsigned dotsPerInch) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dotsPerInch);
  return metrics.lfMessageFont;
}

LOGFONTW OwnFont(const Font& font, unsigned dotsPerInch) {
  LOGFONTW wanted{};
  const float points = std::max(font.Size, 1.0F);
  wanted.lfHeight = -std::lround(points * static_cast<float>(dotsPerInch) / kPointsPerInch);
  wanted.lfWeight = font.Bold ? FW_BOLD : FW_NORMAL;
  wanted.lfCharSet = DEFAULT_CHARSET;
  wanted.lfQuality = CLEARTYPE_QUALITY;
  Wide(font.Name).copy(wanted.lfFaceName, LF_FACESIZE - 1);
  return wanted;
}

bool IsStandard(const Font& font) {
  const Font standard;
  return font.Name == standard.Name && font.Size == standard.Size && !font.Bold;
}

}  // namespace

FontHandle MakeFont(const Font& font, unsigned dotsPerInch) {
  const LOGFONTW wanted = IsStandard(font) ? UsersFont(dotsPerInch) : OwnFont(font, dotsPerInch);
  return FontHandle(CreateFontIndirectW(&wanted));
}

int TextWidth(HFONT font, std::wstring_view text) {
  const MemoryContext context(CreateCompatibleDC(nullptr));
  const Selected selected(context.Get(), font);
  SIZE size{};
  GetTextExtentPoint32W(context.Get(), text.data(), static_cast<int>(text.size()), &size);
  return size.cx;
}

int LineHeight(HFONT font) {
  const MemoryContext context(CreateCompatibleDC(nullptr));
  const Selected selected(context.Get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.Get(), &metrics);
  return metrics.tmHeight;
}

}  // namespace tarvo::win32
