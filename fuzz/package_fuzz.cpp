// The package reader: check, look-up and unpacking. The input is the file.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "archive/directory.h"
#include "archive/file_window.h"
#include "archive/inflater.h"
#include "archive/member_name.h"
#include "archive/package.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kPackage = "/package.drv";
constexpr std::string_view kDriver = "/drivers/driver";
constexpr std::string_view kFlat = "/flat";

using Content = std::optional<std::string>;  // none for a folder
using Tree = std::map<std::string, Content>;

void CheckFault(const PackageFault& fault) {
  Require(fault.sentence.size() > 1 && fault.sentence.ends_with('.'), "a fault is a sentence");
  Require(IsUtf8(fault.sentence) && IsUtf8(fault.member), "a fault can be shown");
  Require(fault.sentence.find(fault.member) != std::string::npos, "a fault names its member");
}

// A package that is not valid gives nothing away.
void CheckRefused(MemoryPlatform& platform, Package& package) {
  int error = 0;
  try {
    package.Unpack(kDriver);
  } catch (const RuntimeError& refused) {
    error = refused.Number();
  }
  Require(error == kInvalidProcedureCall, "a package that is not valid is not unpacked");
  Require(package.FirstRootFile("*").empty(), "a package that is not valid has no files");
  Require(platform.Tree().size() == 1, "a package that is not valid makes nothing");
}

// What may be in a folder after unpacking: nothing that leaves it, no name that a system cannot
// have.
void CheckNames(const Tree& tree, std::string_view folder) {
  for (const auto& [path, content] : tree) {
    const std::string_view name = FileNameOf(path);
    Require(path.starts_with(folder), "everything lies below the folder");
    Require(!name.empty() && name != "." && name != "..", "every name is a name");
    Require(name.size() <= kLongestName && IsUtf8(name), "every name can be had");
    for (const char letter : name) {
      Require(static_cast<unsigned char>(letter) >= 0x20 && letter != '\\',
              "no control characters");
    }
  }
}

// What a tree has under a path, the folders on the way in any letter case; null for nothing.
const Content* ContentIn(const Tree& tree, const std::string& path) {
  const auto exact = tree.find(path);
  if (exact != tree.end()) return &exact->second;
  for (const auto& [name, content] : tree) {
    if (EqualIgnoringCase(name, path)) return &content;
  }
  return nullptr;
}

Tree Below(const MemoryPlatform& platform, std::string_view folder) {
  const std::string start = WithSeparator(folder);
  Tree below;
  for (auto& [path, content] : platform.Tree()) {
    if (path.starts_with(start)) below[path] = content;
  }
  return below;
}

// Every member of the directory is there, with the content that its checksum demands.
void CheckMembers(MemoryPlatform& platform, const Tree& tree) {
  FileWindow window(platform.OpenFile(kPackage, OpenFor::kReading));
  const Directory directory = ReadDirectory(window);
  for (const Member& member : directory.members) {
    const std::string_view path = directory.PathOf(member);
    if (path.empty()) continue;
    const Content* content = ContentIn(tree, JoinPath(kDriver, path));
    Require(content != nullptr, "every member is unpacked");
    if (member.isFolder) {
      Require(!content->has_value(), "a folder is one");
    } else {
      Require(content->has_value(), "a file is one");
      const std::string& bytes = **content;
      Require(bytes.size() == member.size && Crc32(0, bytes) == member.crc,
              "a file's content is the one that was packed");
    }
  }
}

// Every file of the root holds what the package gives for its name.
void CheckRoot(MemoryPlatform& platform, Package& package) {
  for (const FolderEntry& entry : platform.Entries(kDriver)) {
    if (entry.isFolder) continue;
    Require(package.ReadRootFile(entry.name, kMostContent) ==
                platform.ContentOf(JoinPath(kDriver, entry.name)),
            "a file holds what its member does");
  }
}

void CheckFlat(const Tree& tree, const Tree& flat) {
  std::map<std::string, std::vector<const Content*>> contents;
  for (const auto& [path, content] : tree) {
    contents[LowerCase(FileNameOf(path))].push_back(&content);
  }
  for (const auto& [path, content] : flat) {
    bool isThere = false;
    for (const Content* nested : contents[LowerCase(FileNameOf(path))]) {
      isThere = isThere || *nested == content;
    }
    Require(isThere, "a file of the flat folder is one of the package");
    Require(FolderOf(path) == kFlat && content.has_value(), "the flat folder is flat");
  }
  for (const auto& [path, content] : tree) {
    if (!content) continue;
    bool isThere = false;
    for (const auto& [flatPath, flatContent] : flat) {
      isThere = isThere || EqualIgnoringCase(FileNameOf(flatPath), FileNameOf(path));
    }
    Require(isThere, "every file's name is in the flat folder");
  }
}

void CheckUnpacking(MemoryPlatform& platform, Package& package) {
  package.Unpack(kDriver);
  const Tree tree = Below(platform, kDriver);
  CheckNames(tree, kDriver);
  CheckMembers(platform, tree);
  CheckRoot(platform, package);
  package.Unpack(kDriver);
  Require(Below(platform, kDriver) == tree, "unpacking twice is the same as once");
  package.UnpackFlat(kFlat);
  CheckFlat(tree, Below(platform, kFlat));
  Require(Below(platform, "").size() == tree.size() + Below(platform, kFlat).size() + 4,
          "nothing is made elsewhere");
}

void Run(Input input) {
  MemoryPlatform platform;
  platform.PutFile(kPackage, input.Rest());

  Package components(platform, kPackage, PackageKind::kHandHeld);
  const std::optional<PackageFault> fault = components.Check();
  Package driver(platform, kPackage);
  const std::optional<PackageFault> driverFault = driver.Check();
  if (driverFault) CheckFault(*driverFault);
  if (fault) {
    CheckFault(*fault);
    CheckRefused(platform, components);
    Require(driverFault.has_value(), "what no package may be is no driver's package");
    return;
  }
  const bool isDescribed = !components.FirstRootFile("driver.inf").empty();
  Require(isDescribed != driverFault.has_value(), "a driver's package is one with a description");
  CheckUnpacking(platform, components);
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
