# Finds libxcb, the X11 protocol's C binding, and makes the target XCB::XCB.
find_path(XCB_INCLUDE_DIR xcb/xcb.h)
find_library(XCB_LIBRARY xcb)
mark_as_advanced(XCB_INCLUDE_DIR XCB_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(XCB REQUIRED_VARS XCB_LIBRARY XCB_INCLUDE_DIR)

if(XCB_FOUND AND NOT TARGET XCB::XCB)
  add_library(XCB::XCB UNKNOWN IMPORTED)
  set_target_properties(XCB::XCB PROPERTIES
    IMPORTED_LOCATION "${XCB_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${XCB_INCLUDE_DIR}")
endif()
