#include "platform/linux/wine.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>

#include "base/runtime_error.h"
#include "platform/linux/linux_file.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

namespace fs = std::filesystem;

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return number;
}

std::string FindCommand() {
  // The last is where Debian's package "wine64" has it when the package "wine" is not there.
  for (const char* name : {"wine", "wine64", "../lib/wine/wine64"}) {
    const fs::path path = FindProgram(name);
    if (!path.empty()) return path.lexically_normal();
  }
  return {};
}

// The folder that the command's installation has its "bin" and "lib" in.
std::optional<fs::path> InstallationOf(const std::string& command) {
  std::error_code error;
  const fs::path folder = fs::canonical(command, error).parent_path();
  if (error) return std::nullopt;
  if (folder.filename() == "bin") return folder.parent_path();
  if (folder.filename() == "wine") return folder.parent_path().parent_path();
  return std::nullopt;
}

// Whether the modules for a processor are installed: "ntdll.dll" is the one that every program
// needs.
bool HasModules(const fs::path& installation, std::string_view processor) {
  const fs::path name = fs::path("wine") / (std::string(processor) + "-windows") / "ntdll.dll";
  std::error_code error;
  for (const char* libraries :
       {"lib", "lib64", "lib32", "lib/x86_64-linux-gnu", "lib/i386-linux-gnu"}) {
    if (fs::exists(installation / libraries / name, error)) return true;
  }
  return false;
}

// The user's Windows folder; it may not exist yet.
std::string WindowsFolder() {
  const char* home = std::getenv("HOME");
  const char* chosen = std::getenv("WINEPREFIX");
  return chosen && *chosen ? std::string(chosen) : std::string(home ? home : "") + "/.wine";
}

// Whether the user's Windows folder is one of 32-bit Windows, or will be when it is made. Its file
// "system.reg" says so in a line at its beginning.
bool HasFolderOf32BitWindows() {
  const std::string folder = WindowsFolder();
  try {
    constexpr std::size_t kBeginning = 512;
    const std::string text =
        OpenLinuxFile(folder + "/system.reg", OpenFor::kReading)->ReadAt(0, kBeginning);
    return text.find("\n#arch=win32\n") != std::string::npos;
  } catch (const RuntimeError&) {
    const char* wanted = std::getenv("WINEARCH");
    return wanted && std::string_view(wanted) == "win32";
  }
}

}  // namespace

WindowsProgram WindowsProgramKind(std::string_view path) {
  constexpr std::size_t kDosHeaderSize = 64;
  constexpr std::size_t kPeHeaderOffset = 60;
  constexpr std::size_t kSignatureAndProcessor = 6;
  constexpr std::uint32_t kI386 = 0x014c;
  constexpr std::uint32_t kX86_64 = 0x8664;

  const std::unique_ptr<File> file = OpenLinuxFile(path, OpenFor::kReading);
  const std::string dosHeader = file->ReadAt(0, kDosHeaderSize);
  if (!dosHeader.starts_with("MZ")) return WindowsProgram::kNone;
  if (dosHeader.size() < kDosHeaderSize) return WindowsProgram::k16Bit;
  const std::string header = file->ReadAt(
      LittleEndian(std::string_view(dosHeader).substr(kPeHeaderOffset)), kSignatureAndProcessor);
  if (header.size() < kSignatureAndProcessor || !header.starts_with(std::string_view("PE\0\0", 4)))
    return WindowsProgram::k16Bit;
  const std::uint32_t processor = LittleEndian(std::string_view(header).substr(4));
  if (processor == kI386) return WindowsProgram::k32Bit;
  if (processor == kX86_64) return WindowsProgram::k64Bit;
  return WindowsProgram::kOtherProcessor;
}

bool WineSupport::Runs(WindowsProgram kind) const {
  if (kind == WindowsProgram::k64Bit) return runs64Bit;
  return (kind == WindowsProgram::k32Bit || kind == WindowsProgram::k16Bit) && runs32Bit;
}

WineSupport FindWine() {
  WineSupport wine;
  wine.command = FindCommand();
  if (wine.command.empty()) return wine;
  wine.isInstalled = wine.runs32Bit = wine.runs64Bit = true;
  const std::optional<fs::path> installation = InstallationOf(wine.command);
  if (installation) {
    const bool has32Bit = HasModules(*installation, "i386");
    const bool has64Bit = HasModules(*installation, "x86_64");
    if (has32Bit || has64Bit) {
      wine.runs32Bit = has32Bit;
      wine.runs64Bit = has64Bit;
    }
  }
  if (HasFolderOf32BitWindows()) wine.runs64Bit = false;
  return wine;
}

std::string WineCommonDocuments() { return WindowsFolder() + "/drive_c/users/Public/Documents"; }

}  // namespace tarvo
