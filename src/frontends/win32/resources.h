#pragma once

#include <string>
#include <string_view>

namespace tarvo::win32 {

inline constexpr int kProgramIconResource = 1;          // the number of the program's icon
inline constexpr const wchar_t* kPngResource = L"PNG";  // the type of the program's pictures

// The bytes of a resource of the program's; "" when there is none.
std::string_view ResourceBytes(const std::wstring& name, const wchar_t* type);

}  // namespace tarvo::win32
