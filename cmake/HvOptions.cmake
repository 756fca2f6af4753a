# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# Options and compiler settings. With every option off, configuring needs nothing but a compiler.
# As a part of another project hv is the library alone, and leaves no variable behind in the cache
# but its own HV_ options.

if(CMAKE_SOURCE_DIR STREQUAL PROJECT_SOURCE_DIR)
  set(HV_IS_MAIN ON)
else()
  set(HV_IS_MAIN OFF)
endif()

option(HV_BUILD_TESTS "Build the tests" OFF)
option(HV_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(HV_BUILD_TOOLS "Build the command-line tool" OFF)
option(HV_BUILD_FUZZ "Build the fuzz targets (Clang)" OFF)
option(HV_BUILD_EXAMPLES "Build the examples" OFF)
option(HV_BUILD_PYTHON "Build the Python module (pybind11)" OFF)
option(HV_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF)
set(HV_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
option(HV_COVERAGE "Build so that a run records which lines it passed" OFF)

if(HV_IS_MAIN)
  option(BUILD_SHARED_LIBS "Build hv as a shared library" ON)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  endif()
  find_program(HV_CCACHE ccache)
  if(HV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${HV_CCACHE})
  endif()
endif()

# 17 is the floor; a later standard may be asked for.
if(NOT CMAKE_CXX_STANDARD)
  set(CMAKE_CXX_STANDARD 17)
endif()
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# What every target of the project is compiled with. The same input gives the same bits on every
# build: no contraction to fused multiply-add, no fast math.
add_library(hv_settings INTERFACE)
target_compile_options(hv_settings INTERFACE -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Where the machine has fused multiply-add, GCC 12 joins a * b + c of neighbouring statements into
  # one instruction that rounds once, whatever it is told about contraction.
  target_compile_options(hv_settings INTERFACE -fno-tree-slp-vectorize)
endif()
target_include_directories(hv_settings INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
if(HV_IS_MAIN)
  target_compile_options(hv_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(HV_WARNINGS_AS_ERRORS)
    target_compile_options(hv_settings INTERFACE -Werror)
  endif()
endif()
if(HV_SANITIZE)
  target_compile_options(hv_settings INTERFACE
    -fsanitize=${HV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(hv_settings INTERFACE -fsanitize=${HV_SANITIZE})
endif()
if(HV_COVERAGE)
  # Threads count together, or else what they race for can come out below nothing.
  target_compile_options(hv_settings INTERFACE --coverage -fno-inline -fprofile-update=atomic)
  target_link_options(hv_settings INTERFACE --coverage)
endif()
