# What every target of the tree is built with.
add_library(vexil_options INTERFACE)
target_compile_features(vexil_options INTERFACE cxx_std_20)
target_include_directories(vexil_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vexil_options INTERFACE -Wall -Wextra -Wconversion -Wshadow)

option(VEXIL_WARNINGS_AS_ERRORS "Treat a warning as an error" ON)
if(VEXIL_WARNINGS_AS_ERRORS)
  target_compile_options(vexil_options INTERFACE -Werror)
endif()

set(VEXIL_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
if(VEXIL_SANITIZE)
  # The extra code of the sanitizers makes this warning see ghosts in the standard library.
  target_compile_options(vexil_options INTERFACE
    -fsanitize=${VEXIL_SANITIZE} -fno-omit-frame-pointer -Wno-maybe-uninitialized)
  target_link_options(vexil_options INTERFACE -fsanitize=${VEXIL_SANITIZE})
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(NOT WIN32)
  # Unique symbols would keep a library in the process for good, whatever its host asks for.
  target_compile_options(vexil_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  # The programs find the libraries beside them, wherever the folder is moved to.
  set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
  set(CMAKE_BUILD_RPATH "$ORIGIN")
  target_compile_definitions(vexil_options INTERFACE
    "VEXIL_SHARED_API=__attribute__((visibility(\"default\")))")
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
endif()

# What scripts/setup built once stands outside the tree, in folders named by version.
if(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(VEXIL_CACHE_DIR $ENV{XDG_CACHE_HOME}/vexil)
else()
  set(VEXIL_CACHE_DIR $ENV{HOME}/.cache/vexil)
endif()
