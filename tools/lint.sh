#!/usr/bin/env bash
# Holds the sources to .clang-format and .clang-tidy.
#
#   tools/lint.sh format   the layout of every source file
#   tools/lint.sh tidy     clang-tidy over what build/asan compiles
#   tools/lint.sh          both
#
# tools/lint.sh tidy [BUILD-FOLDER] takes another build folder than build/asan. What
# was found clean is remembered in the user's cache folder, so that the next run,
# from whichever checkout, looks at changed files only.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/common.sh

format() {
  need clang-format
  local sources
  mapfile -d '' sources < <(find src machine console lab tools tests bench -name '*.cpp' -print0 -o -name '*.h' -print0)
  clang-format --dry-run -Werror "${sources[@]}" ||
    fail "The layout of the files above is not clang-format's. Mend it with: clang-format -i FILE"
  say "The layout of ${#sources[@]} files is right."
}

tidy() {
  need clang-tidy clang++ python3 ninja
  python3 tools/tidy.py "${1:-build/asan}" "${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/lint"
}

case ${1:-all} in
  format) format ;;
  tidy) tidy "${2:-}" ;;
  all) format; tidy ;;
  *) fail "Usage: tools/lint.sh [format | tidy [BUILD-FOLDER]]" ;;
esac
