# vexil_add_tests(NAME SOURCES... [LIBRARIES...] [LABELS...] [DATA FOLDER] [SERIAL] [DRIVER] [FOREIGN_THREADS]
#                 [NEEDS TARGET...])
#
# A test program that ctest runs test by test, on both homes: a Windows program runs under Wine.
#   LIBRARIES  what it links beside GoogleTest
#   LABELS     for ctest -L, beside the name of the program, which is always one
#   DATA       a folder of this directory that the tests read; its path is the macro VEXIL_TEST_DATA
#   SERIAL     the tests measure time or share one thing of the machine: none runs beside another test
#   DRIVER     the tests start a graphics driver, which has leaks and races of its own: no sanitizer
#   FOREIGN_THREADS  threads meet in libraries that the thread sanitizer does not see into: no thread sanitizer
#   NEEDS      programs and libraries that the tests load or start
#
# What a sanitizer runs has the label "sanitized-address" or "sanitized-thread", and is built by the target of the name
# vexil_sanitized_address_tests or vexil_sanitized_thread_tests.
foreach(sanitizer address thread)
  add_custom_target(vexil_sanitized_${sanitizer}_tests)
endforeach()

function(vexil_add_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 tests "SERIAL;DRIVER;FOREIGN_THREADS" "DATA" "SOURCES;LIBRARIES;LABELS;NEEDS")
  if(tests_UNPARSED_ARGUMENTS OR NOT tests_SOURCES)
    message(FATAL_ERROR "vexil_add_tests(${name}): no SOURCES, or unknown words: ${tests_UNPARSED_ARGUMENTS}")
  endif()

  add_executable(${name} ${tests_SOURCES})
  target_link_libraries(${name} PRIVATE ${tests_LIBRARIES} vexil_options GTest::gtest_main GTest::gmock)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(VEXIL_SANITIZE)
    # The optimiser takes most of the time of a sanitized build, and speeds up what is tested, not the tests.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  if(tests_DATA)
    target_compile_definitions(${name} PRIVATE "VEXIL_TEST_DATA=\"${CMAKE_CURRENT_SOURCE_DIR}/${tests_DATA}\"")
  endif()
  if(tests_NEEDS)
    add_dependencies(${name} ${tests_NEEDS})
  endif()

  set(sanitizers address thread)
  if(tests_DRIVER)
    set(sanitizers)
  elseif(tests_FOREIGN_THREADS)
    set(sanitizers address)
  endif()
  foreach(sanitizer ${sanitizers})
    list(APPEND tests_LABELS sanitized-${sanitizer})
    add_dependencies(vexil_sanitized_${sanitizer}_tests ${name})
  endforeach()

  set(properties TIMEOUT 300)
  if(tests_SERIAL)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})

  # Labels are a list, which the discovery would take apart; ctest reads this file after it.
  set(labels_file ${CMAKE_CURRENT_BINARY_DIR}/${name}_labels.cmake)
  file(WRITE ${labels_file} "if(${name}_TESTS)\n"
    "  set_tests_properties(\${${name}_TESTS} PROPERTIES LABELS \"${name};${tests_LABELS}\")\n"
    "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${labels_file})
endfunction()
