# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# One call per thing, and the call registers it.

# hv_subsystem(<sources...>): adds the sources of the current folder to the library.
function(hv_subsystem)
  list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  target_sources(hv_objects PRIVATE ${ARGN})
endfunction()

# hv_thread_test_sources(<variable> <sources...>): those of the sources that hold a thread test, a
# test whose suite name ends in _threads.
function(hv_thread_test_sources variable)
  set(found)
  foreach(source ${ARGN})
    file(STRINGS ${source} tests REGEX "^ *(TEST|TEST_F|TEST_P|TYPED_TEST|RC_GTEST_PROP)\\([A-Za-z0-9_]+_threads,")
    if(tests)
      list(APPEND found ${source})
    endif()
  endforeach()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ARGN})
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# hv_test(<subsystem> <sources...>): one test program for a subsystem, hv_<subsystem>_test. It is
# made of the library's objects, so that it also reaches what the library hides. The thread
# sanitizer's build compiles and runs only the files that hold thread tests. Properties are tried with
# one seed here, so that a change is judged by itself; a test program run by hand draws new ones.
function(hv_test subsystem)
  set(target hv_${subsystem}_test)
  set(sources ${ARGN})
  set(filter)
  set(exclude)
  if(HV_SANITIZE MATCHES "thread")
    hv_thread_test_sources(sources ${ARGN})
    set(filter TEST_FILTER "*_threads.*")
    if(NOT sources)
      set(sources ${ARGN})
      set(exclude EXCLUDE_FROM_ALL)
    endif()
  endif()
  add_executable(${target} ${exclude} ${sources})
  target_link_libraries(${target} PRIVATE hv_objects hv_test_support)
  if(NOT exclude)
    gtest_discover_tests(${target} ${filter}
      DISCOVERY_TIMEOUT 120
      PROPERTIES LABELS ${subsystem} TIMEOUT 300 ENVIRONMENT "RC_PARAMS=seed=20261120")
  endif()
endfunction()

# hv_bench(<name>): the benchmark program of <name>_bench.cpp, against the library as users link it.
function(hv_bench name)
  add_executable(hv_${name}_bench ${name}_bench.cpp)
  target_link_libraries(hv_${name}_bench PRIVATE hv hv_settings benchmark::benchmark_main)
  set_target_properties(hv_${name}_bench PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/benchmarks)
endfunction()

# hv_bench_peer(<name> <PEER> <header> <libraries...>): where the machine has that library, the
# benchmark is compiled with HV_PEER_<PEER> and times it beside ours. Found by its header, as the
# packages differ in what else they bring.
function(hv_bench_peer name peer header)
  find_path(HV_PEER_${peer}_INCLUDE ${header} PATH_SUFFIXES cairo freetype2 opencv4)
  set(found ${HV_PEER_${peer}_INCLUDE})
  set(libraries)
  foreach(library ${ARGN})
    find_library(HV_PEER_${peer}_${library} ${library})
    list(APPEND libraries ${HV_PEER_${peer}_${library}})
    if(NOT HV_PEER_${peer}_${library})
      set(found)
    endif()
  endforeach()
  if(found)
    target_include_directories(hv_${name}_bench SYSTEM PRIVATE ${HV_PEER_${peer}_INCLUDE})
    target_link_libraries(hv_${name}_bench PRIVATE ${libraries})
    target_compile_definitions(hv_${name}_bench PRIVATE HV_PEER_${peer})
  else()
    message(STATUS "hv_${name}_bench: no ${peer} on this machine")
  endif()
endfunction()

# hv_example(<name>): the example program of <name>.cpp, with what draws for examples, and its run as
# a test. Where expected/<name>.txt stands, that is what it prints.
function(hv_example name)
  add_executable(hv_example_${name} ${name}.cpp)
  target_link_libraries(hv_example_${name} PRIVATE hv_example_support hv hv_settings)
  if(HV_BUILD_TESTS)
    add_test(NAME example.${name}
      COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:hv_example_${name}>
        -D EXPECTED=${CMAKE_CURRENT_SOURCE_DIR}/expected/${name}.txt
        -P ${PROJECT_SOURCE_DIR}/tests/docs/run_block.cmake)
    set_tests_properties(example.${name} PROPERTIES LABELS example)
  endif()
endfunction()

# hv_fuzz(<name>): the entry point of fuzz_<name>.cpp. In a test build a plain main replays
# corpus/<name>/ through it as an ordinary test; in a fuzz build it is a libFuzzer program.
function(hv_fuzz name)
  set(target hv_${name}_fuzz)
  add_executable(${target} fuzz_${name}.cpp)
  if(HV_BUILD_FUZZ)
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
  else()
    target_link_libraries(${target} PRIVATE hv_fuzz_replay)
    add_test(NAME fuzz.${name} COMMAND ${target} ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    set_tests_properties(fuzz.${name} PROPERTIES LABELS fuzz)
  endif()
  target_link_libraries(${target} PRIVATE hv_objects)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
endfunction()
