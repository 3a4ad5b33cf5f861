#pragma once

#include <memory>
#include <string>

#include "app/start/tarvo.h"
#include "support/program_run.h"

namespace tarvo::test {

// A whole run over the recording front end, from the start procedure on.
class StartedRun : public ProgramRun {
 protected:
  StartedRun() {
    // The dictionary is looked for in the current folder: there is none unless a test makes it.
    std::filesystem::current_path(folder.MakeFolder("start"));
    folder.MakeFolder(InData("Drivers"));
  }

  AfterStart Start(std::string arguments = {}) {
    run = std::make_unique<Tarvo>(platform, frontEnd, std::move(arguments));
    return run->Start();
  }

  // A settings store beside the program's, as another program of the maker has it.
  std::unique_ptr<RegistryReplacement> OtherStore() {
    auto store = std::make_unique<RegistryReplacement>(platform);
    store->OpenLocalRegistry(kCompanyName);
    return store;
  }
  void Store(std::string_view key, std::string_view value) {
    OtherStore()->SaveSetting(key, value);
  }
  std::string Stored(std::string_view key) { return OtherStore()->GetSetting(key, "absent"); }

  frmDrivers& Window() { return run->MainForm(); }

  std::unique_ptr<Tarvo> run;
};

}  // namespace tarvo::test
