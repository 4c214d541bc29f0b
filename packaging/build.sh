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
# leaves no trace in what is built.
debian() {
  install_packages build
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

case ${1:-} in
  debian) debian ;;
  *) usage; exit 2 ;;
esac
