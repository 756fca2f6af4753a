# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# Compiles each public header by itself, and twice over, as a user's source would: what a header
# needs it includes, and its guard holds. A header that does not compile breaks the build.
file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/hv/*.h ${PROJECT_SOURCE_DIR}/hv/*/*.h)

set(sources)
foreach(header ${headers})
  string(MAKE_C_IDENTIFIER ${header} name)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/lone_headers/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "#include <@header@>\n#include <@header@>\n" @ONLY)
  list(APPEND sources ${source})
endforeach()

add_library(hv_lone_headers OBJECT ${sources})
target_link_libraries(hv_lone_headers PRIVATE hv hv_settings)
