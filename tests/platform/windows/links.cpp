#include "platform/windows/links.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <utility>

#include "base/paths.h"
#include "platform/windows/waiting.h"
#include "platform/windows/wide_text.h"

namespace tarvo::test {
namespace {

bool IsWine() {
  return ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_dos_file_name") != nullptr;
}

bool IsThere(const std::string& path) {
  return ::GetFileAttributesW(Wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Programs of the system below get names alone: they know no paths of this one.
void Run(const wchar_t* program, std::wstring command, std::string_view folder) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  ASSERT_TRUE(::CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                               nullptr, Wide(folder).c_str(), &start, &made));
  ::CloseHandle(made.hThread);
  ::CloseHandle(made.hProcess);
}

}  // namespace

FolderLink::FolderLink(const std::string& target, std::string link) : link_(std::move(link)) {
  const std::wstring name = Wide(FileNameOf(link_));
  const std::wstring targetName = Wide(FileNameOf(target));
  if (IsWine()) {
    Run(L"Z:\\bin\\ln", L"ln -s \"" + targetName + L"\" \"" + name + L"\"", FolderOf(link_));
  } else {
    Run(nullptr, L"cmd.exe /c mklink /J \"" + name + L"\" \"" + targetName + L"\"",
        FolderOf(link_));
  }
  EXPECT_TRUE(ComesTrue([&] { return IsThere(link_); }));
}

FolderLink::~FolderLink() {
  if (!IsThere(link_)) return;
  if (IsWine()) {
    Run(L"Z:\\bin\\rm", L"rm -f \"" + Wide(FileNameOf(link_)) + L"\"", FolderOf(link_));
  } else {
    ::RemoveDirectoryW(Wide(link_).c_str());
  }
  EXPECT_TRUE(ComesTrue([&] { return !IsThere(link_); }));
}

}  // namespace tarvo::test
