#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace tarvo {

// The attributes that a path names; see Platform::Attributes. Beside those named there, the
// system's own marks "system" (4) and "archive" (32) are given.
std::optional<unsigned> WindowsAttributes(std::string_view path);

// See Platform::IsLink. Links are symbolic links and junctions, to files and to folders; other
// things that the system keeps aside, like files in a cloud, are none.
bool IsWindowsLink(std::string_view path);

// See Platform::HasOtherNames and Platform::SetAttributes.
bool HasOtherWindowsNames(std::string_view path);
void SetWindowsAttributes(std::string_view path, unsigned attributes);

// Whether what a listing or a look at a file says of it makes it a link.
bool IsLinkTag(DWORD attributes, DWORD tag);

// Of a path in the system's form: whether it names a folder, links followed; whether it names a
// link itself.
bool IsFolderAt(const std::wstring& path);
bool IsLinkAt(const std::wstring& path);

}  // namespace tarvo
