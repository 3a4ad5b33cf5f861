#include <algorithm>

#include "base/paths.h"

namespace tarvo {
namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Up to behind the next separator, or to the end.
std::size_t NameEnd(std::string_view path, std::size_t start) {
  const std::size_t at = path.find(kSeparator, std::min(start, path.size()));
  return at == std::string_view::npos ? path.size() : at + 1;
}

}  // namespace

const char kSeparator = '\\';

std::size_t RootSize(std::string_view path) {
  constexpr std::string_view kLongShare = R"(\\?\UNC\)";
  constexpr std::string_view kLong = R"(\\?\)";
  constexpr std::string_view kShare = R"(\\)";
  const auto shareEnd = [&](std::size_t start) { return NameEnd(path, NameEnd(path, start)); };
  if (path.starts_with(kLongShare)) return shareEnd(kLongShare.size());
  if (path.starts_with(kLong)) return kLong.size() + RootSize(path.substr(kLong.size()));
  if (path.starts_with(kShare)) return shareEnd(kShare.size());
  if (path.starts_with(kSeparator)) return 1;
  const bool hasDrive = path.size() >= 3 && IsLetter(path[0]) && path[1] == ':';
  return hasDrive && path[2] == kSeparator ? 3 : 0;
}

}  // namespace tarvo
