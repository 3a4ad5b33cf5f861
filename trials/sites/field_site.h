#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/start/tarvo.h"
#include "sites/file_tree.h"
#include "support/made_package.h"
#include "support/memory_folders.h"
#include "support/program_run.h"

namespace tarvo::test {

// The real system below a folder, outside of which nothing may be made, as for an ordinary user.
// Started programs only do what `atStart` says and have ended when they are asked for.
class SitePlatform : public RootedPlatform {
 public:
  explicit SitePlatform(std::string root) : RootedPlatform(root), root_(std::move(root)) {
    secondsPerReading = 0.01;  // so that whoever waits for a lock sees time pass
  }

  void MakeFolder(std::string_view path) override;
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override;
  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override;
  bool ProcessLives(int) override { return false; }
  double SecondsSinceMidnight() override;

  std::function<void(std::string_view program)> atStart;

  // A wait of a whole day is a wait without end: it is raised as an error that nothing handles.
  void BeginRun() { readings_ = 0; }

 private:
  void RefuseOutside(std::string_view path) const;

  std::string root_;
  int readings_ = 0;
};

// One run of the program with the user in front of it, who says yes to every question.
class SiteRun {
 public:
  explicit SiteRun(SitePlatform& clock, Platform& on) : program_(on, user, "") {
    user.answer = Answer::kYes;
    user.whileWaiting = [this, &clock] { clock.PassSeconds(user.waits.back()); };
  }

  AfterStart Start() { return program_.Start(); }
  frmDrivers& Window() { return program_.MainForm(); }

  // Selects a driver in the list as a user does, "Add" for the item that adds one.
  void Select(std::string_view key);

  // The install loop over one package, as the window runs it; false for an invalid package.
  bool Install(const std::string& package);

  RecordingFrontEnd user;

 private:
  Tarvo program_;
};

// A technician's computer below a temporary folder. The driver "Meter" is installed in its first
// version, with downloads that exist nowhere else and the user's own notes; "Tide Gauge" is another
// driver. The packages of both versions of "Meter" and hand-held components lie beside the data.
// The settings are shared with sibling programs and have a value of several records.
class FieldSite : private MemoryFolders, public ProgramRun {
 protected:
  FieldSite();

  static constexpr const char* kDriver = "Meter";

  std::unique_ptr<SiteRun> StartedRun() { return StartedRun(system); }
  std::unique_ptr<SiteRun> StartedRun(Platform& on);

  // Brings the folders to a state and the process to where the program starts.
  void Restore(const FileTree& tree);
  FileTree Everything() const { return ReadTree(folder.Path()); }

  static std::string InMeter(const std::string& name) { return InDrivers("Meter/" + name); }

  // The tree without a folder and what is below it.
  static FileTree Without(FileTree tree, const std::string& folder);

  // What must hold while one version of a driver is being replaced by another: each file is the old
  // or the new one and nothing else is there, but for unfinished files beside them where these may
  // have been left behind.
  static void ExpectOldOrNew(const FileTree& found, const FileTree& before, const FileTree& after,
                             bool mayHaveUnfinished);

  // What must hold while the driver is being removed: its files are whole or gone and everything
  // else is as it was. Gives how many are gone.
  std::size_t ExpectWholeOrGone(const FileTree& found) const;

  SitePlatform system;
  std::string oldPackage;
  std::string newPackage;
  FileTree site;  // as it is at first

 private:
  std::string PackageOf(const std::string& version, PackageFiles files) const;
  void PackHandHeld(const std::string& content) const;
  void StoreSettings();
};

}  // namespace tarvo::test
