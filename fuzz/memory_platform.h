#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forwarding_platform.h"

namespace tarvo::fuzz {

// A system whose files and folders are in memory, so that a fuzz target can do ten thousand
// installs a second. It keeps the contract of Platform as far as the targets use it: paths are
// absolute, there are no links and no permissions, letter case counts. The clock stands still, and
// the locale is plain.
class MemoryPlatform : public ForwardingPlatform {
 public:
  // Starts with nothing but the root folder.
  MemoryPlatform();

  // Every file's content by its path, and every folder, which has none; the root is left out.
  std::map<std::string, std::optional<std::string>> Tree() const;

  // Puts a file there; its folder must be there.
  void PutFile(std::string_view path, std::string_view content);
  // A file's content; the file must be there.
  std::string& ContentOf(std::string_view path);
  bool HasFile(std::string_view path) const;

  double day = 45000;  // 15 March 2023
  double secondsOfDay = 43200;
  std::string decimalSign = ".";

  void MakeFolder(std::string_view path) override;
  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override;
  std::vector<FolderEntry> Entries(std::string_view folder) override;
  std::optional<unsigned> Attributes(std::string_view path) override;
  bool IsLink(std::string_view) override { return false; }
  bool HasOtherNames(std::string_view) override { return false; }
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override;
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override;
  void RenameFile(std::string_view path, std::string_view newPath) override;
  void RemoveFile(std::string_view path) override;
  void RemoveFolder(std::string_view path) override;
  double Now() override { return day + secondsOfDay / 86400; }
  double SecondsSinceMidnight() override { return secondsOfDay; }
  std::string ShortDate(CalendarDate date) override;
  std::string DecimalSeparator() override { return decimalSign; }

 private:
  // A folder's content is null.
  using Content = std::shared_ptr<std::string>;

  const Content* Find(std::string_view path) const;
  void RequireFolderOf(std::string_view path) const;

  std::map<std::string, Content, std::less<>> names_;
};

}  // namespace tarvo::fuzz
