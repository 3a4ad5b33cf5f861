#include "archive/unpacking.h"

#include <algorithm>
#include <unordered_map>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kUnfinishedFile = ".tarvo-new-";  // digits follow

[[noreturn]] void FailAt(const std::string& path, std::string_view why) {
  throw RuntimeError(kPathFileAccessError, StandardDescription(kPathFileAccessError) + ": " + path +
                                               " " + std::string(why));
}

void Attempt(const std::function<void()>& step) {
  try {
    step();
  } catch (const RuntimeError&) {
    // Cleaning up goes on with the rest.
  }
}

}  // namespace

std::string UnfinishedName(std::uint32_t number) {
  return std::string(kUnfinishedFile) + std::to_string(number);
}

bool IsUnfinishedName(std::string_view name) {
  return name.size() > kUnfinishedFile.size() &&
         EqualIgnoringCase(name.substr(0, kUnfinishedFile.size()), kUnfinishedFile) &&
         name.find_first_not_of("0123456789", kUnfinishedFile.size()) == std::string_view::npos;
}

// What a folder holds, found in any letter case.
class Unpacking::Listing {
 public:
  explicit Listing(std::vector<FolderEntry> entries) : entries_(std::move(entries)) {
    for (const FolderEntry& entry : entries_) byName_.emplace(LowerCase(entry.name), &entry);
  }

  // The entry of a name: one with exactly this spelling, else a folder when one is wanted, else
  // any.
  const FolderEntry* Find(std::string_view name, bool wantsFolder) const {
    const auto [begin, end] = byName_.equal_range(LowerCase(name));
    const FolderEntry* found = nullptr;
    for (auto entry = begin; entry != end; ++entry) {
      if (entry->second->name == name) return entry->second;
      if (!found || (wantsFolder && !found->isFolder && entry->second->isFolder)) {
        found = entry->second;
      }
    }
    return found;
  }

 private:
  std::vector<FolderEntry> entries_;
  std::unordered_multimap<std::string, const FolderEntry*> byName_;
};

Unpacking::Unpacking(Platform& platform, const Directory& directory, const FolderTree& tree)
    : platform_(platform),
      directory_(directory),
      tree_(tree),
      folders_(tree.folders.size()),
      spellings_(tree.files.size()) {}

Unpacking::~Unpacking() {
  heldBelow_.reset();  // a held folder cannot be removed
  for (std::uint32_t i = renamed_; i < written_; ++i) {
    Attempt([&] { platform_.RemoveFile(UnfinishedPath(i)); });
  }
  if (isDone_) return;
  for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) {
    Attempt([&] { platform_.RemoveFolder(PathOf(*folder)); });
  }
  for (auto path = madeParents_.rbegin(); path != madeParents_.rend(); ++path) {
    Attempt([&] { platform_.RemoveFolder(*path); });
  }
}

void Unpacking::Run(std::string_view target, const WriteMember& write) {
  FindTarget(target);
  if (folders_[0].exists) RemoveUnfinishedFiles(platform_, target_);
  FindPlaces();
  MakeFolders();
  WriteFiles(write);
  RenameFiles();
  isDone_ = true;
}

std::string Unpacking::PathOf(std::uint32_t folder) const {
  std::vector<std::string_view> names;
  for (; folder != 0; folder = tree_.folders[folder].parent) {
    const std::string& spelling = folders_[folder].spelling;
    names.push_back(spelling.empty() ? directory_.Name(tree_.folders[folder].name)
                                     : std::string_view(spelling));
  }
  std::string path = target_;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    if (path.back() != kSeparator) path += kSeparator;
    path += *name;
  }
  return path;
}

std::string Unpacking::UnfinishedPath(std::uint32_t file) const {
  return JoinPath(PathOf(tree_.files[file].folder), UnfinishedName(file));
}

// The folder itself may be a symbolic link; only below it none is followed, even if one is put in a
// folder's place meanwhile.
void Unpacking::FindTarget(std::string_view target) {
  while (target.size() > 1 && target.back() == kSeparator) target.remove_suffix(1);
  target_ = target.empty() ? "." : ResolveName(platform_, target);
  const auto attributes = platform_.Attributes(target_);
  if (attributes && (*attributes & kDirectory) == 0) FailAt(target_, "is no folder");
  folders_[0].exists = attributes.has_value();
  std::string_view first = target_;
  while (!first.empty() && !platform_.Attributes(first)) {
    const std::string_view above = FolderOf(first);
    if (above == first) FailAt(target_, "lies on a drive that is not there");
    if (first != target_) missingParents_.emplace_back(first);
    first = above;
  }
  if (!first.empty()) held_ = platform_.HoldFolder(first);
}

void Unpacking::FindPlaces() {
  std::vector<std::uint32_t> children;
  for (std::uint32_t i = 1; i < tree_.folders.size(); ++i) children.push_back(i);
  std::stable_sort(children.begin(), children.end(), [&](std::uint32_t a, std::uint32_t b) {
    return tree_.folders[a].parent < tree_.folders[b].parent;
  });
  for (std::uint32_t i = 0; i < folders_.size(); ++i) {
    if (folders_[i].exists) FindPlacesIn(i, children);
  }
}

// Looks for the names that the package has in a folder that exists. `children` are all folders,
// sorted by parent.
void Unpacking::FindPlacesIn(std::uint32_t folder, std::vector<std::uint32_t>& children) {
  const std::string path = PathOf(folder);
  const Listing listing(platform_.Entries(path));
  auto child = std::partition_point(children.begin(), children.end(), [&](std::uint32_t i) {
    return tree_.folders[i].parent < folder;
  });
  for (; child != children.end() && tree_.folders[*child].parent == folder; ++child) {
    const FolderEntry* entry = listing.Find(directory_.Name(tree_.folders[*child].name), true);
    if (!entry) continue;
    if (entry->isLink) FailAt(JoinPath(path, entry->name), "is a symbolic link");
    if (!entry->isFolder) FailAt(JoinPath(path, entry->name), "is no folder");
    folders_[*child] = {entry->name, true};
  }
  auto file = std::partition_point(tree_.files.begin(), tree_.files.end(),
                                   [&](const TreeFile& f) { return f.folder < folder; });
  for (; file != tree_.files.end() && file->folder == folder; ++file) {
    const FolderEntry* entry = listing.Find(directory_.Name(file->name), false);
    if (!entry) continue;
    if (entry->isFolder) FailAt(JoinPath(path, entry->name), "is a folder");
    spellings_[static_cast<std::size_t>(file - tree_.files.begin())] = entry->name;
  }
}

void Unpacking::MakeFolders() {
  for (auto path = missingParents_.rbegin(); path != missingParents_.rend(); ++path) {
    platform_.MakeFolder(*path);
    madeParents_.push_back(*path);
  }
  for (std::uint32_t i = 0; i < folders_.size(); ++i) {
    if (folders_[i].exists) continue;
    platform_.MakeFolder(PathOf(i));
    made_.push_back(i);
  }
}

// Files follow each other folder by folder; holding the folder at hand spares a way to it for each.
// What moves it meanwhile takes the rest of its files along.
void Unpacking::HoldFolderOf(const TreeFile& file) {
  if (heldBelow_ && heldNumber_ == file.folder) return;
  heldBelow_.reset();
  heldBelow_ = platform_.HoldFolder(PathOf(file.folder));
  heldNumber_ = file.folder;
}

void Unpacking::WriteFiles(const WriteMember& write) {
  for (const TreeFile& file : tree_.files) {
    HoldFolderOf(file);
    const bool isProgram = MatchesPattern(directory_.Name(file.name), "*.exe");
    const auto opened = platform_.MakeFile(UnfinishedPath(written_),
                                           isProgram ? FileUse::kProgram : FileUse::kData);
    ++written_;
    write(file.member, *opened);
  }
}

void Unpacking::RenameFiles() {
  for (const TreeFile& file : tree_.files) {
    HoldFolderOf(file);
    const std::string& spelling = spellings_[renamed_];
    const std::string_view name =
        spelling.empty() ? directory_.Name(file.name) : std::string_view(spelling);
    platform_.RenameFile(UnfinishedPath(renamed_), JoinPath(PathOf(file.folder), name));
    ++renamed_;
  }
}

void RemoveUnfinishedFiles(Platform& platform, const std::string& folder) {
  std::vector<std::string> left{folder};
  while (!left.empty()) {
    const std::string path = std::move(left.back());
    left.pop_back();
    Attempt([&] {
      for (const FolderEntry& entry : platform.Entries(path)) {
        const std::string entryPath = JoinPath(path, entry.name);
        if (entry.isFolder) {
          left.push_back(entryPath);
        } else if (IsUnfinishedName(entry.name)) {
          Attempt([&] { platform.RemoveFile(entryPath); });
        }
      }
    });
  }
}

}  // namespace tarvo
