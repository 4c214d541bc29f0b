# GoogleTest, built from its Debian source package so that both targets have
# it, and the one way in which a test program is added.

set(VELTRIN_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Source of GoogleTest")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${VELTRIN_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
include(GoogleTest)

# veltrin_test(NAME SOURCES ... LIBRARIES ...)
#
# On Linux every test case is a test of ctest by itself; under Wine a program
# is one test, as each start costs about a second there.
function(veltrin_test NAME)
  cmake_parse_arguments(TEST "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${NAME} ${TEST_SOURCES})
  target_link_libraries(${NAME} PRIVATE veltrin_options ${TEST_LIBRARIES} GTest::gmock GTest::gtest_main)
  set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(WIN32)
    add_test(NAME windows.${NAME} COMMAND ${CMAKE_SOURCE_DIR}/tests/windows/under-wine.sh $<TARGET_FILE:${NAME}>)
    set_tests_properties(windows.${NAME} PROPERTIES TIMEOUT 600)
  else()
    gtest_discover_tests(${NAME} TEST_PREFIX ${NAME}. DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
  endif()
endfunction()

# veltrin_fuzz(NAME SOURCES ... LIBRARIES ...): a libFuzzer target with a short
# run in the suite. Only Clang has libFuzzer; other builds leave it out. For a
# long run start the program by hand.
function(veltrin_fuzz NAME)
  if(NOT (CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND VELTRIN_SANITIZE))
    return()
  endif()
  cmake_parse_arguments(FUZZ "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${NAME} ${FUZZ_SOURCES})
  target_link_libraries(${NAME} PRIVATE veltrin_options ${FUZZ_LIBRARIES})
  target_link_options(${NAME} PRIVATE -fsanitize=fuzzer)
  set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME fuzz.${NAME} COMMAND ${NAME} -runs=50000 -max_total_time=10 -seed=1 -verbosity=0)
  set_tests_properties(fuzz.${NAME} PROPERTIES TIMEOUT 120)
endfunction()
