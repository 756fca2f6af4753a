# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

# Runs PROGRAM and compares its output with the file EXPECTED, when there is one.
execute_process(COMMAND ${PROGRAM} RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "ended with ${result}")
endif()
if(EXISTS ${EXPECTED})
  file(READ ${EXPECTED} expected)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "expected was\n${expected}and the program prints\n${output}")
  endif()
endif()
