# Tests of a build for Windows: GoogleTest is built from its sources, and a build on Linux runs the test
# programs through Wine, in a Windows folder of its own that a test makes and another one closes.
set(TARVO_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "The sources of GoogleTest")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(${TARVO_GOOGLETEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library IN ITEMS gtest gmock gmock_main)
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} ALIAS ${library})
  endif()
endforeach()

# tarvo_windows_test(NAME COMMAND...)
# A test named windows.NAME, since one run of the test runner may cover several builds.
if(CMAKE_CROSSCOMPILING)
  set(wine_folder ${PROJECT_BINARY_DIR}/wine)
  # Quiet, without what only .NET and HTML need, without a display, and in one locale.
  set(wine_environment WINEPREFIX=${wine_folder} WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
                       DISPLAY= LC_ALL=C.UTF-8)
  find_program(WINEBOOT wineboot REQUIRED)
  find_program(WINESERVER wineserver PATHS /usr/lib/wine REQUIRED)
  add_test(NAME windows.start_wine COMMAND ${WINEBOOT} --update)
  # No process of Wine outlives the tests.
  add_test(NAME windows.end_wine COMMAND ${WINESERVER} --wait)
  set_tests_properties(windows.start_wine PROPERTIES
    FIXTURES_SETUP wine TIMEOUT 120 ENVIRONMENT "${wine_environment}")
  set_tests_properties(windows.end_wine PROPERTIES
    FIXTURES_CLEANUP wine TIMEOUT 60 ENVIRONMENT "${wine_environment}")
endif()
function(tarvo_windows_test name)
  add_test(NAME windows.${name} COMMAND ${ARGN})
  # Those that wait much begin first, so that the processors are busy up to the end.
  set_tests_properties(windows.${name} PROPERTIES TIMEOUT 300 COST 100)
  if(CMAKE_CROSSCOMPILING)
    set_tests_properties(windows.${name} PROPERTIES
      FIXTURES_REQUIRED wine ENVIRONMENT "${wine_environment}")
  endif()
endfunction()
