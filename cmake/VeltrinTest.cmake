# SPDX-License-Identifier: GPL-3.0-or-later
# GoogleTest, built from its Debian source package so that both targets have
# it, and the one way in which a test program is added.

set(VELTRIN_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Source of GoogleTest")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${VELTRIN_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
include(GoogleTest)
if(VELTRIN_SANITIZE)
  target_compile_options(gtest PRIVATE -O0)
  target_compile_options(gmock PRIVATE -O0)
endif()

# How much of a machine a test takes, in halves of a processor, of which test.sh gives ctest
# one more than there are, as most of those that wait need far less: a test that computes, or
# judges how long something took, takes two; one that mostly waits takes one, which is also
# what ctest takes a test for that says nothing. So as many tests compute at once as there are
# processors, those that wait fill the gaps, and beside a test with a clock there is little
# more work than one other's.
set(VELTRIN_COMPUTES 2)
set(VELTRIN_WAITS 1)

# veltrin_test(NAME [EACH] [WAITS] [OWN_MAIN] SOURCES ... LIBRARIES ...)
#
# On Linux every suite of the program, which is all cases with the same word before
# their dot, is a test of ctest: starting a program costs more than most cases do.
# With EACH every case is one, which is for cases that take seconds themselves. WAITS says
# that they spend them waiting. Under Wine, where each start costs about a second, a program
# is one test.
#
# The program gets a main() unless it has its OWN_MAIN, which then ends with runTests()
# and brings its own compiled headers.
function(veltrin_test NAME)
  cmake_parse_arguments(TEST "EACH;WAITS;OWN_MAIN" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${NAME} ${TEST_SOURCES})
  target_link_libraries(${NAME} PRIVATE veltrin_options ${TEST_LIBRARIES} veltrin_run_tests)
  if(NOT TEST_OWN_MAIN)
    target_link_libraries(${NAME} PRIVATE veltrin_test_main)
    target_precompile_headers(${NAME} REUSE_FROM veltrin_test_main)
  endif()
  set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  set(SHARE ${VELTRIN_COMPUTES})
  if(TEST_WAITS)
    set(SHARE ${VELTRIN_WAITS})
  endif()
  if(WIN32)
    add_test(NAME windows.${NAME} COMMAND ${CMAKE_SOURCE_DIR}/tests/windows/under-wine.sh $<TARGET_FILE:${NAME}>)
    set_tests_properties(windows.${NAME} PROPERTIES TIMEOUT 600 COST 60 PROCESSORS ${SHARE}
                                                   SKIP_RETURN_CODE 77)
  elseif(TEST_EACH)
    gtest_discover_tests(${NAME} TEST_PREFIX ${NAME}. DISCOVERY_TIMEOUT 60
                         PROPERTIES TIMEOUT 120 COST 20 PROCESSORS ${SHARE})
  else()
    veltrin_discover_suites(${NAME} ${SHARE})
  endif()
endfunction()

# veltrin_discover_suites(NAME SHARE): makes each suite of a program a test of ctest, which
# takes that many halves of a processor, as soon as the program has been built and can tell
# its suites.
function(veltrin_discover_suites NAME SHARE)
  set(SUITES ${CMAKE_CURRENT_BINARY_DIR}/${NAME}-suites.cmake)
  add_custom_command(
    TARGET ${NAME} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -DNAME=${NAME} -DPROGRAM=$<TARGET_FILE:${NAME}> -DSUITES=${SUITES}
            -DSHARE=${SHARE}
            -P ${CMAKE_SOURCE_DIR}/cmake/ListSuites.cmake
    VERBATIM)
  set(INCLUDE ${CMAKE_CURRENT_BINARY_DIR}/${NAME}-include.cmake)
  file(WRITE ${INCLUDE} "if(EXISTS \"${SUITES}\")\n"
                        "  include(\"${SUITES}\")\n"
                        "else()\n"
                        "  add_test(${NAME}_NOT_BUILT ${NAME}_NOT_BUILT)\n"
                        "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${INCLUDE})
endfunction()

# veltrin_fuzz(NAME SOURCES ... LIBRARIES ...): a fuzz target, whose seeds are the files of
# tests/fuzz/corpus/NAME where there is such a folder. With Clang and the sanitizers it is a
# program of libFuzzer with a short run in the suite; for a long one start it by hand. For Windows
# it is a plain program that takes the seeds and random changes to them. Other builds leave it out.
function(veltrin_fuzz NAME)
  cmake_parse_arguments(FUZZ "" "" "SOURCES;LIBRARIES" ${ARGN})
  set(CORPUS ${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${NAME})
  if(WIN32)
    list(APPEND FUZZ_SOURCES ${CMAKE_SOURCE_DIR}/tests/fuzz/corpus_main.cpp)
  elseif(NOT (CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND VELTRIN_SANITIZE))
    return()
  endif()
  add_executable(${NAME} ${FUZZ_SOURCES})
  target_link_libraries(${NAME} PRIVATE veltrin_options ${FUZZ_LIBRARIES})
  set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(WIN32)
    # A helper of the targets is a header that comes with Clang.
    target_compile_options(${NAME} PRIVATE -idirafter ${VELTRIN_CLANG_HEADERS})
    add_test(NAME windows.fuzz.${NAME} COMMAND ${CMAKE_SOURCE_DIR}/tests/windows/under-wine.sh
             $<TARGET_FILE:${NAME}> Z:${CORPUS} 5000)
    set_tests_properties(windows.fuzz.${NAME} PROPERTIES TIMEOUT 120 COST 10 PROCESSORS ${VELTRIN_COMPUTES})
    return()
  endif()
  target_compile_options(${NAME} PRIVATE -O1)
  target_link_options(${NAME} PRIVATE -fsanitize=fuzzer)
  # Seeds by name, as libFuzzer would write what it finds into a folder.
  file(GLOB SEEDS CONFIGURE_DEPENDS ${CORPUS}/*)
  set(SEED_OPTION)
  if(SEEDS)
    list(JOIN SEEDS "," SEEDS)
    set(SEED_OPTION -seed_inputs=${SEEDS})
  endif()
  add_test(NAME fuzz.${NAME} COMMAND ${NAME} -runs=50000 -max_total_time=10 -seed=1 -verbosity=0
           ${SEED_OPTION})
  set_tests_properties(fuzz.${NAME} PROPERTIES TIMEOUT 120 COST 10 PROCESSORS ${VELTRIN_COMPUTES})
endfunction()
