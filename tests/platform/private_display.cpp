#include "private_display.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace tarvo::test {
namespace {

// No keys or menus of the window manager come in between.
constexpr const char* kConfiguration = R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>1</number></desktops>
  <keyboard/>
  <mouse/>
</openbox_config>
)";

constexpr std::uint32_t kIconicState = 3;  // of WM_STATE and WM_CHANGE_STATE

std::uint32_t LastOrZero(const std::vector<std::uint32_t>& numbers) {
  return numbers.empty() ? 0 : numbers.back();
}

}  // namespace

PrivateDisplay::PrivateDisplay(WindowManager manager) {
  // Two servers that start at the same moment may want the same number.
  constexpr int kAttempts = 5;
  bool hasStarted = false;
  for (int i = 0; i < kAttempts && !hasStarted; ++i) hasStarted = StartServer();
  if (!hasStarted) throw std::runtime_error("the display does not start");
  if (manager == WindowManager::kOpenbox) StartWindowManager();
}

bool PrivateDisplay::StartServer() {
  int ends[2];
  if (::pipe(ends) != 0) return false;
  server_.End(SIGTERM);
  server_ = TestProcess({"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0",
                         "800x600x24", "-nolisten", "tcp"});
  ::close(ends[1]);
  std::string number;
  char digit = 0;
  while (::read(ends[0], &digit, 1) == 1 && digit != '\n') number += digit;
  ::close(ends[0]);
  name_ = ":" + number;
  display_ = std::make_unique<X11Display>(name_);
  nudging_.reset(xcb_connect(name_.c_str(), nullptr));
  return !number.empty() && !display_->Roots().empty();
}

void PrivateDisplay::StartWindowManager() {
  const std::string file = folder_.WriteFile("openbox.xml", kConfiguration);
  manager_ =
      TestProcess({"openbox", "--sm-disable", "--config-file", file},
                  {"DISPLAY=" + name_, "HOME=" + folder_.Path(), "XDG_CACHE_HOME=" + folder_.Path(),
                   "XDG_CONFIG_HOME=" + folder_.Path(), "XDG_DATA_HOME=" + folder_.Path()});
  if (!ComesTrue([&] { return !display_->Numbers(Root(), "_NET_SUPPORTING_WM_CHECK").empty(); })) {
    throw std::runtime_error("the window manager does not start");
  }
}

// Openbox now and then goes to sleep on an event that it has read but not looked at, until another
// one comes. It hears of every property of the root window.
void PrivateDisplay::NudgeWindowManager() {
  if (xcb_connection_has_error(nudging_.get()) != 0) return;
  xcb_change_property(nudging_.get(), XCB_PROP_MODE_REPLACE, Root(), XCB_ATOM_CUT_BUFFER0,
                      XCB_ATOM_STRING, 8, 0, nullptr);
  xcb_flush(nudging_.get());
}

std::uint32_t PrivateDisplay::Active() {
  NudgeWindowManager();
  return LastOrZero(display_->Numbers(Root(), "_NET_ACTIVE_WINDOW"));
}

std::uint32_t PrivateDisplay::Top() {
  return LastOrZero(display_->Numbers(Root(), "_NET_CLIENT_LIST_STACKING"));
}

bool PrivateDisplay::IsAbove(std::uint32_t window, std::uint32_t other) {
  const std::vector<std::uint32_t> stack = display_->Numbers(Root(), "_NET_CLIENT_LIST_STACKING");
  const auto at = std::find(stack.begin(), stack.end(), other);
  return at != stack.end() && std::find(at, stack.end(), window) != stack.end();
}

bool PrivateDisplay::IsMinimised(std::uint32_t window) {
  NudgeWindowManager();
  const std::vector<std::uint32_t> state = display_->Numbers(window, "WM_STATE");
  return !state.empty() && state[0] == kIconicState;
}

void PrivateDisplay::Minimise(std::uint32_t window) {
  display_->SendToWindowManager(Root(), window, "WM_CHANGE_STATE", {kIconicState});
}

std::uint32_t WindowIn(const std::string& file) {
  EXPECT_TRUE(ComesTrue([&] { return std::filesystem::exists(file); })) << file;
  std::uint32_t window = 0;
  std::ifstream(file) >> window;
  return window;
}

}  // namespace tarvo::test
