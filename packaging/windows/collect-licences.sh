#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Puts the texts of all licences that the Windows program and its installer come under into
# a folder: the project's own, and for what is linked those that Debian keeps with the very
# packages it is linked from. data/help/licences.html names the files.
#
#   packaging/windows/collect-licences.sh FOLDER
set -euo pipefail
target=${1:?Usage: packaging/windows/collect-licences.sh FOLDER}
mkdir -p "$target"
target=$(readlink -f "$target")
cd "$(dirname "$(readlink -f "$0")")/../.."
. tools/common.sh

# take FILE NAME: a text with the line ends of Windows, for whoever opens it there.
take() {
  [ -e "$1" ] || fail "The licence text $1 is missing; the package that it belongs to is not installed."
  sed 's/\r*$/\r/' "$1" >"$target/$2"
}

take LICENSE GPL-3.txt
take /usr/share/common-licenses/LGPL-3 LGPL-3.txt
take /usr/share/common-licenses/CC0-1.0 CC0-1.0.txt
take /usr/share/common-licenses/MPL-2.0 MPL-2.0.txt
take /usr/share/doc/qt6-base-dev/copyright Qt.txt
take packaging/windows/qt-more.txt Qt-more.txt
take /usr/share/doc/mingw-w64-common/copyright mingw-w64.txt
take /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright GCC.txt
take /usr/share/doc/nsis/copyright NSIS.txt
