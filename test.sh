#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and tests everything: the Linux programs under the sanitizers, and the
# Windows programs under Wine. Ends with one summary of all tests; its exit code
# is ctest's.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
. tools/common.sh

case ${1:-} in
  '') ;;
  *) fail "Usage: ./test.sh (it takes no words). For some tests only: ctest --test-dir build -R NAME; for one case: build/asan/tests/PROGRAM --gtest_filter=SUITE.CASE" ;;
esac

cache=${XDG_CACHE_HOME:-$HOME/.cache}/veltrin
window=OFF

# Puts the ready Qt for Windows into the cache when it lies beside the project
# and is not there yet.
unpack_windows_qt() {
  local archive=../shared/qt-windows.tar.xz folder
  if [ ! -e "$cache/qt-windows/lib/cmake/Qt6/Qt6Config.cmake" ]; then
    if [ ! -e "$archive" ]; then
      say "There is no Qt for Windows in $cache, so the windows of the Windows program are neither built nor tested. packaging/windows/build-qt.sh makes it (about 45 minutes)."
      return
    fi
    say "Unpacking Qt for Windows into $cache"
    mkdir -p "$cache"
    folder=$(mktemp -d "$cache/unpack.XXXXXX")
    tar -xJf "$archive" -C "$folder" || fail "$archive cannot be unpacked; tar's words stand above."
    rm -rf "$cache/qt-windows"
    mv "$folder/qt-windows" "$cache/qt-windows"
    rmdir "$folder"
  fi
  window=ON
}

# Keeps Wine's server and a screen for it up between the tests, in the prefix that they
# use, which saves each of them a second. One screen serves them all: a desktop that Wine
# made on another one, or on none, stands for a moment yet when the next program starts,
# which then gets no windows. Ends with this script. The prefix is made before, as
# its making waits until the server has gone. A first program starts the services,
# which stay: a test that started them would lend them its output, and ctest would
# wait for them to close it.
start_wine_server() {
  . tests/windows/prefix.sh
  make_prefix
  wineserver -f -p >/dev/null 2>&1 &
  wine_server=$!
  local number
  number=$(mktemp)
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$number" >/dev/null 2>&1 &
  wine_screen=$!
  # An interrupt lets the server end its helpers, too.
  trap 'kill -INT $wine_server 2>/dev/null && wait $wine_server || true
        kill $wine_screen 2>/dev/null || true' EXIT
  until [ -s "$number" ]; do
    kill -0 "$wine_screen" 2>/dev/null || fail "Xvfb does not start; Wine has no screen."
    sleep 0.1
  done
  export VELTRIN_WINE_DISPLAY
  VELTRIN_WINE_DISPLAY=:$(cat "$number")
  rm -f "$number"
  DISPLAY=$VELTRIN_WINE_DISPLAY wine cmd.exe /c exit </dev/null >/dev/null 2>&1 ||
    fail "Wine does not start; the Windows programs cannot be tested."
}

# The tests of both systems by one run of ctest, to which cmake/VeltrinTest.cmake tells how
# many halves of a processor each takes. Its summary is held back to be the last words. The
# exit code is ctest's.
run_tests() {
  local summary code=0
  summary=$(mktemp)
  rm -f build/Testing/Temporary/LastTest.log
  ctest --test-dir build --output-on-failure -j"$((2 * $(nproc) + 1))" 2>&1 | {
    local line held=
    while IFS= read -r line; do
      if [[ $line =~ ^[0-9]+%\ tests\ passed ]]; then held=1; fi
      if [ -n "$held" ]; then printf '%s\n' "$line" >>"$summary"; else printf '%s\n' "$line"; fi
    done
  } || code=$?
  say "$(awk -f tools/cases.awk build/Testing/Temporary/LastTest.log)"
  phase_summary
  cat "$summary"
  rm -f "$summary"
  return "$code"
}

phase "Packages"
install_packages build test
need cmake ninja clang++ ld.lld x86_64-w64-mingw32-g++-posix wine wineserver Xvfb
if called_by_sudo; then
  as_user ./test.sh
  exit
fi
phase "Qt for Windows"
unpack_windows_qt
phase "Linux build"
build asan
phase "Windows build"
build windows -DVELTRIN_WINDOW=$window

# One run and one summary for both.
printf 'subdirs("asan" "windows")\n' >build/CTestTestfile.cmake
phase "Wine"
start_wine_server
phase "Tests"
run_tests
