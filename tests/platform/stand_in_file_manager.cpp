// A file manager for tests: owns org.freedesktop.FileManager1 on the session bus and appends a line
// "METHOD URI" to a file for each call. Ends when the bus does.
//
// Usage: stand_in_file_manager RECORD MODE
//   answer   answers every call
//   silent   never answers
#include <systemd/sd-bus.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

struct Manager {
  std::string record;
  bool answers = true;
};

int OnCall(sd_bus_message* call, void* data, sd_bus_error*) {
  const Manager& manager = *static_cast<const Manager*>(data);
  const std::string line = sd_bus_message_get_member(call);
  if (sd_bus_message_enter_container(call, 'a', "s") < 0) return -EINVAL;
  std::string uris;
  const char* uri = nullptr;
  while (sd_bus_message_read(call, "s", &uri) > 0) uris += std::string(" ") + uri;
  sd_bus_message_exit_container(call);
  const char* startupId = nullptr;
  if (sd_bus_message_read(call, "s", &startupId) < 0) return -EINVAL;
  std::ofstream(manager.record, std::ios::app) << line + uris + "\n" << std::flush;
  return manager.answers ? sd_bus_reply_method_return(call, "") : 1;
}

const sd_bus_vtable kMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("ShowFolders", "ass", "", OnCall, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ShowItems", "ass", "", OnCall, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return EXIT_FAILURE;
  Manager manager{arguments[1], std::string(arguments[2]) == "answer"};
  constexpr const char* kName = "org.freedesktop.FileManager1";
  sd_bus* bus = nullptr;
  const bool isReady = sd_bus_open_user(&bus) >= 0 &&
                       sd_bus_add_object_vtable(bus, nullptr, "/org/freedesktop/FileManager1",
                                                kName, kMethods, &manager) >= 0 &&
                       sd_bus_request_name(bus, kName, 0) >= 0;
  if (!isReady) return EXIT_FAILURE;
  for (;;) {
    const int worked = sd_bus_process(bus, nullptr);
    if (worked < 0 || (worked == 0 && sd_bus_wait(bus, UINT64_MAX) < 0)) return EXIT_SUCCESS;
  }
}
