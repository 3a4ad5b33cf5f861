#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "environment.h"
#include "platform/platform.h"
#include "private_display.h"
#include "support/temporary_folder.h"
#include "test_process.h"

namespace tarvo::test {
namespace {

// Gets what a window manager gets, and says that there is one window.
class RequestsToTheManager {
 public:
  RequestsToTheManager(const std::string& display, std::uint32_t window)
      : connection_(xcb_connect(display.c_str(), nullptr), &xcb_disconnect) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
    const std::string list = "_NET_CLIENT_LIST_STACKING";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection_.get(),
                              xcb_intern_atom(connection_.get(), 0,
                                              static_cast<std::uint16_t>(list.size()), list.data()),
                              nullptr),
        &std::free);
    if (!atom) throw std::runtime_error("the display does not answer");
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, root, atom->atom, XCB_ATOM_WINDOW,
                        32, 1, &window);
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(connection_.get(), root, XCB_CW_EVENT_MASK, &mask);
    // The answer comes when the display has done all of it.
    std::free(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()),
                                        nullptr));
  }

  std::optional<xcb_client_message_event_t> Next() const {
    std::optional<xcb_client_message_event_t> request;
    ComesTrue([&] {
      const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(
          xcb_poll_for_event(connection_.get()), &std::free);
      constexpr unsigned kSentByAProgram = 0x80;
      if (event && (event->response_type & ~kSentByAProgram) == XCB_CLIENT_MESSAGE) {
        request = *reinterpret_cast<const xcb_client_message_event_t*>(event.get());
      }
      return request.has_value();
    });
    return request;
  }

 private:
  std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
};

TEST(WindowRequests, WithoutAWindowManagerDoNothing) {
  PrivateDisplay display(WindowManager::kNone);
  const EnvironmentVariable name("DISPLAY", display.Name());
  const TemporaryFolder folder;
  const TestProcess owner({TEST_WINDOW, folder / "window", std::to_string(::getpid())});
  EXPECT_NE(WindowIn(folder / "window"), 0U);
  SystemPlatform().BringToFront(::getpid());
  EXPECT_EQ(display.Top(), 0U);
}

// The test itself is the window manager here, and sees what it is asked for.
TEST(WindowRequests, AreTheUsersSoThatNoManagerRefusesThem) {
  PrivateDisplay display(WindowManager::kNone);
  const EnvironmentVariable name("DISPLAY", display.Name());
  const TemporaryFolder folder;
  const TestProcess owner({TEST_WINDOW, folder / "window", std::to_string(::getpid())});
  const std::uint32_t window = WindowIn(folder / "window");
  const RequestsToTheManager requests(display.Name(), window);
  SystemPlatform().BringToFront(::getpid());
  const auto request = requests.Next();
  ASSERT_TRUE(request);
  EXPECT_EQ(request->window, window);
  constexpr std::uint32_t kPager = 2;
  EXPECT_EQ(request->data.data32[0], kPager);
}

}  // namespace
}  // namespace tarvo::test
