#pragma once

#include "actions/install_run.h"
#include "actions/remove_driver.h"
#include "archive/archive_maker.h"
#include "support/memory_folders.h"
#include "trial.h"

namespace tarvo::test {

// A run with drivers of any size, in memory.
class BigRun : private MemoryFolders, public Installing {
 protected:
  BigRun() {
    starting.secondsPerReading = 0.25;
    status.answer = Answer::kYes;
  }

  // A package of that name with these files and a description.
  std::string Pack(const std::string& name, std::vector<MadeMember> members = {}) {
    members.push_back({.name = "driver.inf", .content = "[Driver]\r\n"});
    return folder.WriteFile(InData(name), ArchiveOf(members));
  }

  // How many downloads the list shows of a driver, of each of the three kinds.
  std::vector<std::string> Counts(const std::string& driver) {
    const ListItem& item = Item(driver);
    return {item.SubItems[0], item.SubItems[1], item.SubItems[2]};
  }

  // Removes a driver; the number of the error that ends it, 0 for none.
  int Remove(const std::string& driver) {
    status.messages.clear();
    try {
      RemoveDriver(*globals, window, driver);
      return 0;
    } catch (const RuntimeError& error) {
      return error.Number();
    }
  }

  // Tells a figure of a test that has held until here.
  static void TellHeld(const char* figure, const std::string& text) {
    TellFigure(figure, HasFailure() ? "not held: see what the trial said" : text);
  }

  std::string LastMessage() const { return status.messages.empty() ? "" : status.messages.back(); }
};

}  // namespace tarvo::test
