#pragma once

#include "platform/platform.h"

namespace tarvo {

// Hands every call on to another platform. Tests derive from it and override the call that is to
// fail or to be moved by hand, so that everything else stays real.
class ForwardingPlatform : public Platform {
 public:
  explicit ForwardingPlatform(Platform& target) : target_(target) {}

  // Not a copy: one that forwards to another of this class is made from its Platform&.
  ForwardingPlatform(const ForwardingPlatform&) = delete;
  ForwardingPlatform& operator=(const ForwardingPlatform&) = delete;

  std::optional<std::string> SpecialFolder(int identifier) override {
    return target_.SpecialFolder(identifier);
  }
  std::string ProgramFolder() override { return target_.ProgramFolder(); }
  std::string CurrentFolder() override { return target_.CurrentFolder(); }
  void ChangeCurrentFolder(std::string_view path) override { target_.ChangeCurrentFolder(path); }
  void ChangeCurrentDrive(char32_t letter) override { target_.ChangeCurrentDrive(letter); }
  bool IsDriveRoot(std::string_view path) override { return target_.IsDriveRoot(path); }
  void MakeFolder(std::string_view path) override { target_.MakeFolder(path); }
  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override {
    return target_.HoldFolder(path);
  }
  std::vector<FolderEntry> Entries(std::string_view folder) override {
    return target_.Entries(folder);
  }
  std::optional<unsigned> Attributes(std::string_view path) override {
    return target_.Attributes(path);
  }
  bool IsLink(std::string_view path) override { return target_.IsLink(path); }
  bool HasOtherNames(std::string_view path) override { return target_.HasOtherNames(path); }
  void SetAttributes(std::string_view path, unsigned attributes) override {
    target_.SetAttributes(path, attributes);
  }
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    return target_.OpenFile(path, use);
  }
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override {
    return target_.MakeFile(path, use);
  }
  void RenameFile(std::string_view path, std::string_view newPath) override {
    target_.RenameFile(path, newPath);
  }
  void RemoveFile(std::string_view path) override { target_.RemoveFile(path); }
  void RemoveFolder(std::string_view path) override { target_.RemoveFolder(path); }
  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    return target_.StartProcess(program, arguments, window);
  }
  bool ProcessLives(int process) override { return target_.ProcessLives(process); }
  void BringToFront(int process) override { target_.BringToFront(process); }
  std::unique_ptr<FolderWatch> WatchFolder(std::string_view folder) override {
    return target_.WatchFolder(folder);
  }
  void OpenFolder(std::string_view folder) override { target_.OpenFolder(folder); }
  void ShowFile(std::string_view file) override { target_.ShowFile(file); }
  void OpenByVerb(std::string_view path, std::string_view workingFolder) override {
    target_.OpenByVerb(path, workingFolder);
  }
  void OpenClassicHelp(std::string_view file, HelpCommand command, std::string_view key) override {
    target_.OpenClassicHelp(file, command, key);
  }
  OpenedKey OpenRegistryKey(RegistryRoot root, std::string_view path,
                            RegistryAccess access) override {
    return target_.OpenRegistryKey(root, path, access);
  }
  OpenedKey MakeRegistryKey(RegistryRoot root, std::string_view path) override {
    return target_.MakeRegistryKey(root, path);
  }
  void DeleteProgramSettings(std::string_view application, std::string_view section) override {
    target_.DeleteProgramSettings(application, section);
  }
  std::vector<SystemFinding> Findings() override { return target_.Findings(); }
  bool InputIsTerminal() override { return target_.InputIsTerminal(); }
  double Now() override { return target_.Now(); }
  double SecondsSinceMidnight() override { return target_.SecondsSinceMidnight(); }
  std::string ShortDate(CalendarDate date) override { return target_.ShortDate(date); }
  std::string DecimalSeparator() override { return target_.DecimalSeparator(); }
  std::string EncodeCodePage(std::string_view utf8) override {
    return target_.EncodeCodePage(utf8);
  }
  std::string DecodeCodePage(std::string_view bytes) override {
    return target_.DecodeCodePage(bytes);
  }

 private:
  Platform& target_;
};

}  // namespace tarvo
