#include "base/paths.h"

#include <algorithm>

#include "base/text.h"

namespace tarvo {
namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

// The letters behind the star of a pattern such as "*.csv"; "" when it is not made like that.
std::string_view EndingOf(std::string_view pattern) {
  if (!pattern.starts_with('*')) return {};
  const std::string_view ending = pattern.substr(1);
  const bool isPlain = std::all_of(ending.begin(), ending.end(),
                                   [](char c) { return IsAscii(c) && c != '*' && c != '?'; });
  return isPlain ? ending : std::string_view();
}

// For an ending in ASCII, whose letters are the other case of no others.
bool EndsIgnoringCase(std::string_view name, std::string_view ending) {
  return name.size() >= ending.size() &&
         std::equal(ending.begin(), ending.end(), name.end() - ending.size(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

}  // namespace

std::string WithSeparator(std::string_view path) {
  std::string result(path);
  if (result.empty() || result.back() != kSeparator) result += kSeparator;
  return result;
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  return folder.empty() ? std::string(name) : WithSeparator(folder).append(name);
}

std::string_view FileNameOf(std::string_view path) {
  const std::size_t at = path.rfind(kSeparator);
  return at == std::string_view::npos ? path : path.substr(at + 1);
}

std::string_view FolderOf(std::string_view path) {
  const std::size_t at = path.rfind(kSeparator);
  if (at == std::string_view::npos) return {};
  return path.substr(0, std::max(at, RootSize(path)));
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  // The usual patterns are told by the end of the name alone.
  if (const auto ending = EndingOf(pattern); !ending.empty()) return EndsIgnoringCase(name, ending);
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t starPattern = std::string_view::npos;
  std::size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starPattern = ++p;
      starName = n;
      continue;
    }
    const Character inName = CharacterAt(name, n);
    if (p < pattern.size()) {
      const Character inPattern = CharacterAt(pattern, p);
      if (inPattern.codePoint == U'?' ||
          LowerCase(inPattern.codePoint) == LowerCase(inName.codePoint)) {
        n += inName.size;
        p += inPattern.size;
        continue;
      }
    }
    if (starPattern == std::string_view::npos) return false;
    starName += CharacterAt(name, starName).size;
    n = starName;
    p = starPattern;
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace tarvo
