#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/linux/x11_display.h"
#include "support/temporary_folder.h"
#include "test_process.h"

namespace tarvo::test {

enum class WindowManager { kNone, kOpenbox };

// An X11 display of the test's own that nobody sees, with a window manager that gives every new
// window the focus. Both end with the test.
class PrivateDisplay {
 public:
  explicit PrivateDisplay(WindowManager manager = WindowManager::kOpenbox);
  ~PrivateDisplay() { End(); }
  PrivateDisplay(const PrivateDisplay&) = delete;
  PrivateDisplay& operator=(const PrivateDisplay&) = delete;

  const std::string& Name() const { return name_; }

  // The window with the focus and the one above all others, as the window manager says; 0 for none.
  // These and the next ones are to be asked until they give what is awaited.
  std::uint32_t Active();
  std::uint32_t Top();
  // Whether the first of two windows lies above the second.
  bool IsAbove(std::uint32_t window, std::uint32_t other);
  bool IsMinimised(std::uint32_t window);
  void Minimise(std::uint32_t window);

  void EndWindowManager() { manager_.End(SIGTERM); }

  // A server that is not told to end would leave its lock behind.
  void End() {
    EndWindowManager();
    server_.End(SIGTERM);
  }

 private:
  bool StartServer();
  void StartWindowManager();
  std::uint32_t Root() const { return display_->Roots().at(0); }
  void NudgeWindowManager();

  TemporaryFolder folder_;
  std::string name_;
  TestProcess server_;
  TestProcess manager_;
  std::unique_ptr<X11Display> display_;
  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> nudging_{nullptr, &xcb_disconnect};
};

// The identifier that a test_window writes to a file, once it is there.
std::uint32_t WindowIn(const std::string& file);

}  // namespace tarvo::test
