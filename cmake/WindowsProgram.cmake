# What a program for Windows tells the system of itself.
enable_language(RC)

# tarvo_windows_program(TARGET DESCRIPTION)
# Gives a program the icon, the version of the project and a manifest: the present common controls,
# sizes that follow the resolution of each screen, paths of any length.
set(TARVO_WINDOWS_TEMPLATES ${CMAKE_CURRENT_LIST_DIR}/windows)
function(tarvo_windows_program target description)
  set(TARVO_PROGRAM ${target})
  set(TARVO_DESCRIPTION ${description})
  set(TARVO_MANIFEST ${CMAKE_CURRENT_BINARY_DIR}/${target}.manifest)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${TARVO_WINDOWS_TEMPLATES}/program.manifest.in ${TARVO_MANIFEST} @ONLY)
  configure_file(${TARVO_WINDOWS_TEMPLATES}/program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES
    OBJECT_DEPENDS "${PROJECT_SOURCE_DIR}/icons/tarvo.ico;${TARVO_MANIFEST}")
  target_sources(${target} PRIVATE ${resources})
  if(MINGW)
    # What users get holds no names for a debugger.
    target_link_options(${target} PRIVATE $<$<CONFIG:Release>:-s>)
  endif()
endfunction()
