# Libraries from outside, each found in one way for both homes.
if(WIN32)
  # The header-only ones come from the build machine's own packages, linked into a folder of their own: the system's
  # include folder as a whole must not be seen by a cross-compiler.
  set(borrowed ${CMAKE_BINARY_DIR}/borrowed_headers)
  file(MAKE_DIRECTORY ${borrowed})
  foreach(folder nlohmann fmt CLI)
    if(EXISTS /usr/include/${folder})
      file(CREATE_LINK /usr/include/${folder} ${borrowed}/${folder} SYMBOLIC)
    endif()
  endforeach()
endif()

add_library(vexil_json INTERFACE)
add_library(vexil_fmt INTERFACE)
target_compile_definitions(vexil_fmt INTERFACE FMT_HEADER_ONLY)
add_library(vexil_cli11 INTERFACE)
if(WIN32)
  foreach(library vexil_json vexil_fmt vexil_cli11)
    target_include_directories(${library} SYSTEM INTERFACE ${borrowed})
  endforeach()
endif()

# Direct3D's headers: MinGW has them; on Linux they come with the native Direct3D library.
add_library(vexil_direct3d_headers INTERFACE)
if(NOT WIN32)
  file(GLOB dxvk_entries ${VEXIL_CACHE_DIR}/dxvk-native-2.6*)
  list(FILTER dxvk_entries EXCLUDE REGEX "\\.(tmp|partial)")
  if(NOT dxvk_entries)
    message(FATAL_ERROR "The native Direct3D library is not in ${VEXIL_CACHE_DIR}: run scripts/setup first")
  endif()
  list(GET dxvk_entries -1 VEXIL_DXVK_DIR)
  target_include_directories(vexil_direct3d_headers SYSTEM INTERFACE
    ${VEXIL_DXVK_DIR}/include/native/directx ${VEXIL_DXVK_DIR}/include/native/windows)
  # The programs find it beside them, like every other library of the tree.
  file(GLOB dxvk_libraries ${VEXIL_DXVK_DIR}/lib/libdxvk_*.so.0)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  foreach(library ${dxvk_libraries})
    get_filename_component(name ${library} NAME)
    file(CREATE_LINK ${library} ${CMAKE_BINARY_DIR}/bin/${name} SYMBOLIC)
  endforeach()
endif()

# The test runner's libraries: packaged for Linux, built from the packaged source for Windows.
if(WIN32)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  foreach(library gtest gtest_main gmock gmock_main)
    if(NOT TARGET GTest::${library})
      add_library(GTest::${library} ALIAS ${library})
    endif()
  endforeach()
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# What the programs find beside them on Windows: the compiler's run-time libraries, which module and host share
# because C++ objects pass between them, and the Direct3D that Wine runs them on, where scripts/setup put it.
if(WIN32)
  set(beside_programs)
  foreach(library libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
      OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND beside_programs ${file})
  endforeach()
  file(GLOB direct3d_libraries ${VEXIL_CACHE_DIR}/dxvk-windows-2.6*/*.dll)
  file(COPY ${beside_programs} ${direct3d_libraries} DESTINATION ${CMAKE_BINARY_DIR}/bin)
endif()
