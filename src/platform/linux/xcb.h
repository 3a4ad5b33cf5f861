#pragma once

#include <xcb/xcb.h>

#include "platform/linux/late_library.h"

namespace tarvo {

// The functions of libxcb that speak to an X11 display.
struct Xcb {
  LateLibrary library{"libxcb.so.1"};

  LateFunction<decltype(::xcb_connect)> Connect{library, "xcb_connect"};
  LateFunction<decltype(::xcb_connection_has_error)> ConnectionHasError{library,
                                                                        "xcb_connection_has_error"};
  LateFunction<decltype(::xcb_disconnect)> Disconnect{library, "xcb_disconnect"};
  LateFunction<decltype(::xcb_get_input_focus)> GetInputFocus{library, "xcb_get_input_focus"};
  LateFunction<decltype(::xcb_get_input_focus_reply)> GetInputFocusReply{
      library, "xcb_get_input_focus_reply"};
  LateFunction<decltype(::xcb_get_property)> GetProperty{library, "xcb_get_property"};
  LateFunction<decltype(::xcb_get_property_reply)> GetPropertyReply{library,
                                                                    "xcb_get_property_reply"};
  LateFunction<decltype(::xcb_get_property_value)> GetPropertyValue{library,
                                                                    "xcb_get_property_value"};
  LateFunction<decltype(::xcb_get_setup)> GetSetup{library, "xcb_get_setup"};
  LateFunction<decltype(::xcb_intern_atom)> InternAtom{library, "xcb_intern_atom"};
  LateFunction<decltype(::xcb_intern_atom_reply)> InternAtomReply{library, "xcb_intern_atom_reply"};
  LateFunction<decltype(::xcb_screen_next)> ScreenNext{library, "xcb_screen_next"};
  LateFunction<decltype(::xcb_send_event)> SendEvent{library, "xcb_send_event"};
  LateFunction<decltype(::xcb_setup_roots_iterator)> SetupRootsIterator{library,
                                                                        "xcb_setup_roots_iterator"};
};

// Loaded at the first call, and there until the end of the run.
const Xcb& TheXcb();

}  // namespace tarvo
