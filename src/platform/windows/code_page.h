#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvo {

// The system's ANSI code page, for the settings file; see Platform::EncodeCodePage. Where the
// system's has characters of several bytes, which the file's fixed fields could cut in halves,
// Windows-1252 stands in for it.
std::string EncodeSystemCodePage(std::string_view utf8);
std::string DecodeSystemCodePage(std::string_view bytes);

// What the file's code page is called ("Windows-1252"), and whether it is the system's own.
struct CodePageFacts {
  unsigned number;
  bool isTheSystems;
};
CodePageFacts UsedCodePage();

// Text as the system's ANSI calls take and give it, in whatever code page the system has.
std::string FromAnsi(std::string_view bytes);
// Nothing when the code page lacks one of the characters.
std::optional<std::string> ToAnsi(std::string_view utf8);

}  // namespace tarvo
