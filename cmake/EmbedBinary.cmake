# vexil_embed_binary(TARGET HEADER path/of/header.h NAMESPACE a::b FILES name=path...)
#
# Compiles the bytes of files into a library. The generated header, included as <path/of/header.h>, declares for each
# file `extern const std::span<const std::byte> name`, which is ready before any constructor runs.
function(vexil_embed_binary target)
  cmake_parse_arguments(PARSE_ARGV 1 embed "" "HEADER;NAMESPACE" "FILES")
  if(embed_UNPARSED_ARGUMENTS OR NOT embed_HEADER OR NOT embed_NAMESPACE OR NOT embed_FILES)
    message(FATAL_ERROR "vexil_embed_binary(${target}): an argument is missing or unknown")
  endif()

  set(folder ${CMAKE_CURRENT_BINARY_DIR}/embedded)
  set(declarations "")
  foreach(entry ${embed_FILES})
    string(REGEX MATCH "^([A-Za-z_][A-Za-z0-9_]*)=(.+)$" matched ${entry})
    if(NOT matched)
      message(FATAL_ERROR "vexil_embed_binary(${target}): ${entry} is not name=path")
    endif()
    set(name ${CMAKE_MATCH_1})
    get_filename_component(file ${CMAKE_MATCH_2} ABSOLUTE)
    set(source ${folder}/${target}_${name}.cpp)
    add_custom_command(OUTPUT ${source}
      COMMAND ${CMAKE_COMMAND} -D FILE=${file} -D NAME=${name} -D NAMESPACE=${embed_NAMESPACE} -D OUTPUT=${source}
              -P ${PROJECT_SOURCE_DIR}/cmake/WriteBytes.cmake
      DEPENDS ${file} ${PROJECT_SOURCE_DIR}/cmake/WriteBytes.cmake
      COMMENT "Embedding ${name}"
      VERBATIM)
    target_sources(${target} PRIVATE ${source})
    string(APPEND declarations "extern const std::span<const std::byte> ${name};\n")
  endforeach()

  file(CONFIGURE OUTPUT ${folder}/${embed_HEADER} @ONLY CONTENT
"#pragma once

#include <cstddef>
#include <span>

namespace @embed_NAMESPACE@ {

@declarations@
} // namespace @embed_NAMESPACE@
")
  target_include_directories(${target} PUBLIC ${folder})
endfunction()
