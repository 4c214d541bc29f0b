#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian packages a second time, from a copy of the sources in a folder of another name
# and depth, in another time zone and with files that nobody else may read, and compares them with
# the first ones byte by byte. The copy stays, so that a later run compiles what has changed only;
# packages of an earlier run are not looked at.
#
# One source of twelve, or each with VELTRIN_COMPILE_ALL=1, is compiled without the compiler
# cache; the others come from it where it holds them, which shows that nothing of the folder is
# in them. Linking, pictures and packing are done anew unless nothing has changed since they were
# found the same.
# Usage: debian_same_bytes.sh FOLDER_OF_THE_PACKAGES FOLDER_FOR_THE_COPY
set -eu
cd "$(dirname "$(readlink -f "$0")")/../.."
packages=$(readlink -f "$1")
mkdir -p "$2"
again=$(readlink -f "$2")/again
command -v dpkg-shlibdeps >/dev/null || { echo "SKIPPED: this is no Debian"; exit 77; }
. tests/packaging/verdict.sh
verdict=$(verdict_of . "$packages"/*.deb)
end_if_found "$verdict"

umask 077
mkdir -p "$again"
mapfile -t files < <(sources_of .)
(cd "$again" && find . -path ./build -prune -o -type f -printf '%P\n') |
  grep -vxF -f <(printf '%s\n' "${files[@]}") | while IFS= read -r gone; do rm -f "$again/$gone"; done
cp -u --preserve=timestamps --parents -t "$again" "${files[@]}"

again() { TZ=Pacific/Kiritimati LC_ALL=C.UTF-8 nice -n 19 "$again/packaging/build.sh" debian; }
if [ -n "${VELTRIN_COMPILE_ALL:-}" ]; then
  rm -rf "$again/build/package"
else
  again >/dev/null
  mapfile -t anew < <(find "$again/build/package" -name '*.o' | LC_ALL=C sort | awk 'NR % 12 == 0')
  [ ${#anew[@]} -gt 0 ] || { echo "FAILED: there is nothing to compile anew" >&2; exit 1; }
  rm "${anew[@]}"
fi
CCACHE_DISABLE=1 again

differs=
for package in "$packages"/*.deb; do
  second=$again/build/package/packages/${package##*/}
  if cmp "$package" "$second"; then
    echo "The same bytes: ${package##*/}, $(stat -c %s "$package") of them"
    continue
  fi
  differs=yes
  for one in "$package" "$second"; do
    rm -rf "$2/apart/${one//\//_}"
    mkdir -p "$2/apart"
    dpkg-deb -R "$one" "$2/apart/${one//\//_}"
  done
  diff -rq "$2/apart/${package//\//_}" "$2/apart/${second//\//_}" || true
  diff <(dpkg-deb -c "$package") <(dpkg-deb -c "$second") || true
done
names() { (cd "$1" && echo *.deb); }
[ "$(names "$packages")" = "$(names "$again/build/package/packages")" ] || differs=yes
[ -z "$differs" ] || { echo "FAILED: packages that are made twice differ" >&2; exit 1; }
remember_verdict "$verdict"
