#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Qt for Windows that the cross-build links with, from the source
# package of the very Qt that this Debian has, and puts it into the user's cache
# folder. Takes about 45 minutes on two cores; a run that was interrupted goes on
# where it stopped.
#
#   packaging/windows/build-qt.sh                   the whole way
#   packaging/windows/build-qt.sh --configure-only  no further than CMake's preparation
#
# The result is static and relocatable: Core, Gui, Widgets, Network, PrintSupport
# and Test, with the styles and platforms of Windows.
set -eu
cd "$(dirname "$(readlink -f "$0")")/../.."
. tools/common.sh

only_configure=
case ${1:-} in
  '') ;;
  --configure-only) only_configure=yes ;;
  *) fail "Usage: packaging/windows/build-qt.sh [--configure-only]" ;;
esac

cache=${XDG_CACHE_HOME:-$HOME/.cache}/veltrin
work=$cache/qt-windows-build
target=$cache/qt-windows

# Lines of a sources.list for the sources of every Debian archive that this
# machine has its packages from.
source_lines() {
  # The $(...) are apt's own and not for the shell.
  # shellcheck disable=SC2016
  apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Created-By: Packages' 'Origin: Debian' | sort -u
}

# Fetches the upstream source of the installed Qt with an apt that has folders of
# its own, so that this machine's list of sources stays as it is. Its keys are
# the system's.
fetch_source() {
  local version apt=$work/apt keyring=/usr/share/keyrings/debian-archive-keyring.gpg
  version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
  mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial"
  source_lines | sed "s|^deb-src |deb-src [signed-by=$keyring] |" >"$apt/sources.list"
  [ -s "$apt/sources.list" ] || fail "apt knows no Debian archive here; run \"apt-get update\" once."
  local options=(-q -o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=/dev/null
    -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=)
  apt-get "${options[@]}" update || fail "The list of source packages cannot be had. Is this machine online?"
  (cd "$work" && apt-get "${options[@]}" source --download-only "qt6-base=$version") ||
    fail "The source of qt6-base $version cannot be had; apt-get's words stand above."
}

unpack_source() {
  local archives=("$work"/qt6-base_*.orig.tar.xz)
  [ -e "${archives[0]}" ] || fetch_source
  archives=("$work"/qt6-base_*.orig.tar.xz)
  rm -rf "$work/source.part"
  mkdir "$work/source.part"
  tar -xJf "${archives[0]}" -C "$work/source.part" --strip-components=1
  mv "$work/source.part" "$work/source"
}

# A toolchain file of its own: the project's would lead CMake to an older result.
write_toolchain() {
  cat >"$work/mingw.cmake" <<'CMAKE'
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
CMAKE
}

# What the program does not use is left out: databases, D-Bus, OpenGL, Vulkan, XML,
# ICU. Tablets are off because Debian's tarball comes without the header that
# their code needs. TLS is the system's own.
configure_qt() {
  local off="sql dbus opengl xml concurrent vulkan icu system_zlib pkg_config openssl tabletevent"
  local features=() feature
  for feature in $off; do features+=("-DFEATURE_$feature=OFF"); done
  cmake -S "$work/source" -B "$work/build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$work/mingw.cmake" \
    -DCMAKE_INSTALL_PREFIX="$work/install/qt-windows" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake" \
    -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DINPUT_opengl=no -DFEATURE_schannel=ON "${features[@]}" ||
    fail "CMake could not prepare Qt; its words stand above. All of it lies in $work."
}

# Drops what only qmake projects use, and the path of the toolchain file, which
# means nothing anywhere else.
trim() {
  local qt=$work/install/qt-windows platform
  find "$qt" -name '*.prl' -delete
  rm -rf "$qt/mkspecs/modules" "$qt/mkspecs/features"
  for platform in "$qt"/mkspecs/*/; do
    case $(basename "$platform") in win32-g++ | common) ;; *) rm -rf "$platform" ;; esac
  done
  sed -i 's|^set(__qt_initially_configured_toolchain_file .*|set(__qt_initially_configured_toolchain_file "")|' \
    "$qt/lib/cmake/Qt6/qt.toolchain.cmake"
}

phase "Packages"
install_packages qt
need cmake ninja x86_64-w64-mingw32-g++-posix tar xz
mkdir -p "$work"
phase "Source"
[ -d "$work/source" ] || unpack_source
phase "Preparation"
write_toolchain
configure_qt
if [ -n "$only_configure" ]; then
  phase_end
  say "Qt is ready to be built in $work."
  exit 0
fi
phase "Build"
cmake --build "$work/build" || fail "The build of Qt failed; the compiler's words stand above. Run this script again to go on."
phase "Installation"
rm -rf "$work/install"
cmake --install "$work/build" >/dev/null || fail "The built Qt cannot be installed into $work/install."
trim
rm -rf "$target"
mv "$work/install/qt-windows" "$target"
rm -rf "$work"
phase_end
say "Qt for Windows stands in $target."
