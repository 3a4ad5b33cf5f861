#include "sites/file_tree.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "support/temporary_folder.h"

namespace tarvo::test {
namespace fs = std::filesystem;

namespace {

TreeEntry EntryAt(const fs::directory_entry& found) {
  TreeEntry entry;
  if (found.is_symlink()) {
    entry.kind = TreeEntry::Kind::kLink;
    entry.content = fs::read_symlink(found.path()).string();
    return entry;
  }
  entry.modes = static_cast<unsigned>(found.status().permissions());
  if (found.is_directory()) {
    entry.kind = TreeEntry::Kind::kFolder;
  } else {
    entry.content = ReadFileAt(found.path().string());
  }
  return entry;
}

void WriteEntry(const fs::path& path, const TreeEntry& entry) {
  switch (entry.kind) {
    case TreeEntry::Kind::kLink:
      fs::create_symlink(entry.content, path);
      return;
    case TreeEntry::Kind::kFolder:
      fs::create_directory(path);
      break;
    case TreeEntry::Kind::kFile: {
      std::ofstream file(path, std::ios::binary);
      file.write(entry.content.data(), static_cast<std::streamsize>(entry.content.size()));
      if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
      break;
    }
  }
  fs::permissions(path, fs::perms(entry.modes));
}

}  // namespace

FileTree ReadTree(const std::string& folder) {
  FileTree tree;
  for (const auto& found : fs::recursive_directory_iterator(folder)) {
    tree[found.path().lexically_relative(folder).generic_string()] = EntryAt(found);
  }
  return tree;
}

void RestoreTree(const std::string& folder, const FileTree& tree) {
  FileTree found = ReadTree(folder);
  for (const auto& [path, entry] : found) {
    const auto wanted = tree.find(path);
    if (wanted == tree.end() || wanted->second.kind != entry.kind) {
      fs::remove_all(fs::path(folder) / path);
    } else if (wanted->second != entry) {
      if (entry.kind == TreeEntry::Kind::kFolder) {
        fs::permissions(fs::path(folder) / path, fs::perms(wanted->second.modes));
      } else {
        fs::remove(fs::path(folder) / path);
      }
    }
  }
  for (const auto& [path, entry] : tree) {
    const fs::path target = fs::path(folder) / path;
    if (!fs::exists(fs::symlink_status(target))) WriteEntry(target, entry);
  }
}

}  // namespace tarvo::test
