// Times a program from its start to the first picture of its window, from outside.
//
//   first_window COLOUR PROGRAM [ARGUMENT...]
//
// The program's window is painted when the screen shows COLOUR (#rrggbb, that of the icons in its
// list) on at least as many pixels as one icon has. The X server tells of every change on the
// screen, so nothing is polled; after each change the whole screen is read. Prints the milliseconds
// that passed, the processor time that the program took and the KiB of memory that it had in use at
// most, then ends the program.

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kIconPixels = 32 * 32;
constexpr auto kDeadline = std::chrono::seconds(60);

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Type>
using Received = std::unique_ptr<Type, Free>;

// The screen of the display, and what changes on it.
class Screen {
 public:
  explicit Screen(std::uint32_t colour)
      : connection_(::xcb_connect(nullptr, nullptr)), colour_(colour) {
    if (::xcb_connection_has_error(connection_.get())) throw std::runtime_error("no display");
    screen_ = ::xcb_setup_roots_iterator(::xcb_get_setup(connection_.get())).data;
    damage_ = ::xcb_generate_id(connection_.get());
    const Received<xcb_damage_query_version_reply_t> version(::xcb_damage_query_version_reply(
        connection_.get(), ::xcb_damage_query_version(connection_.get(), 1, 1), nullptr));
    if (!version) throw std::runtime_error("the X server has no damage extension");
    ::xcb_damage_create(connection_.get(), damage_, screen_->root,
                        XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    ::xcb_flush(connection_.get());
  }

  bool ShowsColour() {
    const Received<xcb_get_image_reply_t> image(::xcb_get_image_reply(
        connection_.get(),
        ::xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, 0, 0,
                        screen_->width_in_pixels, screen_->height_in_pixels, ~0U),
        nullptr));
    if (!image) throw std::runtime_error("the screen cannot be read");
    if (image->depth != 24) throw std::runtime_error("the screen must have 24 bits per pixel");
    const auto* pixel = reinterpret_cast<const std::uint32_t*>(::xcb_get_image_data(image.get()));
    const int count = ::xcb_get_image_data_length(image.get()) / 4;
    int found = 0;
    for (int i = 0; i < count; ++i) found += (pixel[i] & 0xffffff) == colour_;
    return found >= kIconPixels;
  }

  // Waits for the next change on the screen, but not for long.
  void AwaitChange() {
    if (!TakeEvents()) {
      pollfd readable{::xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&readable, 1, kLongestWait);
      TakeEvents();
    }
    // From now on the server reports the next change, so none goes unseen before the next reading.
    ::xcb_damage_subtract(connection_.get(), damage_, XCB_NONE, XCB_NONE);
    ::xcb_flush(connection_.get());
  }

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { ::xcb_disconnect(connection); }
  };

  static constexpr int kLongestWait = 50;  // milliseconds

  bool TakeEvents() {
    bool any = false;
    while (const Received<xcb_generic_event_t> event{::xcb_poll_for_event(connection_.get())}) {
      any = true;
    }
    return any;
  }

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  std::uint32_t colour_;
  xcb_screen_t* screen_ = nullptr;
  xcb_damage_damage_t damage_ = 0;
};

// A running child process, ended at the latest with the object.
class Program {
 public:
  explicit Program(char** command) {
    if (::posix_spawnp(&process_, command[0], nullptr, nullptr, command, environ) != 0) {
      throw std::runtime_error(std::string("cannot start ") + command[0]);
    }
  }
  ~Program() {
    if (process_ != 0) End();
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  bool HasEnded() {
    if (::waitpid(process_, nullptr, WNOHANG) == 0) return false;
    process_ = 0;
    return true;
  }

  // The most memory that was in use at one moment, in KiB. That of the process's own program: what
  // wait4 tells begins with that of the process which started it.
  long PeakMemory() const {
    std::ifstream status("/proc/" + std::to_string(process_) + "/status");
    for (std::string name; status >> name;) {
      long value = 0;
      if (name == "VmHWM:" && status >> value) return value;
    }
    throw std::runtime_error("the system does not tell the program's memory");
  }

  // Ends the process; the milliseconds of processor time that it has taken.
  double End() {
    rusage used{};
    ::kill(process_, SIGKILL);
    ::wait4(process_, nullptr, 0, &used);
    process_ = 0;
    return Milliseconds(used.ru_utime) + Milliseconds(used.ru_stime);
  }

 private:
  static double Milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  }

  pid_t process_ = 0;
};

void TimeFirstWindow(std::uint32_t colour, char** command) {
  Screen screen(colour);
  const auto deadline = Clock::now() + kDeadline;
  const auto awaitChange = [&](const char* failure) {
    if (Clock::now() > deadline) throw std::runtime_error(failure);
    screen.AwaitChange();
  };
  // The last program's window may still be there.
  while (screen.ShowsColour()) awaitChange("the screen shows the colour before the start");

  const auto start = Clock::now();
  Program program(command);
  while (!screen.ShowsColour()) {
    if (program.HasEnded()) throw std::runtime_error("the program has ended without a window");
    awaitChange("no window has been painted");
  }
  const std::chrono::duration<double, std::milli> passed = Clock::now() - start;
  const long memory = program.PeakMemory();
  std::printf("%.3f %.3f %ld\n", passed.count(), program.End(), memory);
}

}  // namespace

int main(int count, char** values) {
  unsigned colour = 0;
  if (count < 3 || std::sscanf(values[1], "#%6x", &colour) != 1) {
    std::fputs("usage: first_window COLOUR PROGRAM [ARGUMENT...]\n", stderr);
    return 2;
  }
  try {
    TimeFirstWindow(colour, values + 2);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "first_window: %s\n", failure.what());
    return 1;
  }
}
