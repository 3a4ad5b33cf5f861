#include "platform/windows/code_page.h"

#include <windows.h>

#include "base/code_page.h"
#include "platform/windows/wide_text.h"

namespace tarvo {
namespace {

constexpr unsigned kWindows1252 = 1252;

bool HasOneByteForEachCharacter(unsigned codePage) {
  CPINFO information;
  return ::GetCPInfo(codePage, &information) && information.MaxCharSize == 1;
}

// The text in a code page. A character that it lacks becomes "?", and is reported.
std::string Encode(unsigned codePage, std::wstring_view text, bool* lacksSome = nullptr) {
  if (text.empty()) return {};
  const bool isUtf8 = codePage == CP_UTF8;
  // No other character that only looks alike.
  const DWORD flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  BOOL usedDefault = FALSE;
  BOOL* const report = isUtf8 ? nullptr : &usedDefault;
  const char* const substitute = isUtf8 ? nullptr : "?";
  const int size = static_cast<int>(text.size());
  const int room =
      ::WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, substitute, report);
  std::string bytes(static_cast<std::size_t>(room), '\0');
  ::WideCharToMultiByte(codePage, flags, text.data(), size, bytes.data(), room, substitute, report);
  if (lacksSome) *lacksSome = usedDefault != FALSE;
  return bytes;
}

std::string Decode(unsigned codePage, std::string_view bytes) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  const int room = ::MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(room), L'\0');
  ::MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), room);
  return Narrow(text);
}

// One "?" for a character beyond the first 65536, which the system's call would count as two.
std::wstring WithoutPairs(std::wstring_view text) {
  std::wstring result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = i + 1 < text.size() && IS_SURROGATE_PAIR(text[i], text[i + 1]);
    result += isPair ? L'?' : text[i];
    if (isPair) ++i;
  }
  return result;
}

}  // namespace

CodePageFacts UsedCodePage() {
  const unsigned systems = ::GetACP();
  if (HasOneByteForEachCharacter(systems)) return {systems, true};
  return {kWindows1252, false};
}

std::string EncodeSystemCodePage(std::string_view utf8) {
  const unsigned codePage = UsedCodePage().number;
  if (codePage == kWindows1252) return EncodeWindows1252(utf8);
  return Encode(codePage, WithoutPairs(Wide(utf8)));
}

std::string DecodeSystemCodePage(std::string_view bytes) {
  const unsigned codePage = UsedCodePage().number;
  if (codePage == kWindows1252) return DecodeWindows1252(bytes);
  return Decode(codePage, bytes);
}

std::string FromAnsi(std::string_view bytes) { return Decode(CP_ACP, bytes); }

std::optional<std::string> ToAnsi(std::string_view utf8) {
  bool lacksSome = false;
  std::string bytes = Encode(::GetACP(), Wide(utf8), &lacksSome);
  if (lacksSome) return std::nullopt;
  return bytes;
}

}  // namespace tarvo
