#include "failing_platform.h"

#include <algorithm>

#include "base/runtime_error.h"

namespace tarvo::test {

class FailingPlatform::FailingFile : public File {
 public:
  FailingFile(FailingPlatform& platform, std::unique_ptr<File> file, std::string_view path)
      : platform_(platform), file_(std::move(file)), path_(path) {}

  std::uint64_t Size() override {
    platform_.Step(Nature::kOnOpenFile, "Size", path_);
    return file_->Size();
  }
  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    platform_.Step(Nature::kOnOpenFile, "ReadInto", path_);
    return file_->ReadInto(offset, room);
  }
  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    if (platform_.FailsNow(Nature::kWriting, "WriteAt", path_)) {
      if (platform_.fault_.kind == FaultKind::kShortWrite && !bytes.empty()) {
        const std::size_t part = bytes.size() * platform_.fault_.sixteenths / 16;
        file_->WriteAt(offset, bytes.substr(0, std::min(part, bytes.size() - 1)));
      }
      platform_.Raise();
    }
    file_->WriteAt(offset, bytes);
  }

 private:
  FailingPlatform& platform_;
  std::unique_ptr<File> file_;
  std::string path_;
};

// A watch that has lost its folder: nothing in it is found any more.
class FailingPlatform::FailingWatch : public FolderWatch {
 public:
  FailingWatch(FailingPlatform& platform, std::unique_ptr<FolderWatch> watch)
      : platform_(platform), watch_(std::move(watch)) {}
  std::string NewestFile() override {
    if (platform_.FailsNow(Nature::kOnOpenFile, "NewestFile", {})) return {};
    return watch_->NewestFile();
  }

 private:
  FailingPlatform& platform_;
  std::unique_ptr<FolderWatch> watch_;
};

bool FailingPlatform::CanHit(Nature nature) const {
  switch (fault_.kind) {
    case FaultKind::kNoSpace:
      return nature == Nature::kNeedsRoom || nature == Nature::kWriting;
    case FaultKind::kIoError:
      return true;
    case FaultKind::kRefused:
      return nature == Nature::kNeedsRoom || nature == Nature::kNeedsPermission;
    case FaultKind::kShortWrite:
      return nature == Nature::kWriting;
  }
  return false;
}

bool FailingPlatform::FailsNow(Nature nature, std::string_view operation, std::string_view path) {
  if (!isArmed_ || !CanHit(nature)) return false;
  ++operations_;
  if (operations_ < fault_.number || operations_ - fault_.number >= fault_.length) return false;
  if (failedOperation_.empty()) failedOperation_.append(operation).append(" ").append(path);
  failedNames_.emplace(operation);
  return true;
}

void FailingPlatform::Step(Nature nature, std::string_view operation, std::string_view path) {
  if (FailsNow(nature, operation, path)) Raise();
}

int ErrorOf(FaultKind kind) {
  switch (kind) {
    case FaultKind::kIoError:
      return kDeviceIoError;
    case FaultKind::kRefused:
      return kPermissionDenied;
    default:
      return kDiskFull;
  }
}

void FailingPlatform::Raise() const { throw RuntimeError(ErrorOf(fault_.kind)); }

std::optional<std::string> FailingPlatform::SpecialFolder(int identifier) {
  if (FailsNow(Nature::kNeedsPermission, "SpecialFolder", {})) return std::nullopt;
  return ForwardingPlatform::SpecialFolder(identifier);
}

std::string FailingPlatform::ProgramFolder() {
  Step(Nature::kNeedsPermission, "ProgramFolder", {});
  return ForwardingPlatform::ProgramFolder();
}

std::string FailingPlatform::CurrentFolder() {
  Step(Nature::kNeedsPermission, "CurrentFolder", {});
  return ForwardingPlatform::CurrentFolder();
}

void FailingPlatform::ChangeCurrentFolder(std::string_view path) {
  Step(Nature::kNeedsPermission, "ChangeCurrentFolder", path);
  ForwardingPlatform::ChangeCurrentFolder(path);
}

void FailingPlatform::MakeFolder(std::string_view path) {
  Step(Nature::kNeedsRoom, "MakeFolder", path);
  ForwardingPlatform::MakeFolder(path);
}

std::unique_ptr<HeldFolder> FailingPlatform::HoldFolder(std::string_view path) {
  Step(Nature::kNeedsPermission, "HoldFolder", path);
  return ForwardingPlatform::HoldFolder(path);
}

std::vector<FolderEntry> FailingPlatform::Entries(std::string_view folder) {
  Step(Nature::kNeedsPermission, "Entries", folder);
  return ForwardingPlatform::Entries(folder);
}

std::optional<unsigned> FailingPlatform::Attributes(std::string_view path) {
  if (FailsNow(Nature::kNeedsPermission, "Attributes", path)) return std::nullopt;
  return ForwardingPlatform::Attributes(path);
}

bool FailingPlatform::IsLink(std::string_view path) {
  if (FailsNow(Nature::kNeedsPermission, "IsLink", path)) return false;
  return ForwardingPlatform::IsLink(path);
}

bool FailingPlatform::HasOtherNames(std::string_view path) {
  if (FailsNow(Nature::kNeedsPermission, "HasOtherNames", path)) return false;
  return ForwardingPlatform::HasOtherNames(path);
}

void FailingPlatform::SetAttributes(std::string_view path, unsigned attributes) {
  Step(Nature::kNeedsPermission, "SetAttributes", path);
  ForwardingPlatform::SetAttributes(path, attributes);
}

std::unique_ptr<File> FailingPlatform::OpenFile(std::string_view path, OpenFor use) {
  const bool isReading = use == OpenFor::kReading;
  Step(isReading ? Nature::kNeedsPermission : Nature::kNeedsRoom, "OpenFile", path);
  return std::make_unique<FailingFile>(*this, ForwardingPlatform::OpenFile(path, use), path);
}

std::unique_ptr<File> FailingPlatform::MakeFile(std::string_view path, FileUse use) {
  Step(Nature::kNeedsRoom, "MakeFile", path);
  return std::make_unique<FailingFile>(*this, ForwardingPlatform::MakeFile(path, use), path);
}

void FailingPlatform::RenameFile(std::string_view path, std::string_view newPath) {
  Step(Nature::kNeedsRoom, "RenameFile", newPath);
  ForwardingPlatform::RenameFile(path, newPath);
}

void FailingPlatform::RemoveFile(std::string_view path) {
  Step(Nature::kNeedsPermission, "RemoveFile", path);
  ForwardingPlatform::RemoveFile(path);
}

void FailingPlatform::RemoveFolder(std::string_view path) {
  Step(Nature::kNeedsPermission, "RemoveFolder", path);
  ForwardingPlatform::RemoveFolder(path);
}

int FailingPlatform::StartProcess(std::string_view program,
                                  const std::vector<std::string>& arguments, StartWindow window) {
  Step(Nature::kNeedsPermission, "StartProcess", program);
  return ForwardingPlatform::StartProcess(program, arguments, window);
}

std::unique_ptr<FolderWatch> FailingPlatform::WatchFolder(std::string_view folder) {
  Step(Nature::kNeedsPermission, "WatchFolder", folder);
  return std::make_unique<FailingWatch>(*this, ForwardingPlatform::WatchFolder(folder));
}

void FailingPlatform::ShowFile(std::string_view file) {
  Step(Nature::kNeedsPermission, "ShowFile", file);
  ForwardingPlatform::ShowFile(file);
}

OpenedKey FailingPlatform::OpenRegistryKey(RegistryRoot root, std::string_view path,
                                           RegistryAccess access) {
  if (FailsNow(Nature::kNeedsPermission, "OpenRegistryKey", path)) {
    return {RegistryStatus::kAccessDenied, nullptr};
  }
  return ForwardingPlatform::OpenRegistryKey(root, path, access);
}

void FailingPlatform::DeleteProgramSettings(std::string_view application,
                                            std::string_view section) {
  Step(Nature::kNeedsPermission, "DeleteProgramSettings", application);
  ForwardingPlatform::DeleteProgramSettings(application, section);
}

}  // namespace tarvo::test
