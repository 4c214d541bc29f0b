# SPDX-License-Identifier: GPL-3.0-or-later
# Asks a test program for its suites and writes the file SUITES, by which ctest runs each
# of them in a process of its own, which takes SHARE halves of a processor.
#
#   cmake -DNAME=... -DPROGRAM=... -DSUITES=... -DSHARE=... -P ListSuites.cmake
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE LIST RESULT_VARIABLE CODE TIMEOUT 60)
if(NOT CODE EQUAL 0)
  file(REMOVE ${PROGRAM})
  message(FATAL_ERROR "${PROGRAM} does not list its tests (${CODE}):\n${LIST}")
endif()

# Values of parameters stand behind a "#" and may hold anything.
string(REGEX REPLACE "  # [^\n]*" "" LIST "${LIST}")
string(REGEX MATCHALL "(^|\n)[^ \n]+[.]" LIST "${LIST}")
string(STRIP "${LIST}" LIST)
if(NOT LIST)
  file(REMOVE ${PROGRAM})
  message(FATAL_ERROR "${PROGRAM} has no tests.")
endif()

set(TEXT)
foreach(SUITE ${LIST})
  string(REGEX REPLACE "[\n.]" "" SUITE ${SUITE})
  string(APPEND TEXT "add_test([[${NAME}.${SUITE}]] [[${PROGRAM}]] [[--gtest_filter=${SUITE}.*]])\n"
                     "set_tests_properties([[${NAME}.${SUITE}]] PROPERTIES TIMEOUT 300 PROCESSORS ${SHARE} SKIP_RETURN_CODE 77)\n")
endforeach()
file(WRITE ${SUITES} "${TEXT}")
