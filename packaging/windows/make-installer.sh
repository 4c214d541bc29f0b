#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Windows installer of a built program.
#
#   packaging/windows/make-installer.sh BUILD-FOLDER
#
# The folder is that of a cross-build with its windows (preset "windows"); the installer is
# packages/veltrin-VERSION-setup.exe in it. What is made twice of the same sources is the
# same to the byte: the moment of all files is SOURCE_DATE_EPOCH.
set -euo pipefail
build=$(readlink -f "${1:?Usage: packaging/windows/make-installer.sh BUILD-FOLDER}")
cd "$(dirname "$(readlink -f "$0")")/../.."
. tools/common.sh
umask 022
: "${SOURCE_DATE_EPOCH:?the moment of the sources, in seconds}"
export SOURCE_DATE_EPOCH LC_ALL=C TZ=UTC

parts=$build/installer
stage=$parts/stage

version() { sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt"; }

# The program's folder as it is installed.
fill_stage() {
  rm -rf "$parts"
  mkdir -p "$stage"
  # What lies there from runs of the program is not taken along.
  mkdir "$stage/files"
  cp "$build"/bin/files/*.avi "$stage/files"
  cp -r "$build"/bin/{veltrin.exe,help,icons,installation.ini} "$stage"
  packaging/windows/collect-licences.sh "$stage/licences"
}

# Lists of the files for the script: how to put each into its folder, how to delete it.
write_lists() {
  local folder file windows
  (
    cd "$stage"
    find . -type d | sort | while IFS= read -r folder; do
      windows=$(tr / '\\' <<<"${folder#.}")
      printf 'SetOutPath "$INSTDIR%s"\n' "$windows"
      find "$folder" -maxdepth 1 -type f ! -path ./installation.ini | sort |
        while IFS= read -r file; do printf 'File "${STAGE}/%s"\n' "${file#./}"; done
    done
  ) >"$parts/install-files.nsh"
  (
    cd "$stage"
    find . -type f ! -path ./installation.ini | sort | while IFS= read -r file; do
      printf 'Delete "$INSTDIR%s"\n' "$(tr / '\\' <<<"${file#.}")"
    done
    find . -mindepth 1 -type d | sort -r | while IFS= read -r folder; do
      printf 'RMDir "$INSTDIR%s"\n' "$(tr / '\\' <<<"${folder#.}")"
    done
  ) >"$parts/uninstall-files.nsh"
}

# The picture beside the last page: the icon on the ground of the help pages.
draw_side() {
  convert -size 164x314 'xc:#ecebe6' \
    \( "$build/data/icons/128x128/apps/veltrin.png" -resize 96x96 \) \
    -gravity north -geometry +0+56 -composite -strip -type TrueColor "BMP3:$parts/side.bmp"
}

write_mark() {
  printf '%s\r\n' 'Veltrin is installed here for all users of this computer.' \
    'While this file is here, each of them keeps settings, logs and results in a folder of' \
    'their own, %LOCALAPPDATA%\Veltrin.' >"$parts/for-all-users.txt"
}

need makensis convert
[ -e "$build/bin/veltrin.exe" ] || fail "There is no program in $build/bin."
version=$(version)
[[ $version =~ ^([0-9]+)\.0*([0-9]+)$ ]] || fail "\"$version\" in $build/CMakeCache.txt is no version."
numbers=${BASH_REMATCH[1]}.${BASH_REMATCH[2]}.0.0
installer=$build/packages/veltrin-$version-setup.exe

fill_stage
write_lists
draw_side
write_mark
cp "$build/data/veltrin.ico" "$parts"
# The installer holds the moments of its files.
find "$parts" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
mkdir -p "$build/packages"
rm -f "$installer"
size=$(du --apparent-size -sk "$stage" | cut -f1)
makensis -V2 -WX -NOCD "-DVERSION=$version" "-DVERSION_NUMBERS=$numbers" "-DSTAGE=$stage" \
  "-DPARTS=$parts" "-DSIZE=$size" "-DTARGET=$installer" \
  "-X!addincludedir packaging/windows" packaging/windows/veltrin.nsi
