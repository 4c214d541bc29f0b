#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Windows installer once more, from a copy of the sources in another folder and by
# the one command that makes it, and compares it with the one that windows_installer.sh made of
# the tests' own build: they are the same to the byte.
#
# One source of twelve, or each with VELTRIN_COMPILE_ALL=1, is compiled without the compiler
# cache; the others come from it where it holds them, which shows that nothing of the folder is
# in them. Linking, pictures and packing are done anew unless nothing has changed since they were
# found the same.
# Usage: windows_same_bytes.sh BUILD-FOLDER
set -euo pipefail
build=$(readlink -f "$1")
sources=$(readlink -f "$(dirname "$(readlink -f "$0")")/../..")
. "$sources/tests/packaging/verdict.sh"
command -v makensis >/dev/null || { echo "SKIPPED: there is no makensis (package nsis)"; exit 77; }

fail() {
  printf 'FAILED: %s\n' "$1" >&2
  exit 1
}
shopt -s nullglob
first=("$build"/packages/veltrin-*-setup.exe)
[ ${#first[@]} -eq 1 ] || fail "there is no first installer in $build/packages"
verdict=$(verdict_of "$sources" "${first[0]}")
end_if_found "$verdict"

copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
tar -C "$sources" -c --exclude=./build --exclude=./.git . | tar -C "$copy" -x
cd "$copy"
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-1700000000}

second=build/package-windows
if [ -z "${VELTRIN_COMPILE_ALL:-}" ]; then
  { cmake --preset windows -B "$second" -DVELTRIN_WINDOW=ON -DVELTRIN_TESTS=OFF &&
    cmake --build "$second"; } >"$copy/words" 2>&1 ||
    { tail -n 30 "$copy/words"; fail "the copy cannot be built"; }
  mapfile -t anew < <(find "$second" -name '*.obj' | LC_ALL=C sort | awk 'NR % 12 == 0')
  [ ${#anew[@]} -gt 0 ] || fail "there is nothing to compile anew"
  rm "${anew[@]}"
fi
CCACHE_DISABLE=1 packaging/build.sh windows >"$copy/words" 2>&1 ||
  { tail -n 30 "$copy/words"; fail "the second installer cannot be made"; }

# The parts before the whole, so that the words tell where they differ.
diff -rq "$build/installer" "$second/installer" || fail "what the two installers hold differs"
cmp "${first[0]}" "$second/packages/$(basename "${first[0]}")" || fail "the two installers differ"
printf 'The same to the byte: %s, %s bytes\n' "$(basename "${first[0]}")" "$(stat -c %s "${first[0]}")"
remember_verdict "$verdict"
