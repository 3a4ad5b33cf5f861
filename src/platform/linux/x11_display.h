#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/xcb.h"

namespace tarvo {

// Whom a window belongs to, as its client says (_NET_WM_PID and WM_CLIENT_MACHINE).
struct X11WindowOwner {
  xcb_window_t window = XCB_WINDOW_NONE;
  std::uint32_t process = 0;  // 0 when the client does not say
  bool isOfThisHost = true;   // also when the client does not say
};

// A connection to an X11 display, closed at the end of its life. On a display that cannot be
// reached or has gone, everything is empty and nothing happens.
class X11Display {
 public:
  explicit X11Display(const std::string& name);

  // The root window of every screen.
  std::vector<xcb_window_t> Roots() const;

  // The numbers, or the windows, in a property; none when the window has no such property.
  std::vector<std::uint32_t> Numbers(xcb_window_t window, const std::string& property);

  // The owners of windows, in the same order.
  std::vector<X11WindowOwner> Owners(const std::vector<xcb_window_t>& windows);

  // Sends a message about a window to the window manager of a screen, and waits until the display
  // has it.
  void SendToWindowManager(xcb_window_t root, xcb_window_t window, const std::string& message,
                           const std::array<std::uint32_t, 5>& data);

 private:
  xcb_atom_t Atom(const std::string& name);
  bool IsConnected() const {
    return connection_ && TheXcb().ConnectionHasError(connection_.get()) == 0;
  }

  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { TheXcb().Disconnect(connection); }
  };
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace tarvo
