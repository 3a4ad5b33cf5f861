#include "memory_platform.h"

#include <algorithm>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

class MemoryFile final : public File {
 public:
  explicit MemoryFile(std::shared_ptr<std::string> content) : content_(std::move(content)) {}

  std::uint64_t Size() override { return content_->size(); }

  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    if (offset >= content_->size()) return 0;
    return content_->copy(room.data(), room.size(), offset);
  }

  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    const std::size_t end = offset + bytes.size();
    if (content_->size() < end) content_->resize(end);
    std::copy(bytes.begin(), bytes.end(), content_->begin() + static_cast<std::ptrdiff_t>(offset));
  }

 private:
  std::shared_ptr<std::string> content_;
};

// Without a separator at its end; the root is "".
std::string_view Plain(std::string_view path) {
  while (path.ends_with(kSeparator)) path.remove_suffix(1);
  return path;
}

}  // namespace

MemoryPlatform::MemoryPlatform() : ForwardingPlatform(SystemPlatform()) { names_[""] = nullptr; }

std::map<std::string, std::optional<std::string>> MemoryPlatform::Tree() const {
  std::map<std::string, std::optional<std::string>> tree;
  for (const auto& [path, content] : names_) {
    if (!path.empty()) tree[path] = content ? std::optional(*content) : std::nullopt;
  }
  return tree;
}

void MemoryPlatform::PutFile(std::string_view path, std::string_view content) {
  RequireFolderOf(path);
  names_[std::string(path)] = std::make_shared<std::string>(content);
}

std::string& MemoryPlatform::ContentOf(std::string_view path) {
  Require(HasFile(path), "the file is there");
  return **Find(path);
}

bool MemoryPlatform::HasFile(std::string_view path) const {
  const Content* found = Find(path);
  return found && *found;
}

const MemoryPlatform::Content* MemoryPlatform::Find(std::string_view path) const {
  Require(path.empty() || path.starts_with(kSeparator), "the path is absolute");
  const auto found = names_.find(Plain(path));
  return found == names_.end() ? nullptr : &found->second;
}

void MemoryPlatform::RequireFolderOf(std::string_view path) const {
  const Content* folder = Find(FolderOf(path));
  if (!folder || *folder) throw RuntimeError(kPathNotFound);
}

void MemoryPlatform::MakeFolder(std::string_view path) {
  if (Find(path)) throw RuntimeError(kPathFileAccessError);
  RequireFolderOf(Plain(path));
  names_[std::string(Plain(path))] = nullptr;
}

// Nobody else can put anything in its place.
std::unique_ptr<HeldFolder> MemoryPlatform::HoldFolder(std::string_view path) {
  const Content* found = Find(path);
  if (!found || *found) throw RuntimeError(kPathNotFound);
  return std::make_unique<HeldFolder>();
}

std::vector<FolderEntry> MemoryPlatform::Entries(std::string_view folder) {
  const Content* found = Find(folder);
  if (!found || *found) throw RuntimeError(kPathNotFound);
  const std::string start = std::string(Plain(folder)) + kSeparator;
  std::vector<FolderEntry> entries;
  for (auto name = names_.upper_bound(start); name != names_.end(); ++name) {
    if (!name->first.starts_with(start)) break;
    const std::string bare = name->first.substr(start.size());
    if (bare.find(kSeparator) != std::string::npos) continue;
    entries.push_back({bare, !name->second, false, bare.starts_with('.')});
  }
  return entries;
}

std::optional<unsigned> MemoryPlatform::Attributes(std::string_view path) {
  const Content* found = Find(path);
  if (!found) return std::nullopt;
  const unsigned hidden = FileNameOf(Plain(path)).starts_with('.') ? kHidden : kNormal;
  return hidden | (*found ? kNormal : kDirectory);
}

std::unique_ptr<File> MemoryPlatform::OpenFile(std::string_view path, OpenFor use) {
  const Content* found = Find(path);
  if (!found && use == OpenFor::kReading) throw RuntimeError(kFileNotFound);
  if (!found) return MakeFile(path, FileUse::kData);
  if (!*found) throw RuntimeError(kPathFileAccessError);
  return std::make_unique<MemoryFile>(*found);
}

std::unique_ptr<File> MemoryPlatform::MakeFile(std::string_view path, FileUse) {
  if (Find(path)) throw RuntimeError(kPathFileAccessError);
  PutFile(path, "");
  return std::make_unique<MemoryFile>(*Find(path));
}

void MemoryPlatform::RenameFile(std::string_view path, std::string_view newPath) {
  const Content* found = Find(path);
  if (!found || !*found) throw RuntimeError(kFileNotFound);
  const Content* replaced = Find(newPath);
  if (replaced && !*replaced) throw RuntimeError(kPathFileAccessError);
  RequireFolderOf(newPath);
  const Content content = *found;
  names_.erase(names_.find(path));
  names_[std::string(newPath)] = content;
}

void MemoryPlatform::RemoveFile(std::string_view path) {
  const Content* found = Find(path);
  if (!found) throw RuntimeError(kFileNotFound);
  if (!*found) throw RuntimeError(kPathFileAccessError);
  names_.erase(names_.find(path));
}

void MemoryPlatform::RemoveFolder(std::string_view path) {
  const Content* found = Find(path);
  if (!found) throw RuntimeError(kPathNotFound);
  if (*found || !Entries(path).empty()) throw RuntimeError(kPathFileAccessError);
  names_.erase(names_.find(Plain(path)));
}

std::string MemoryPlatform::ShortDate(CalendarDate date) {
  return std::to_string(date.month) + "/" + std::to_string(date.day) + "/" +
         std::to_string(date.year);
}

}  // namespace tarvo::fuzz
