# Finds libsystemd, of which the D-Bus client is used (sd-bus), and makes the target Systemd::Systemd.
find_path(SYSTEMD_INCLUDE_DIR systemd/sd-bus.h)
find_library(SYSTEMD_LIBRARY systemd)
mark_as_advanced(SYSTEMD_INCLUDE_DIR SYSTEMD_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Systemd REQUIRED_VARS SYSTEMD_LIBRARY SYSTEMD_INCLUDE_DIR)

if(SYSTEMD_FOUND AND NOT TARGET Systemd::Systemd)
  add_library(Systemd::Systemd UNKNOWN IMPORTED)
  set_target_properties(Systemd::Systemd PROPERTIES
    IMPORTED_LOCATION "${SYSTEMD_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${SYSTEMD_INCLUDE_DIR}")
endif()
