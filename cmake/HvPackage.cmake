# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# `cpack` in a build folder: the pair of Debian packages, libhvN with the shared library and
# libhv-dev with what programs are built with. A static build gives libhv-dev alone.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hv)
set(CPACK_PACKAGE_VENDOR "the Hv authors")
set(CPACK_PACKAGE_CONTACT "the Hv authors <hv@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)

set(CPACK_COMPONENTS_ALL development)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libhv-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "${PROJECT_DESCRIPTION}: headers, CMake package and pkg-config file")

if(BUILD_SHARED_LIBS)
  list(PREPEND CPACK_COMPONENTS_ALL runtime)
  set(runtimePackage libhv${PROJECT_VERSION_MAJOR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtimePackage})
  set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}: the shared library")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtimePackage} (= ${PROJECT_VERSION})")
endif()
include(CPack)
