# vexil_add_tests(NAME SOURCES... [LIBRARIES...] [LABELS...] [DATA FOLDER] [SERIAL] [NEEDS TARGET...])
#
# A test program that ctest runs test by test, on both homes: a Windows program runs under Wine.
#   LIBRARIES  what it links beside GoogleTest
#   LABELS     for ctest -L, beside the name of the program, which is always one
#   DATA       a folder of this directory that the tests read; its path is the macro VEXIL_TEST_DATA
#   SERIAL     the tests measure time or share one thing of the machine: none runs beside another test
#   NEEDS      programs and libraries that the tests load or start
#
# The programs of these lists have the label "sanitized-address" or "sanitized-thread", and are built by the target
# vexil_sanitized_address_tests or vexil_sanitized_thread_tests: they are what scripts/test --sanitize runs. Not here are
# programs that start a graphics driver, whose leaks and races are its own (but for the one that loads and unloads the
# module a thousand times, which leaves the drivers loaded), and, for the thread sanitizer, those whose threads meet in
# libraries that it does not see into (Qt).
set(VEXIL_SANITIZED_THREAD_TESTS
  system_tests
  vexil_adl_linux_tests
  vexil_adl_tests
  vexil_core_tests
  vexil_cpu_tests
  vexil_cuda_tests
  vexil_d3dkmt_statistics_tests
  vexil_driver_service_tests
  vexil_intel_statistics_tests
  vexil_nvapi_tests
  vexil_parameter_tests
  vexil_random_tests
  vexil_recordings_tests
  vexil_sal_tests
  vexil_scenario_tests
  vexil_simulated_cuda_tests
  vexil_stress_run_tests
  vexil_tool_tests
  vexil_utils_tests)
set(VEXIL_SANITIZED_ADDRESS_TESTS
  ${VEXIL_SANITIZED_THREAD_TESTS}
  vexil_adapter_luids_tests
  vexil_entry_tests
  vexil_kernel_graphics_tests
  vexil_module_lifetime_tests
  vexil_nvapi_loading_tests
  vexil_simulated_sensors_tests
  vexil_style_sheet_tests
  vexil_video_card_tests)
foreach(sanitizer address thread)
  add_custom_target(vexil_sanitized_${sanitizer}_tests)
endforeach()

function(vexil_add_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 tests "SERIAL" "DATA" "SOURCES;LIBRARIES;LABELS;NEEDS")
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

  foreach(sanitizer address thread)
    string(TOUPPER ${sanitizer} upper)
    if(name IN_LIST VEXIL_SANITIZED_${upper}_TESTS)
      list(APPEND tests_LABELS sanitized-${sanitizer})
      add_dependencies(vexil_sanitized_${sanitizer}_tests ${name})
    endif()
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
