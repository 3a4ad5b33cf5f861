# How every target of the project is compiled, in one place.

add_library(tarvo_options INTERFACE)
target_compile_features(tarvo_options INTERFACE cxx_std_20)
target_include_directories(tarvo_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(MSVC)
  target_compile_options(tarvo_options INTERFACE /W4 /permissive- /utf-8 /EHsc)
else()
  target_compile_options(tarvo_options INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow
                                                 -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in every inlined std::string assignment (its bug 105651).
  target_compile_options(tarvo_options INTERFACE -Wno-restrict)
  if(TARVO_PRECOMPILE)
    # It forgets which precompiled headers are the system's, and warns of what is inlined from them.
    target_compile_options(tarvo_options INTERFACE -Wno-array-bounds -Wno-stringop-overflow
                                                   -Wno-stringop-overread)
  endif()
endif()
if(WIN32)
  # Names of files keep every character, the system's functions are those of Windows 10, and programs
  # need no library beside them.
  target_compile_definitions(tarvo_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
                                                     WINVER=0x0A00 _WIN32_WINNT=0x0A00)
  if(MSVC)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
  else()
    target_link_options(tarvo_options INTERFACE -static)
  endif()
endif()
if(TARVO_SANITIZE)
  target_compile_options(tarvo_options INTERFACE
    -fsanitize=address $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TARVO_IS_TEST>>>:-fsanitize=undefined>
    -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarvo_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARVO_FUZZ)
  # The library's own assertions find a string or vector that is read beyond its end within its memory.
  target_compile_definitions(tarvo_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_compile_options(tarvo_options INTERFACE
    -fsanitize=address,undefined,fuzzer-no-link -fno-sanitize=vptr -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(tarvo_options INTERFACE -fsanitize=address,undefined)
endif()

# tarvo_library(NAME SOURCES file... LINKS library...)
# One static library of the house. LINKS may name only libraries of lower floors. Those of the program use
# its precompiled headers where there are some.
function(tarvo_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC tarvo_options ${arg_LINKS})
  set(program ${PROJECT_SOURCE_DIR}/src)
  cmake_path(IS_PREFIX program ${CMAKE_CURRENT_SOURCE_DIR} isOfTheProgram)
  if(TARGET tarvo_headers AND isOfTheProgram)
    target_precompile_headers(${name} REUSE_FROM tarvo_headers)
  endif()
endfunction()

# tarvo_compile_as_test(TARGET)
# The tests' own sources take most of the time of a build, above all with sanitizers, and gain little:
# they are not optimised, unlike what they test, and undefined behaviour is not looked for in them.
function(tarvo_compile_as_test target)
  target_compile_options(${target} PRIVATE $<IF:$<CXX_COMPILER_ID:MSVC>,/Od,-O0>)
  set_target_properties(${target} PROPERTIES TARVO_IS_TEST ON)
endfunction()

# tarvo_test(NAME SOURCES file... LINKS library... [HEADERS header...] [NOT_ON_WINDOWS case...])
# A GoogleTest program. HEADERS are precompiled for this program, which a program needs that is compiled
# as Qt wants it; the others share those of tarvo_test_headers.
#
# Each of its cases is a test of its own, named NAME.Suite.Case. In a sanitizer build and for Windows the
# program is one test, asan.NAME and windows.NAME, since each start of a program costs much there; the
# names differ because one run of the test runner may cover several builds. NOT_ON_WINDOWS names the
# cases that must come out differently there; say why beside them.
if(TARVO_SANITIZE)
  set(TARVO_TEST_PREFIX asan.)
endif()
function(tarvo_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;HEADERS;NOT_ON_WINDOWS")
  add_executable(${name}_test ${arg_SOURCES})
  tarvo_compile_as_test(${name}_test)
  if(arg_HEADERS)
    target_precompile_headers(${name}_test PRIVATE ${arg_HEADERS})
  else()
    target_precompile_headers(${name}_test REUSE_FROM tarvo_test_headers)
  endif()
  target_link_libraries(${name}_test PRIVATE tarvo_options tarvo_test_support ${arg_LINKS}
                                             GTest::gmock_main)
  set_target_properties(${name}_test PROPERTIES
                        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  if(WIN32)
    list(JOIN arg_NOT_ON_WINDOWS ":" left_out)
    tarvo_windows_test(${name} ${name}_test --gtest_filter=-${left_out})
  elseif(TARVO_SANITIZE)
    add_test(NAME asan.${name} COMMAND ${name}_test)
    # The longest tests begin first.
    set_tests_properties(asan.${name} PROPERTIES TIMEOUT 600 COST 50)
  else()
    gtest_discover_tests(${name}_test TEST_PREFIX ${name}.
                         DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120)
  endif()
endfunction()
