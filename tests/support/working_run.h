#pragma once

#include <chrono>
#include <string>
#include <thread>

#include "support/started_run.h"

namespace tarvo::test {

// A started run whose list is worked on as a user would: items are clicked, which selects them.
class WorkingRun : public StartedRun {
 protected:
  ListItem& Item(const std::string& key) {
    for (int i = 0; i < Window().lvListView.Count(); ++i) {
      if (Window().lvListView.ItemAt(i).Key == key) return Window().lvListView.ItemAt(i);
    }
    throw std::runtime_error("no item " + key);
  }
  void Click(const std::string& key) {
    Window().lvListView.Select(&Item(key));
    Window().lvListView_ItemClick(Item(key));
  }
  void Press(const std::string& buttonKey) {
    ToolbarButton button;
    button.Key = buttonKey;
    Window().tbToolBar_ButtonClick(button);
  }

  // Moves the clock on by what was waited for. Real tools end in real time: they get a little of
  // it, lest the clock moves to midnight, where waiting never ends.
  void PassTurn(double seconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    platform.PassSeconds(seconds);
  }

  // The number of the error that the step raises; 0 for none.
  template <typename Step>
  static int ErrorOf(Step&& step) {
    try {
      step();
      return 0;
    } catch (const RuntimeError& error) {
      return error.Number();
    }
  }

  std::string DriverPath(const std::string& name) const { return folder / InDrivers(name); }
  bool Exists(const std::string& path) const {
    return std::filesystem::exists(std::filesystem::symlink_status(path));
  }
};

}  // namespace tarvo::test
