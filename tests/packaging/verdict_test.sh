#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# A verdict of the tests that make packages twice is found again with nothing changed, and only
# then. Usage: verdict_test.sh
set -eu
. "$(dirname "$(readlink -f "$0")")/verdict.sh"
command -v dpkg-query >/dev/null || { echo "SKIPPED: this is no Debian"; exit 77; }
unset VELTRIN_COMPILE_ALL
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
export XDG_CACHE_HOME=$room/cache
mkdir "$room/sources"
echo one >"$room/sources/source with a space"
echo two >"$room/package"

# "again" when the test would be made, "found" when its verdict is known.
answer() (
  end_if_found "$(verdict_of "$room/sources" "$room/package")" >"$room/words"
  echo again
)
expect() {
  local got
  got=$(answer)
  [ "${got:-found}" = "$2" ] || { echo "FAILED: $1: ${got:-found} instead of $2" >&2; exit 1; }
}

expect "nothing was found yet" again
remember_verdict "$(verdict_of "$room/sources" "$room/package")"
expect "nothing has changed" found
VELTRIN_COMPILE_ALL=1 expect "all is to be compiled" again
echo three >"$room/package"
expect "the package is another" again
echo two >"$room/package"
expect "the package is the first again" found
echo more >>"$room/sources/source with a space"
expect "a source is another" again
echo one >"$room/sources/source with a space"
touch "$room/sources/new"
expect "there is one source more" again
rm "$room/sources/new"
# Other tools on the system.
dpkg-query() { echo "a compiler of another version"; }
expect "a tool is another" again
unset -f dpkg-query
expect "all is as it was" found

touch -d '40 days ago' "$room/cache/veltrin/same-bytes/old"
remember_verdict "$room/cache/veltrin/same-bytes/new"
[ ! -e "$room/cache/veltrin/same-bytes/old" ] || { echo "FAILED: an old mark stays" >&2; exit 1; }
expect "a mark that is asked for stays" found
