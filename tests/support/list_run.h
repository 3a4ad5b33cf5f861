#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "catalogue/driver_list.h"
#include "catalogue/main_window.h"
#include "support/program_run.h"

namespace tarvo::test {

// A run with the main window's plain state and an open settings store, but without its handlers.
class ListRun : public ProgramRun {
 protected:
  class PlainWindow : public MainWindow {};

  ListRun() : globals(std::make_unique<Globals>(platform, frontEnd, "")) {
    globals->OpenSettings();
    window.dataPath = folder / kDataFolder;
  }

  void Update(std::string_view mode = {}) { UpdateDriverList(*globals, window, mode); }

  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int i = 0; i < window.lvListView.Count(); ++i) {
      names.push_back(window.lvListView.ItemAt(i).Text);
    }
    return names;
  }

  ListItem& Item(std::string_view key) {
    for (int i = 0; i < window.lvListView.Count(); ++i) {
      if (window.lvListView.ItemAt(i).Key == key) return window.lvListView.ItemAt(i);
    }
    throw std::runtime_error("no item " + std::string(key));
  }

  std::unique_ptr<Globals> globals;
  PlainWindow window;
};

}  // namespace tarvo::test
