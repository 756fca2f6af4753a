# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# One call per thing, and the call registers it.

# hv_subsystem(<sources...>): adds the sources of the current folder to the library.
function(hv_subsystem)
  list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  target_sources(hv_objects PRIVATE ${ARGN})
endfunction()

# hv_test(<subsystem> <sources...>): one test program for a subsystem, hv_<subsystem>_test. It is made of
# the library's objects, so that it also reaches what the library hides.
function(hv_test subsystem)
  set(target hv_${subsystem}_test)
  add_executable(${target} ${ARGN})
  target_link_libraries(${target} PRIVATE hv_objects hv_test_support)
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60)
endfunction()

# hv_bench(<name>): the benchmark program of <name>_bench.cpp, against the library as users link it.
function(hv_bench name)
  add_executable(hv_${name}_bench ${name}_bench.cpp)
  target_link_libraries(hv_${name}_bench PRIVATE hv hv_settings benchmark::benchmark_main)
endfunction()

# hv_example(<name>): the example program of <name>.cpp, and its run as a test.
function(hv_example name)
  add_executable(hv_example_${name} ${name}.cpp)
  target_link_libraries(hv_example_${name} PRIVATE hv hv_settings)
  if(HV_BUILD_TESTS)
    add_test(NAME example.${name} COMMAND hv_example_${name})
  endif()
endfunction()
