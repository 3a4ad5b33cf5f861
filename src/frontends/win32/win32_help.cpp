#include <filesystem>
#include <fstream>
#include <string>

#include "base/runtime_error.h"
#include "frontends/win32/help_page.h"
#include "frontends/win32/text.h"
#include "frontends/win32/win32_front_end.h"
#include "platform/names.h"

namespace tarvo::win32 {
namespace {

constexpr const wchar_t* kPageName = L"Tarvo Help.html";

std::string ReadWhole(Platform& platform, const std::string& path) {
  const auto file = platform.OpenFile(ResolveName(platform, path), OpenFor::kReading);
  return file->ReadAt(0, static_cast<std::size_t>(file->Size()));
}

// Among the user's temporary files, in place of the page that was shown before.
std::filesystem::path Write(const std::string& page) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / kPageName;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(page.data(), static_cast<std::streamsize>(page.size()));
  file.close();
  if (!file) throw RuntimeError(kPathFileAccessError);
  return path;
}

}  // namespace

// The help is shown by the user's web browser, which knows it by the name of a page's file.
void Win32FrontEnd::ShowHelp(Form&, const HelpRequest& request) {
  loop_.ThrowIfEnding();
  Platform& platform = SystemPlatform();
  const HelpFile help = ReadHelpFile(platform, request.file);
  const auto page = Write(HelpPage(ReadWhole(platform, request.file), help, request));
  platform.OpenByVerb(Narrow(page.native()), Narrow(page.parent_path().native()));
}

}  // namespace tarvo::win32
