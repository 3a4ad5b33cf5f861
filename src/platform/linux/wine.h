#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// What kind of program for Windows a file is, told by the headers that it begins with: "MZ", and
// where the 32-bit number at 60 points, "PE\0\0" followed by the processor (16 bits), all
// little-endian (Microsoft's PE/COFF format).
enum class WindowsProgram {
  kNone,            // no "MZ" at its beginning
  k16Bit,           // for DOS or 16-bit Windows: no "PE" header
  k32Bit,           // for the processor i386
  k64Bit,           // for the processor x86-64
  kOtherProcessor,  // for a processor that no wine here runs
};

// Errors as Platform::OpenFile.
WindowsProgram WindowsProgramKind(std::string_view path);

// What runs programs for Windows on this system.
struct WineSupport {
  bool isInstalled = false;
  bool runs32Bit = false;  // and 16-bit programs, which need the same parts
  bool runs64Bit = false;
  std::string command;  // its path; "" when it is not installed

  bool Runs(WindowsProgram kind) const;
};

// Looks for "wine", then for "wine64", in the folders of $PATH, which may change during a run.
// Which programs it runs is told by the modules installed with it and by the kind of the user's
// Windows folder ($WINEPREFIX, else "~/.wine"); a wine whose modules are not found, one in a
// container for instance, is taken to run both. Never throws.
WineSupport FindWine();

// The folder that programs for Windows get as the common documents folder (the shell's 46): the one
// of "C:\users\Public" in the user's Windows folder, which exists from wine's first start on.
std::string WineCommonDocuments();

}  // namespace tarvo
