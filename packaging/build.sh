#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the packages of Veltrin from the sources that lie here.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/common.sh

usage() {
  cat <<'TEXT'
Usage: packaging/build.sh debian    two .deb files for Debian 12: the program with its
                                    console tools and the lab, and the update endpoint
       packaging/build.sh windows   the installer for Windows 10 and later, cross-built with the
                                    Qt of packaging/windows/build-qt.sh
TEXT
}

# The moment of the newest change, for all that bears a moment: a package that is made
# twice of the same sources is the same to the byte.
source_moment() {
  if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)
  fi
  export SOURCE_DATE_EPOCH
}

# Optimised as Debian does it and without the facts for a debugger, which would be stripped
# off again; hardened, as it listens to the network; and the folder in which it is built
# leaves no trace in what is built, so the compiler cache serves any other folder too.
debian() {
  install_packages build
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 LC_ALL=C
  need cmake ninja dpkg-deb dpkg-shlibdeps file
  source_moment
  umask 022
  local flags="-ffile-prefix-map=$PWD=. -fstack-protector-strong -D_FORTIFY_SOURCE=2"
  as_user cmake --preset linux -B build/package -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_EXE_LINKER_FLAGS="-Wl,-z,relro,-z,now"
  as_user cmake --build build/package
  rm -rf build/package/packages
  (cd build/package && as_user cpack)
  say "The packages:"
  ls -l build/package/packages/*.deb
}

windows() {
  install_packages build test
  need cmake ninja x86_64-w64-mingw32-g++-posix makensis
  # The $... are for the person who called through sudo, and that one's home.
  # shellcheck disable=SC2016
  as_user bash -c '[ -e "${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/qt-windows/lib/cmake/Qt6/Qt6Config.cmake" ]' ||
    fail "There is no Qt for Windows; packaging/windows/build-qt.sh makes it (about 45 minutes)."
  source_moment
  umask 022
  as_user cmake --preset windows -B build/package-windows -DVELTRIN_WINDOW=ON -DVELTRIN_TESTS=OFF
  as_user cmake --build build/package-windows
  as_user packaging/windows/make-installer.sh build/package-windows
  say "The installer:"
  ls -l build/package-windows/packages/veltrin-*-setup.exe
}

case ${1:-} in
  debian) debian ;;
  windows) windows ;;
  *) usage; exit 2 ;;
esac
