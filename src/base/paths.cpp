#include "base/paths.h"

#include <algorithm>

#include "base/text.h"

namespace tarvo {

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
