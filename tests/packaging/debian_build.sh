#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian packages of this checkout, which the other tests of them look at. It makes
# way for whatever runs beside it. Usage: debian_build.sh
set -eu
cd "$(dirname "$(readlink -f "$0")")/../.."
command -v dpkg-shlibdeps >/dev/null || { echo "SKIPPED: this is no Debian"; exit 77; }
nice -n 19 packaging/build.sh debian
