#include "support/tree_record.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileRecord RecordOf(const fs::path& path) {
  FileRecord record;
  struct stat status {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  record.mode = status.st_mode;
  record.owner = status.st_uid;
  record.written = Nanoseconds(status.st_mtim);
  // Another name of the file that goes is such a change.
  const bool hasOtherNames = !S_ISDIR(status.st_mode) && status.st_nlink > 1;
  if (!hasOtherNames) record.changed = Nanoseconds(status.st_ctim);
  if (S_ISLNK(status.st_mode)) record.content = fs::read_symlink(path).string();
  if (S_ISREG(status.st_mode)) record.content = ReadFileAt(path.string());
  return record;
}

std::string Difference(const FileRecord& before, const FileRecord& after) {
  if (before.mode != after.mode) return "has another mode";
  if (before.content != after.content) return "has another content";
  if (before.owner != after.owner) return "has another owner";
  if (before.written != after.written) return "was written";
  return "was changed";
}

}  // namespace

TreeRecord RecordTree(const std::string& folder) {
  TreeRecord tree;
  tree[""] = RecordOf(folder);
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    tree[entry.path().lexically_relative(folder).string()] = RecordOf(entry.path());
  }
  return tree;
}

std::vector<std::string> Differences(const TreeRecord& before, const TreeRecord& after) {
  std::vector<std::string> lines;
  for (const auto& [path, record] : before) {
    const auto found = after.find(path);
    if (found == after.end()) {
      lines.push_back("\"" + path + "\" is gone");
      continue;
    }
    FileRecord now = found->second;
    // One of its names has gone since.
    if (record.changed == 0) now.changed = 0;
    if (!(now == record)) lines.push_back("\"" + path + "\" " + Difference(record, now));
  }
  for (const auto& [path, record] : after) {
    if (!before.contains(path)) lines.push_back("\"" + path + "\" is new");
  }
  return lines;
}

}  // namespace tarvo::test
