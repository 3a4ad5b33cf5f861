#include "platform/linux/x11_display.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace tarvo {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

using PropertyReply = Owned<xcb_get_property_reply_t>;

xcb_get_property_cookie_t AskProperty(xcb_connection_t* connection, xcb_window_t window,
                                      xcb_atom_t property) {
  constexpr std::uint32_t kMostWords = 1 << 16;
  return TheXcb().GetProperty(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                              kMostWords);
}

// Nothing when the window is gone.
PropertyReply Answer(xcb_connection_t* connection, xcb_get_property_cookie_t cookie) {
  return PropertyReply(TheXcb().GetPropertyReply(connection, cookie, nullptr));
}

std::vector<std::uint32_t> NumbersIn(const PropertyReply& reply) {
  constexpr int kBits = 32;
  if (!reply || reply->format != kBits) return {};
  const auto* numbers = static_cast<const std::uint32_t*>(TheXcb().GetPropertyValue(reply.get()));
  return {numbers, numbers + reply->value_len};
}

std::string TextIn(const PropertyReply& reply) {
  constexpr int kBits = 8;
  if (!reply || reply->format != kBits) return {};
  return {static_cast<const char*>(TheXcb().GetPropertyValue(reply.get())), reply->value_len};
}

std::string HostName() {
  char name[256] = "";
  return ::gethostname(name, sizeof name - 1) == 0 ? name : "";
}

// Clients give the host's name with or without its domain.
bool IsSameHost(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  return b.starts_with(a) && (b.size() == a.size() || b[a.size()] == '.');
}

}  // namespace

X11Display::X11Display(const std::string& name) {
  if (TheXcb().library.IsWhole()) connection_.reset(TheXcb().Connect(name.c_str(), nullptr));
}

std::vector<xcb_window_t> X11Display::Roots() const {
  if (!IsConnected()) return {};
  std::vector<xcb_window_t> roots;
  for (auto screen = TheXcb().SetupRootsIterator(TheXcb().GetSetup(connection_.get()));
       screen.rem > 0; TheXcb().ScreenNext(&screen)) {
    roots.push_back(screen.data->root);
  }
  return roots;
}

std::vector<std::uint32_t> X11Display::Numbers(xcb_window_t window, const std::string& property) {
  if (!IsConnected()) return {};
  const auto cookie = AskProperty(connection_.get(), window, Atom(property));
  return NumbersIn(Answer(connection_.get(), cookie));
}

std::vector<X11WindowOwner> X11Display::Owners(const std::vector<xcb_window_t>& windows) {
  struct Questions {
    xcb_get_property_cookie_t process;
    xcb_get_property_cookie_t machine;
  };
  if (!IsConnected()) return {};
  const xcb_atom_t process = Atom("_NET_WM_PID");
  std::vector<Questions> asked;
  asked.reserve(windows.size());
  for (const xcb_window_t window : windows) {
    asked.push_back({AskProperty(connection_.get(), window, process),
                     AskProperty(connection_.get(), window, XCB_ATOM_WM_CLIENT_MACHINE)});
  }

  const std::string thisHost = HostName();
  std::vector<X11WindowOwner> owners;
  owners.reserve(windows.size());
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const auto processes = NumbersIn(Answer(connection_.get(), asked[i].process));
    const std::string machine = TextIn(Answer(connection_.get(), asked[i].machine));
    owners.push_back({windows[i], processes.empty() ? 0 : processes[0],
                      machine.empty() || IsSameHost(machine, thisHost)});
  }
  return owners;
}

void X11Display::SendToWindowManager(xcb_window_t root, xcb_window_t window,
                                     const std::string& message,
                                     const std::array<std::uint32_t, 5>& data) {
  if (!IsConnected()) return;
  constexpr std::uint32_t kWindowManagers =
      XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = Atom(message);
  std::copy(data.begin(), data.end(), event.data.data32);
  TheXcb().SendEvent(connection_.get(), 0, root, kWindowManagers,
                     reinterpret_cast<const char*>(&event));
  const auto cookie = TheXcb().GetInputFocus(connection_.get());
  Owned<xcb_get_input_focus_reply_t>(
      TheXcb().GetInputFocusReply(connection_.get(), cookie, nullptr));
}

xcb_atom_t X11Display::Atom(const std::string& name) {
  const auto known = atoms_.find(name);
  if (known != atoms_.end()) return known->second;
  const auto cookie = TheXcb().InternAtom(connection_.get(), 0,
                                          static_cast<std::uint16_t>(name.size()), name.data());
  const Owned<xcb_intern_atom_reply_t> reply(
      TheXcb().InternAtomReply(connection_.get(), cookie, nullptr));
  return atoms_[name] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace tarvo
