# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# Runs TOOL with ARGUMENTS (separated by "|") and holds its exit code against CODE and all that it
# prints against PATTERN. When PICTURE is given, the file DRAWN must hold the same bytes.
string(REPLACE "|" ";" ARGUMENTS "${ARGUMENTS}")
execute_process(COMMAND ${TOOL} ${ARGUMENTS}
  RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
if(NOT "${code}" STREQUAL "${CODE}")
  message(FATAL_ERROR "exit code ${code}, not ${CODE}:\n${text}")
endif()
if(NOT "${text}" MATCHES "${PATTERN}")
  message(FATAL_ERROR "no ${PATTERN} in:\n${text}")
endif()
if(PICTURE)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${DRAWN} ${PICTURE} RESULT_VARIABLE differ)
  if(differ)
    message(FATAL_ERROR "${DRAWN} is no longer ${PICTURE}: look at it, and copy it there")
  endif()
endif()
