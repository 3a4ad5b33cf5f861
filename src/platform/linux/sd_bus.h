#pragma once

#include <systemd/sd-bus.h>

#include "platform/linux/late_library.h"

namespace tarvo {

// The functions of libsystemd that speak to a message bus, as sd-bus(3) tells of them.
struct SdBus {
  LateLibrary library{"libsystemd.so.0"};

  LateFunction<decltype(::sd_bus_call_async)> CallAsync{library, "sd_bus_call_async"};
  LateFunction<decltype(::sd_bus_call_method)> CallMethod{library, "sd_bus_call_method"};
  LateFunction<decltype(::sd_bus_close)> Close{library, "sd_bus_close"};
  LateFunction<decltype(::sd_bus_get_n_queued_write)> GetNQueuedWrite{library,
                                                                      "sd_bus_get_n_queued_write"};
  LateFunction<decltype(::sd_bus_is_ready)> IsReady{library, "sd_bus_is_ready"};
  LateFunction<decltype(::sd_bus_message_append)> MessageAppend{library, "sd_bus_message_append"};
  LateFunction<decltype(::sd_bus_message_enter_container)> MessageEnterContainer{
      library, "sd_bus_message_enter_container"};
  LateFunction<decltype(::sd_bus_message_get_error)> MessageGetError{library,
                                                                     "sd_bus_message_get_error"};
  LateFunction<decltype(::sd_bus_message_new_method_call)> MessageNewMethodCall{
      library, "sd_bus_message_new_method_call"};
  LateFunction<decltype(::sd_bus_message_read)> MessageRead{library, "sd_bus_message_read"};
  LateFunction<decltype(::sd_bus_message_unref)> MessageUnref{library, "sd_bus_message_unref"};
  LateFunction<decltype(::sd_bus_open_user)> OpenUser{library, "sd_bus_open_user"};
  LateFunction<decltype(::sd_bus_process)> Process{library, "sd_bus_process"};
  LateFunction<decltype(::sd_bus_set_method_call_timeout)> SetMethodCallTimeout{
      library, "sd_bus_set_method_call_timeout"};
  LateFunction<decltype(::sd_bus_unref)> Unref{library, "sd_bus_unref"};
  LateFunction<decltype(::sd_bus_wait)> Wait{library, "sd_bus_wait"};
};

// Loaded at the first call, and there until the end of the run.
const SdBus& TheSdBus();

}  // namespace tarvo
