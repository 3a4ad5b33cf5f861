#include "platform/linux/file_manager.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/linux/sd_bus.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

constexpr const char* kName = "org.freedesktop.FileManager1";
constexpr const char* kPath = "/org/freedesktop/FileManager1";
constexpr const char* kBusName = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

struct CloseBus {
  void operator()(sd_bus* bus) const {
    TheSdBus().Close(bus);
    TheSdBus().Unref(bus);
  }
};
struct ReleaseMessage {
  void operator()(sd_bus_message* message) const { TheSdBus().MessageUnref(message); }
};
using Bus = std::unique_ptr<sd_bus, CloseBus>;
using Message = std::unique_ptr<sd_bus_message, ReleaseMessage>;

// What is left of the time that a healthy bus never needs.
class Patience {
 public:
  std::uint64_t Left() const {
    const auto left = end_ - std::chrono::steady_clock::now();
    const auto count = std::chrono::duration_cast<std::chrono::microseconds>(left).count();
    return count > 0 ? static_cast<std::uint64_t>(count) : 0;
  }

 private:
  std::chrono::steady_clock::time_point end_ =
      std::chrono::steady_clock::now() + std::chrono::seconds(5);
};

// Lets the bus work until `isDone`; false when it fails or takes too long.
template <typename Condition>
bool RunUntil(sd_bus* bus, const Patience& patience, Condition isDone) {
  while (!isDone()) {
    const int worked = TheSdBus().Process(bus, nullptr);
    if (worked < 0) return false;
    if (worked > 0) continue;
    if (isDone()) return true;
    const std::uint64_t left = patience.Left();
    if (left == 0) return false;
    const int waited = TheSdBus().Wait(bus, left);
    if (waited < 0 && waited != -EINTR) return false;
  }
  return true;
}

// A connection to the session bus, kept for the whole run: the bus forgets a call to somebody who
// is still being started when the caller goes away.
class SessionBus {
 public:
  // Connects where that is needed: at first, after the bus went away, and when the environment
  // names another one.
  bool IsConnected(const Patience& patience) {
    const std::string address =
        EnvironmentValue("DBUS_SESSION_BUS_ADDRESS") + "\n" + EnvironmentValue("XDG_RUNTIME_DIR");
    if (bus_ && address == address_ && RunUntil(bus_.get(), patience, [&] { return IsIdle(); })) {
      return true;
    }
    address_ = address;
    startFailed_ = false;
    bus_.reset();
    sd_bus* opened = nullptr;
    if (TheSdBus().OpenUser(&opened) < 0) return false;
    bus_.reset(opened);
    if (RunUntil(opened, patience, [&] { return TheSdBus().IsReady(opened) > 0; })) return true;
    bus_.reset();
    return false;
  }

  FileManager Find(const Patience& patience) {
    if (!TheSdBus().library.IsWhole()) return FileManager::kNoLibrary;
    if (!IsConnected(patience)) return FileManager::kNoBus;
    const std::optional<bool> runs = HasOwner(patience);
    if (!runs) return FileManager::kNoBus;
    if (*runs) return FileManager::kRunning;
    return !startFailed_ && CanBeStarted(patience) ? FileManager::kStartable : FileManager::kNone;
  }

  // Sends a call for one URI. Its answer is looked at by the next call.
  bool Send(const char* method, const std::string& uri, const Patience& patience) {
    sd_bus_message* made = nullptr;
    if (TheSdBus().MessageNewMethodCall(bus_.get(), &made, kName, kPath, kName, method) < 0) {
      return false;
    }
    const Message message(made);
    constexpr const char* kNoStartupId = "";
    if (TheSdBus().MessageAppend(made, "ass", 1, uri.c_str(), kNoStartupId) < 0) return false;
    if (TheSdBus().CallAsync(bus_.get(), nullptr, made, &SessionBus::OnAnswer, this, UINT64_MAX) <
        0)
      return false;
    return RunUntil(bus_.get(), patience, [&] {
      std::uint64_t queued = 0;
      return TheSdBus().GetNQueuedWrite(bus_.get(), &queued) >= 0 && queued == 0;
    });
  }

 private:
  // An error from the bus instead of an answer: nobody has taken the call.
  static int OnAnswer(sd_bus_message* answer, void* self, sd_bus_error*) {
    const sd_bus_error* error = TheSdBus().MessageGetError(answer);
    if (error && std::string_view(error->name).starts_with("org.freedesktop.DBus.Error.")) {
      static_cast<SessionBus*>(self)->startFailed_ = true;
    }
    return 0;
  }

  // Whether everything that has come in is worked off.
  bool IsIdle() { return TheSdBus().Process(bus_.get(), nullptr) == 0; }

  Message Ask(const Patience& patience, const char* method, const char* name) {
    TheSdBus().SetMethodCallTimeout(bus_.get(), std::max<std::uint64_t>(patience.Left(), 1));
    sd_bus_message* answer = nullptr;
    const char* types = name ? "s" : "";
    const int result = TheSdBus().CallMethod(bus_.get(), kBusName, kBusPath, kBusName, method,
                                             nullptr, &answer, types, name);
    return Message(result < 0 ? nullptr : answer);
  }

  std::optional<bool> HasOwner(const Patience& patience) {
    const Message answer = Ask(patience, "NameHasOwner", kName);
    int hasOwner = 0;
    if (!answer || TheSdBus().MessageRead(answer.get(), "b", &hasOwner) < 0) return std::nullopt;
    return hasOwner != 0;
  }

  bool CanBeStarted(const Patience& patience) {
    const Message answer = Ask(patience, "ListActivatableNames", nullptr);
    if (!answer || TheSdBus().MessageEnterContainer(answer.get(), 'a', "s") < 0) return false;
    const char* name = nullptr;
    while (TheSdBus().MessageRead(answer.get(), "s", &name) > 0) {
      if (std::string_view(name) == kName) return true;
    }
    return false;
  }

  Bus bus_;
  std::string address_;
  bool startFailed_ = false;
};

SessionBus& TheSessionBus() {
  static SessionBus bus;
  return bus;
}

bool Call(const char* method, const std::string& uri) {
  const Patience patience;
  SessionBus& bus = TheSessionBus();
  const FileManager manager = bus.Find(patience);
  const bool answers = manager == FileManager::kRunning || manager == FileManager::kStartable;
  return answers && bus.Send(method, uri, patience);
}

}  // namespace

FileManager FindFileManager() { return TheSessionBus().Find(Patience()); }

bool OpenInFileManager(const std::string& folderUri) { return Call("ShowFolders", folderUri); }
bool ShowInFileManager(const std::string& fileUri) { return Call("ShowItems", fileUri); }

}  // namespace tarvo
