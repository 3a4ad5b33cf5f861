#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "platform/forwarding_platform.h"

namespace tarvo::test {

// What a disk or a system does to an operation.
enum class FaultKind {
  kNoSpace,     // what needs room fails: making, writing, renaming
  kIoError,     // anything on the disk fails
  kRefused,     // what needs a permission fails: everything but work on an open file
  kShortWrite,  // a part is written, then there is no space left
};

// The error that a fault of this kind raises.
int ErrorOf(FaultKind kind);
inline constexpr FaultKind kFaultKinds[] = {FaultKind::kNoSpace, FaultKind::kIoError,
                                            FaultKind::kRefused, FaultKind::kShortWrite};

struct Fault {
  static constexpr int kEverAfter = 1'000'000;

  FaultKind kind = FaultKind::kIoError;
  int number = 1;  // of the operation, among those that the kind can hit, from 1
  int length = 1;  // how many of these fail in a row
  // How many sixteenths of the bytes a short write still writes; always one byte less at least.
  std::size_t sixteenths = 8;

  bool IsEverAfter() const { return length == kEverAfter; }
};

// Makes operations on another platform fail, those on its files and watches included. What a call
// cannot raise it gives as its failure: no attributes, no special folder, a refused registry key.
class FailingPlatform : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;

  // From now on operations are counted and fail; from Heal on no more.
  void Fail(const Fault& fault) {
    fault_ = fault;
    isArmed_ = true;
  }
  void Heal() { isArmed_ = false; }

  // The first operation that has failed, with its path; "" for none yet.
  const std::string& FailedOperation() const { return failedOperation_; }

  // Whether an operation of that name is among those that have failed.
  bool HasFailed(std::string_view operation) const { return failedNames_.contains(operation); }

  std::optional<std::string> SpecialFolder(int identifier) override;
  std::string ProgramFolder() override;
  std::string CurrentFolder() override;
  void ChangeCurrentFolder(std::string_view path) override;
  void MakeFolder(std::string_view path) override;
  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override;
  std::vector<FolderEntry> Entries(std::string_view folder) override;
  std::optional<unsigned> Attributes(std::string_view path) override;
  bool IsLink(std::string_view path) override;
  bool HasOtherNames(std::string_view path) override;
  void SetAttributes(std::string_view path, unsigned attributes) override;
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override;
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override;
  void RenameFile(std::string_view path, std::string_view newPath) override;
  void RemoveFile(std::string_view path) override;
  void RemoveFolder(std::string_view path) override;
  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override;
  std::unique_ptr<FolderWatch> WatchFolder(std::string_view folder) override;
  void ShowFile(std::string_view file) override;
  OpenedKey OpenRegistryKey(RegistryRoot root, std::string_view path,
                            RegistryAccess access) override;
  void DeleteProgramSettings(std::string_view application, std::string_view section) override;

 private:
  class FailingFile;
  class FailingWatch;

  // What an operation is, which decides the kinds of faults that can hit it.
  enum class Nature { kNeedsRoom, kNeedsPermission, kOnOpenFile, kWriting };

  bool CanHit(Nature nature) const;
  bool FailsNow(Nature nature, std::string_view operation, std::string_view path);
  void Step(Nature nature, std::string_view operation, std::string_view path);
  [[noreturn]] void Raise() const;

  Fault fault_;
  bool isArmed_ = false;
  int operations_ = 0;
  std::string failedOperation_;
  std::set<std::string, std::less<>> failedNames_;
};

}  // namespace tarvo::test
