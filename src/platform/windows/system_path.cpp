#include "platform/windows/system_path.h"

#include <windows.h>

#include <algorithm>

#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

constexpr std::wstring_view kLong = LR"(\\?\)";
constexpr std::wstring_view kLongShare = LR"(\\?\UNC\)";
constexpr std::wstring_view kDevice = LR"(\\.\)";
constexpr std::wstring_view kShare = LR"(\\)";

// From the root on, with "." and ".." resolved and "\" between the names.
std::wstring FullPath(const std::wstring& path, std::string_view given) {
  DWORD room = MAX_PATH;
  for (;;) {
    std::wstring full(room, L'\0');
    const DWORD size = ::GetFullPathNameW(path.c_str(), room, full.data(), nullptr);
    if (size == 0) throw ErrorFromCode(::GetLastError(), given);
    full.resize(size);
    if (size < room) return full;
    room = size;
  }
}

// Whether a name is longer than any that a folder can hold; the system only calls it missing.
bool HasTooLongName(std::wstring_view path) {
  constexpr std::size_t kMost = 255;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(L'\\', start), path.size());
    if (end - start > kMost) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace

std::wstring SystemPath(std::string_view path) {
  if (path.find('\0') != std::string_view::npos || !IsWhole(path)) {
    throw RuntimeError(kBadFileName);
  }
  const std::wstring wide = Wide(path);
  if (wide.empty()) return wide;
  const std::wstring full = FullPath(wide, path);
  if (HasTooLongName(full)) throw RuntimeError::About(kBadFileName, std::string(path));
  if (full.starts_with(kLong)) return full;
  if (full.starts_with(kDevice)) throw RuntimeError::About(kBadFileName, std::string(path));
  if (full.starts_with(kShare)) {
    return std::wstring(kLongShare) + full.substr(kShare.size());
  }
  return std::wstring(kLong) + full;
}

std::string PlainPath(std::wstring_view path) {
  if (path.starts_with(kLongShare)) {
    return Narrow(std::wstring(kShare).append(path.substr(kLongShare.size())));
  }
  if (path.starts_with(kLong)) path.remove_prefix(kLong.size());
  return Narrow(path);
}

}  // namespace tarvo
