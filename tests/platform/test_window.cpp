// A program with a window, for tests: shows it, writes its X11 identifier to a file, and waits for
// the end of the display.
//
// Usage: test_window FILE [PROCESS [HOST]]
//   PROCESS  the process that the window says it belongs to; by default the program's own, "-" for
//            none
//   HOST     the host that it says it is on; by default it says none
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

void SetProcess(xcb_connection_t* connection, xcb_window_t window, std::uint32_t process) {
  constexpr const char* kName = "_NET_WM_PID";
  xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, std::strlen(kName), kName), nullptr);
  if (!atom) return;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom->atom, XCB_ATOM_CARDINAL, 32,
                      1, &process);
  std::free(atom);
}

void SetText(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
             const std::string& text) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

}  // namespace

int main(int count, char** words) {
  if (count < 2) return EXIT_FAILURE;
  const std::string file = words[1];
  const std::string process = count > 2 ? words[2] : std::to_string(::getpid());

  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection)) return EXIT_FAILURE;
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
  SetText(connection, window, XCB_ATOM_WM_NAME, file);
  if (process != "-") {
    SetProcess(connection, window, static_cast<std::uint32_t>(std::stoul(process)));
  }
  if (count > 3) SetText(connection, window, XCB_ATOM_WM_CLIENT_MACHINE, words[3]);
  xcb_map_window(connection, window);
  xcb_flush(connection);

  std::ofstream(file + ".part") << window;
  std::rename((file + ".part").c_str(), file.c_str());
  while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) std::free(event);
  xcb_disconnect(connection);
}
