#include "frontends/win32/resources.h"

#include "frontends/win32/system.h"

namespace tarvo::win32 {

std::string_view ResourceBytes(const std::wstring& name, const wchar_t* type) {
  HMODULE const program = GetModuleHandleW(nullptr);
  HRSRC const found = FindResourceW(program, name.c_str(), type);
  if (!found) return {};
  const void* const bytes = LockResource(LoadResource(program, found));
  if (!bytes) return {};
  return {static_cast<const char*>(bytes), SizeofResource(program, found)};
}

}  // namespace tarvo::win32
