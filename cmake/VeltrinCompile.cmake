# SPDX-License-Identifier: GPL-3.0-or-later
# How every target of the project is compiled: language level, warnings as
# errors, sanitizers, ccache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

option(VELTRIN_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Precompiled headers are cached only when their time stamps are ignored. What a source
  # includes is taken from the list that the compiler writes, not from a pass of the
  # preprocessor, which takes a tenth to a fifth of the time of a compilation. Programs for
  # Windows hold no path of where they were built, so one folder serves the others.
  if(WIN32)
    set(CCACHE_PATHS CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1)
  endif()
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_DEPEND=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${CCACHE_PATHS}
      ${CCACHE_PROGRAM})
endif()

# The flags that the project's own code is held to; third-party code is not.
add_library(veltrin_options INTERFACE)
target_compile_options(veltrin_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
target_include_directories(veltrin_options INTERFACE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(veltrin_options INTERFACE -Xclang -fno-pch-timestamp)
else()
  target_compile_options(veltrin_options INTERFACE -fpch-preprocess)
endif()
if(WIN32)
  target_compile_definitions(veltrin_options INTERFACE WINVER=0x0A00 _WIN32_WINNT=0x0A00
                                                       WIN32_LEAN_AND_MEAN NOMINMAX)
  # The moment of linking would make each build another one.
  add_link_options(-static -s -Wl,--no-insert-timestamp)
endif()

# veltrin_not_optimised(): under the sanitizers, what this folder and those below it build is
# not optimised, as most of the build would be spent on code that runs once.
macro(veltrin_not_optimised)
  if(VELTRIN_SANITIZE)
    string(REPLACE "-O1" "-O0" CMAKE_CXX_FLAGS_DEBUG "${CMAKE_CXX_FLAGS_DEBUG}")
  endif()
endmacro()

if(VELTRIN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
