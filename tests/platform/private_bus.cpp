#include "private_bus.h"

#include <systemd/sd-bus.h>

#include <memory>
#include <stdexcept>

namespace tarvo::test {
namespace {

constexpr const char* kConfiguration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=@/bus</listen>
  <servicedir>@/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

std::string Configuration(const std::string& folder) {
  std::string text = kConfiguration;
  for (std::size_t at = 0; (at = text.find("@/", at)) != text.npos;) text.replace(at, 1, folder);
  return text;
}

using Connection = std::unique_ptr<sd_bus, decltype(&::sd_bus_close_unref)>;

Connection Connect(const std::string& address) {
  sd_bus* bus = nullptr;
  ::sd_bus_new(&bus);
  Connection connection(bus, &::sd_bus_close_unref);
  const bool isOpen = ::sd_bus_set_address(bus, address.c_str()) >= 0 &&
                      ::sd_bus_set_bus_client(bus, true) >= 0 && ::sd_bus_start(bus) >= 0;
  if (!isOpen) connection.reset();
  return connection;
}

}  // namespace

PrivateBus::PrivateBus() : address_("unix:path=" + folder_.Path() + "/bus") {
  folder_.MakeFolder("services");
  folder_.WriteFile("bus.conf", Configuration(folder_.Path()));
  daemon_ = TestProcess(
      {"dbus-daemon", "--config-file=" + (folder_ / "bus.conf"), "--nofork", "--nosyslog"});
  // Its socket is there before it listens.
  if (!ComesTrue([&] { return HasOwner("org.freedesktop.DBus"); })) {
    throw std::runtime_error("the session bus does not start");
  }
}

void PrivateBus::MakeStartable(const std::string& name, const std::string& command) const {
  folder_.WriteFile("services/" + name + ".service",
                    "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
  const Connection bus = Connect(address_);
  ::sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                       "org.freedesktop.DBus", "ReloadConfig", nullptr, nullptr, "");
}

bool PrivateBus::HasOwner(const std::string& name) const {
  const Connection bus = Connect(address_);
  sd_bus_message* answer = nullptr;
  if (!bus || ::sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                   "org.freedesktop.DBus", "NameHasOwner", nullptr, &answer, "s",
                                   name.c_str()) < 0) {
    return false;
  }
  int hasOwner = 0;
  ::sd_bus_message_read(answer, "b", &hasOwner);
  ::sd_bus_message_unref(answer);
  return hasOwner != 0;
}

}  // namespace tarvo::test
