# SPDX-License-Identifier: GPL-3.0-or-later
# Cross-build of 64-bit Windows programs with Debian's mingw-w64. When a Qt for
# Windows stands in the user's cache folder (packaging/windows/build-qt.sh puts
# it there), the program with its windows is built with it.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

if(DEFINED ENV{XDG_CACHE_HOME} AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(VELTRIN_CACHE_FOLDER "$ENV{XDG_CACHE_HOME}/veltrin")
else()
  set(VELTRIN_CACHE_FOLDER "$ENV{HOME}/.cache/veltrin")
endif()
set(VELTRIN_QT_WINDOWS "${VELTRIN_CACHE_FOLDER}/qt-windows")
if(EXISTS "${VELTRIN_QT_WINDOWS}/lib/cmake/Qt6/Qt6Config.cmake")
  list(APPEND CMAKE_FIND_ROOT_PATH "${VELTRIN_QT_WINDOWS}")
  list(APPEND CMAKE_PREFIX_PATH "${VELTRIN_QT_WINDOWS}")
  set(QT_HOST_PATH /usr CACHE PATH "")
  set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "")
else()
  set(VELTRIN_WINDOW OFF CACHE BOOL "" FORCE)
endif()
