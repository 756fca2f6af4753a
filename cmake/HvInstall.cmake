# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# `cmake --install`: the library, its public headers, the CMake package and the pkg-config file.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Two components: what a program needs to run, and what it needs to be built.
install(TARGETS hv EXPORT hvTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)

# What stands in internal/ serves the library's own sources alone.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/hv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h" PATTERN "internal" EXCLUDE)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/hv)
install(EXPORT hvTargets NAMESPACE hv:: DESTINATION ${packageDir} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/hvConfig.cmake.in
  ${PROJECT_BINARY_DIR}/hvConfig.cmake INSTALL_DESTINATION ${packageDir}
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
# Below version 1 a minor release may change what callers see.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/hvConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/hvConfig.cmake ${PROJECT_BINARY_DIR}/hvConfigVersion.cmake
  DESTINATION ${packageDir} COMPONENT development)

# A static library leaves it to the consumer to link the threads and to know that it is static.
if(BUILD_SHARED_LIBS)
  set(HV_PC_CFLAGS "")
  set(HV_PC_LIBS "")
  set(HV_PC_LIBS_PRIVATE "-pthread")
else()
  set(HV_PC_CFLAGS " -DHV_STATIC")
  set(HV_PC_LIBS " -pthread")
  set(HV_PC_LIBS_PRIVATE "")
endif()
# Paths relative to the file itself keep the prefix movable.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
  set(HV_PC_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
  set(HV_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH up /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  set(HV_PC_LIBDIR "\${pcfiledir}/${up}${CMAKE_INSTALL_LIBDIR}")
  set(HV_PC_INCLUDEDIR "\${pcfiledir}/${up}${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/hv.pc.in ${PROJECT_BINARY_DIR}/hv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/hv.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

include(cmake/HvPackage.cmake)
