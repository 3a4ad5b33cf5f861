#include "frontends/win32/text.h"

#include "base/text.h"
#include "frontends/common/captions.h"
#include "frontends/win32/system.h"

namespace tarvo::win32 {

std::wstring Wide(std::string_view text) {
  const std::string valid = ValidUtf8(text);
  const int size = static_cast<int>(valid.size());
  if (size == 0) return {};
  std::wstring wide(valid.size(), L'\0');
  const int length = MultiByteToWideChar(CP_UTF8, 0, valid.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

std::wstring WideLines(std::string_view text) { return Wide(WithLineFeeds(text)); }

// What follows a tab would be drawn as a shortcut.
std::wstring WideCaption(std::string_view caption) { return Wide(ReplaceAll(caption, "\t", " ")); }

std::string Narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  if (size == 0) return {};
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

}  // namespace tarvo::win32
