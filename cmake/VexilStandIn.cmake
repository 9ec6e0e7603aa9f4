# The file name and the folder below the programs' own; an import library, which nobody links, lies out of their way.
function(vexil_name_stand_in target file folder)
  if(NOT WIN32)
    target_link_options(${target} PRIVATE -Wl,-soname,${file})
  endif()
  set_target_properties(${target} PROPERTIES
    PREFIX "" SUFFIX "" OUTPUT_NAME ${file} NO_SONAME ON
    ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${folder}
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/${folder}
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/${folder})
endfunction()

# Gives a simulated library the file name, and on Linux the soname, of the one that it stands in for, in a folder of
# its own beside the programs: the host loads it from there, and from then on it is what that name means.
function(vexil_stands_in_for target)
  cmake_parse_arguments(NAME "" "LINUX;WINDOWS" "" ${ARGN})
  if(WIN32)
    vexil_name_stand_in(${target} ${NAME_WINDOWS} simulated)
  else()
    vexil_name_stand_in(${target} ${NAME_LINUX} simulated)
  endif()
  set_property(GLOBAL APPEND PROPERTY VEXIL_STAND_INS ${target})
endfunction()

# The same stand-in once more for each of its functions, without that one: a library cannot drop its own exports, so the
# function has another name there. The host loads it for a scenario in which the function is missing.
function(vexil_stands_in_without target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  get_target_property(libraries ${target} LINK_LIBRARIES)
  get_target_property(file ${target} OUTPUT_NAME)
  foreach(function ${ARGN})
    set(without ${target}_without_${function})
    add_library(${without} SHARED ${sources})
    target_compile_definitions(${without} PRIVATE ${function}=${function}_by_another_name)
    target_link_libraries(${without} PRIVATE ${libraries})
    vexil_name_stand_in(${without} ${file} simulated_without/${function})
    add_dependencies(${target} ${without})
  endforeach()
endfunction()
