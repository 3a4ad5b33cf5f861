#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/globals/globals.h"
#include "forms/null_front_end.h"
#include "support/hand_moved_platform.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// The real system below a folder of the test's own that acts as the drive's root, so that no walk
// upward leaves it.
class RootedPlatform : public HandMovedPlatform {
 public:
  explicit RootedPlatform(std::string root) : root_(std::move(root)) {}

  bool IsDriveRoot(std::string_view path) override { return path == root_; }
  void ChangeCurrentFolder(std::string_view path) override {
    if (path == ".." && CurrentFolder() == root_) return;
    HandMovedPlatform::ChangeCurrentFolder(path);
  }

 private:
  std::string root_;
};

// Answers messages as the test says and keeps what was shown.
class RecordingFrontEnd : public NullFrontEnd {
 public:
  Answer MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                std::string_view title) override {
    icons.push_back(icon);
    buttonsShown.push_back(buttons);
    pointersAtMessages.push_back(MousePointer());
    messages.push_back(std::string(title) + ": " + std::string(text));
    if (atMessage) atMessage();
    if (answers.empty()) return answer;
    const Answer next = answers.front();
    answers.pop_front();
    return next;
  }
  void PopupMenu(MenuItem& menu, const MenuItem* defaultEntry) override {
    popups.emplace_back(&menu, defaultEntry);
  }
  void ShowHelp(Form&, const HelpRequest& request) override {
    if (helpError) throw RuntimeError(*helpError);
    helpShown.push_back(request);
  }
  void YieldUntilEvent(double seconds) override {
    waits.push_back(seconds);
    if (whileWaiting) whileWaiting();
  }
  float ScaleHeight(const Form& form) override { return form.Place.Height - kFrameHeight; }

  static constexpr float kFrameHeight = 600;  // twips
  std::vector<std::string> messages;
  std::vector<MessageIcon> icons;  // of the messages
  std::vector<int> pointersAtMessages;
  std::vector<MessageButtons> buttonsShown;
  Answer answer = Answer::kOk;
  std::deque<Answer> answers;       // the next ones, before `answer`
  std::function<void()> atMessage;  // while a message is shown
  std::vector<std::pair<const MenuItem*, const MenuItem*>> popups;  // menu, default entry
  std::vector<HelpRequest> helpShown;
  std::optional<RuntimeError> helpError;
  std::vector<double> waits;           // of YieldUntilEvent, in seconds
  std::function<void()> whileWaiting;  // in YieldUntilEvent
  std::vector<int> pointers;

 protected:
  void PointerChanged(int pointer) override { pointers.push_back(pointer); }
};

// A run of the program below a temporary folder: common documents in "documents", the data folder
// made and current, as it is once the main window has loaded.
class ProgramRun : public ::testing::Test {
 protected:
  ProgramRun() : platform(folder.Path()) {
    platform.specialFolders[kCommonDocuments] = folder.MakeFolder("documents");
    folder.MakeFolder(kDataFolder);
    std::filesystem::current_path(folder / kDataFolder);
  }

  static constexpr const char* kDataFolder = "documents/Halvex Limited/Halvex Tarvo";
  static constexpr const char* kSettingsFile = "documents/Halvex Limited/localregistry.dat";

  // Paths below the temporary folder.
  static std::string InData(const std::string& name) {
    return std::string(kDataFolder) + "/" + name;
  }
  static std::string InDrivers(const std::string& name) { return InData("Drivers/" + name); }
  std::string Driver(const std::string& name) const { return folder.MakeFolder(InDrivers(name)); }
  std::string DriverFile(const std::string& name, std::string_view content = {}) const {
    return folder.WriteFile(InDrivers(name), content);
  }

  // A tool of a driver, a shell script that notes its name and arguments in "calls" of the
  // temporary folder and then runs `commands`.
  std::string DriverTool(const std::string& name, const std::string& commands = {}) const {
    return folder.WriteNotingProgram(InDrivers(name), folder / "calls", commands);
  }

  TemporaryFolder folder;
  RootedPlatform platform;
  RecordingFrontEnd frontEnd;
};

}  // namespace tarvo::test
