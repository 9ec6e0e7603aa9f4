# Gives a simulated library the file name, and on Linux the soname, of the one that it stands in for, in a folder of
# its own beside the programs: the host loads it from there, and from then on it is what that name means.
function(vexil_stands_in_for target)
  cmake_parse_arguments(NAME "" "LINUX;WINDOWS" "" ${ARGN})
  if(WIN32)
    set(file ${NAME_WINDOWS})
  else()
    set(file ${NAME_LINUX})
    target_link_options(${target} PRIVATE -Wl,-soname,${file})
  endif()
  set_target_properties(${target} PROPERTIES
    PREFIX "" SUFFIX "" OUTPUT_NAME ${file} NO_SONAME ON
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/simulated
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/simulated)
  set_property(GLOBAL APPEND PROPERTY VEXIL_STAND_INS ${target})
endfunction()
