# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# One step of the consumer tests, run as `cmake -D STEP=... -D KIND=shared|static ... -P steps.cmake`.

# run(<command...>): stops the step when the command fails.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed (${result}): ${command}")
  endif()
endfunction()

# expect_output(<command...>): runs the consumer and compares what it prints.
function(expect_output)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output)
  if(NOT result EQUAL 0 OR NOT output STREQUAL "hv consumer: 1 2 3\n")
    message(FATAL_ERROR "the consumer ended with ${result} and printed: ${output}")
  endif()
endfunction()

set(prefix ${BINARY}/${KIND}/prefix)
set(build ${BINARY}/${KIND}/${STEP})
set(settings -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${CXX})
if(LAUNCHER)
  list(APPEND settings -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
endif()
string(COMPARE EQUAL "${KIND}" shared shared)

if(STEP STREQUAL install)
  # With every option off, configuring needs nothing but a compiler.
  file(REMOVE_RECURSE ${prefix})
  run(${CMAKE_COMMAND} -S ${SOURCE} -B ${build} ${settings} -D BUILD_SHARED_LIBS=${shared}
    -D CMAKE_BUILD_TYPE=Debug -D CMAKE_INSTALL_LIBDIR=lib)
  run(${CMAKE_COMMAND} --build ${build} --parallel 2)
  run(${CMAKE_COMMAND} --install ${build} --prefix ${prefix})
  if(shared)
    string(REGEX MATCH "^[0-9]+" major ${VERSION})
    set(library lib/libhv.so.${major})
  else()
    set(library lib/libhv.a)
  endif()
  foreach(file ${library} include/hv/hv.h lib/cmake/hv/hvConfig.cmake
          lib/cmake/hv/hvConfigVersion.cmake lib/pkgconfig/hv.pc)
    if(NOT EXISTS ${prefix}/${file})
      message(FATAL_ERROR "${file} was not installed")
    endif()
  endforeach()
  file(GLOB_RECURSE headers RELATIVE ${prefix}/include ${prefix}/include/*)
  foreach(header ${headers})
    if(NOT header MATCHES "^hv/.*\\.h$" OR header MATCHES "/internal/")
      message(FATAL_ERROR "include/${header} was installed")
    endif()
  endforeach()
elseif(STEP STREQUAL package)
  run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/package -B ${build} ${settings}
    -D CMAKE_PREFIX_PATH=${prefix} -D HV_WANTED_VERSION=${VERSION})
  run(${CMAKE_COMMAND} --build ${build} --parallel 2)
  expect_output(${build}/consumer)
elseif(STEP STREQUAL pkgconfig)
  # As a user would by hand: the flags go to the compiler as pkg-config prints them. In a later
  # standard than the library's own, which its headers serve as well.
  file(MAKE_DIRECTORY ${build})
  set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
  run(${PKG_CONFIG} --exact-version=${VERSION} hv)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs hv OUTPUT_VARIABLE flags
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT shared AND NOT (flags MATCHES "-DHV_STATIC" AND flags MATCHES "-pthread"))
    message(FATAL_ERROR "flags of the static library: ${flags}")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(${CXX} -std=c++20 ${CMAKE_CURRENT_LIST_DIR}/consumer.cpp -o ${build}/consumer ${flags})
  set(ENV{LD_LIBRARY_PATH} ${prefix}/lib)
  expect_output(${build}/consumer)
elseif(STEP STREQUAL deb)
  # The installing user's own system stays as it is: dpkg works below a folder, with a record of its
  # own that knows of no other package.
  file(REMOVE_RECURSE ${build})
  file(MAKE_DIRECTORY ${build}/root/var/lib/dpkg/info ${build}/root/var/lib/dpkg/updates)
  file(TOUCH ${build}/root/var/lib/dpkg/status)
  run(cpack --config ${BINARY}/${KIND}/install/CPackConfig.cmake -B ${build})
  file(GLOB packages ${build}/*.deb)
  list(LENGTH packages count)
  if(NOT count EQUAL 2)
    message(FATAL_ERROR "a pair of packages was expected: ${packages}")
  endif()
  run(dpkg --root=${build}/root --force-depends --force-not-root --force-script-chrootless
    --log=${build}/dpkg.log -i ${packages})
  run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/package -B ${build}/consumer ${settings}
    -D CMAKE_PREFIX_PATH=${build}/root/usr -D HV_WANTED_VERSION=${VERSION})
  run(${CMAKE_COMMAND} --build ${build}/consumer --parallel 2)
  expect_output(${build}/consumer/consumer)
elseif(STEP STREQUAL subproject)
  run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/subproject -B ${BINARY}/subproject ${settings}
    -D HV_SOURCE=${SOURCE})
  run(${CMAKE_COMMAND} --build ${BINARY}/subproject --parallel 2)
  expect_output(${BINARY}/subproject/consumer)
else()
  message(FATAL_ERROR "no step named ${STEP}")
endif()
