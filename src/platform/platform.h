#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "platform/folder_watch.h"
#include "platform/help_command.h"
#include "platform/registry.h"

namespace tarvo {

// Identifiers of special folders.
inline constexpr int kPersonalDocuments = 5;
inline constexpr int kCommonDocuments = 46;

// What the system says of one name in a folder.
struct FolderEntry {
  std::string name;
  bool isFolder = false;  // a real folder; a symbolic link to one is not
  bool isLink = false;    // a symbolic link to anything
  bool isHidden = false;
};

// Bits of a file's attributes.
enum Attribute : unsigned {
  kNormal = 0,
  kReadOnly = 1,
  kHidden = 2,
  kDirectory = 16,
};

// How a started program's window is to appear: a wish, since the windowing system may know no such
// request.
enum class StartWindow { kNormal, kMinimised };

// One thing that the system should have, and whether it is as it should be.
struct SystemFinding {
  std::string topic;  // "File manager"
  bool isGood = true;
  std::string sentence;  // in English, without a line end
};

// A folder that Platform::HoldFolder has taken hold of; let go at the end of the object's life.
class HeldFolder {
 public:
  virtual ~HeldFolder() = default;
};

struct CalendarDate {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
};

// The operating system, as far as the program needs it: the one seam through which everything
// outside the process is reached, so that a test can replace any single call (see
// ForwardingPlatform).
//
// Paths are UTF-8 with the system's separator; relative ones start at the process's current folder.
// Names are taken as the system takes them: exactly, letter case included, on Linux, in any letter
// case on Windows; finding them in any letter case everywhere is the business of platform/names.h.
// Unless a function says otherwise, a failure throws a RuntimeError with the classic number: 53
// file not found, 61 disk full, 70 permission denied, 75 path/file access error, 76 path not found.
class Platform {
 public:
  virtual ~Platform() = default;

  // The path of a special folder without a separator at its end, or nothing when the look-up fails.
  virtual std::optional<std::string> SpecialFolder(int identifier) = 0;

  // The folder of the running executable, without a separator at its end unless it is a root.
  virtual std::string ProgramFolder() = 0;

  // The process's current folder, which child processes inherit; absolute.
  virtual std::string CurrentFolder() = 0;

  // Makes `path` (".." included) current; 76 when it is no folder, 70 when it may not be entered.
  virtual void ChangeCurrentFolder(std::string_view path) = 0;

  // Makes the drive that a letter names current; nothing on systems without drives.
  virtual void ChangeCurrentDrive(char32_t letter) = 0;

  // Whether an absolute path is the root of a drive ("/", or "C:\").
  virtual bool IsDriveRoot(std::string_view path) = 0;

  // Makes one folder, readable for all as the user's mask allows. 75 when the name is taken, 76
  // when its parent is missing. A crash leaves the folder either made or not.
  virtual void MakeFolder(std::string_view path) = 0;

  // Takes hold of a folder, so that what is done below it is done there even if somebody puts
  // something else in its place meanwhile. Links in `path` are followed now, for the last time: as
  // long as the object lives, every path that begins with `path`, spelt alike, leads into that very
  // folder, and no further symbolic link is followed below it, except that one in a file's place is
  // when the file is opened for reading or its attributes are asked for. A path through a link is
  // not found (76), nor one with ".."; a folder below a held one can be held unless it is a link.
  // The held folder itself can be neither removed nor renamed by its path. 76 when there is none.
  // Windows keeps the held folder in its place instead, and what lies below it is reached as ever.
  virtual std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) = 0;

  // Everything in a folder except "." and "..", in the system's own order. Paths may be of any
  // length.
  virtual std::vector<FolderEntry> Entries(std::string_view folder) = 0;

  // The attributes of what a path names, symbolic links followed, with any marks beside those above
  // that the system shows its users; nothing when it names nothing that can be reached. Never
  // throws.
  virtual std::optional<unsigned> Attributes(std::string_view path) = 0;

  // Whether a path names a symbolic link itself, wherever that leads. Never throws.
  virtual bool IsLink(std::string_view path) = 0;

  // Whether a file has other names somewhere (hard links): what changes its attributes changes them
  // there, too. Never throws.
  virtual bool HasOtherNames(std::string_view path) = 0;

  // Sets a file's or folder's attributes as far as the system has them, of which kReadOnly is one;
  // a name stays as hidden as it is. A symbolic link is left alone, and so are what it leads to and
  // a file with other names. 53 when there is nothing.
  virtual void SetAttributes(std::string_view path, unsigned attributes) = 0;

  // Opens a file; 53 when it must exist and does not, 75 for a folder.
  virtual std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) = 0;

  // Makes a file that does not exist yet, open for reading and writing, with the modes that the
  // user's mask allows; kProgram also lets it be executed. 75 when the name is taken, by a symbolic
  // link too: a link is never followed. 76 when its folder is missing. A crash leaves the file made
  // or not.
  virtual std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) = 0;

  // Gives a file another name on the same drive, in one step: a file or link that has the name
  // already is replaced, and whoever looks finds the old or the new one, after a crash too. Open
  // files stay open. 53 when there is no such file, 76 when a folder on the way is missing, 75 when
  // the new name is a folder's.
  virtual void RenameFile(std::string_view path, std::string_view newPath) = 0;

  // Removes a file, or a symbolic link itself. 53 when there is none, 75 for a folder.
  virtual void RemoveFile(std::string_view path) = 0;

  // Removes an empty folder; 75 when something is in it or it is none, 76 when it is missing.
  virtual void RemoveFolder(std::string_view path) = 0;

  // Starts a program in a process of its own, which lives on when this one ends, with the current
  // folder as its working folder and no standard input or output. Programs of this system and
  // scripts are run directly, programs for Windows through an interpreter where one is installed.
  // Gives the process's identifier. 53 when the program or what must run it is missing, 70 when it
  // may not be executed, 5 when it is none.
  virtual int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                           StartWindow window) = 0;

  // Whether a process that StartProcess gave still runs. One that has ended, killed ones too, is
  // forgotten by the call that says so. Never throws.
  virtual bool ProcessLives(int process) = 0;

  // Asks the windowing system to bring the window of such a process, or of one that it started, to
  // the front and to give it the focus. Nothing happens while there is no such window, or where the
  // windowing system knows no such request. Never throws.
  virtual void BringToFront(int process) = 0;

  // Begins to watch a folder and everything below it; 76 when it is missing.
  virtual std::unique_ptr<FolderWatch> WatchFolder(std::string_view folder) = 0;

  // Opens a folder in the system's file manager; shows a file there, selected in its folder.
  // Nothing waits for the file manager. 53 when the system has none, 76 (OpenFolder) when the
  // folder is missing.
  virtual void OpenFolder(std::string_view folder) = 0;
  virtual void ShowFile(std::string_view file) = 0;

  // The shell's verb "open": runs a program in a working folder, opens anything else with the
  // program that the user's desktop has for it. Nothing waits. Errors as StartProcess.
  virtual void OpenByVerb(std::string_view path, std::string_view workingFolder) = 0;

  // Opens a help file of the classic binary format in the system's viewer, at its contents or,
  // where the viewer can be told so, at the search with `key` entered. 53 when the system has no
  // viewer.
  virtual void OpenClassicHelp(std::string_view file, HelpCommand command,
                               std::string_view key) = 0;

  // Opens or makes a key of the system registry; `path` separates its names by "\". Never throws.
  virtual OpenedKey OpenRegistryKey(RegistryRoot root, std::string_view path,
                                    RegistryAccess access) = 0;
  virtual OpenedKey MakeRegistryKey(RegistryRoot root, std::string_view path) = 0;

  // Deletes a section of the user's program settings that belong to an application, or all of them
  // for the section "". Raises an error when there is none, on systems that have such settings.
  virtual void DeleteProgramSettings(std::string_view application, std::string_view section) = 0;

  // What of this system the program depends on, each in one sentence: the file manager and what
  // runs programs for Windows, and anything odd about them.
  virtual std::vector<SystemFinding> Findings() = 0;

  // Whether the process's standard input is a terminal, so that questions can be answered there.
  virtual bool InputIsTerminal() = 0;

  // Local date and time: days since 30 December 1899, the time of day as the fraction.
  virtual double Now() = 0;

  // Seconds since midnight, local time, with the system's fraction of a second.
  virtual double SecondsSinceMidnight() = 0;

  // The user's locale: a date in its short form, and its decimal sign (one character).
  virtual std::string ShortDate(CalendarDate date) = 0;
  virtual std::string DecimalSeparator() = 0;

  // The system's single-byte code page. A character that it lacks becomes "?". Bytes always decode.
  virtual std::string EncodeCodePage(std::string_view utf8) = 0;
  virtual std::string DecodeCodePage(std::string_view bytes) = 0;
};

// The platform of the system that the program runs on. Made at the first call, lives to the end of
// the run.
Platform& SystemPlatform();

}  // namespace tarvo
