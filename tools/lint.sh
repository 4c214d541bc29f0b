#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Holds the sources to .clang-format and .clang-tidy, and all files to their licence.
#
#   tools/lint.sh format   the layout of every source file
#   tools/lint.sh tidy     clang-tidy over what build/asan compiles
#   tools/lint.sh licence  the line that tells the licence at the head of every file
#   tools/lint.sh          all three
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

# The files that REUSE.toml speaks for have no room for the line.
licence() {
  local without
  without=$(find . -type f ! -path './build/*' ! -path './.git/*' ! -path './tests/fuzz/corpus/*' \
    ! -name '*.json' ! -name '*.machine' ! -name '*.png' ! -name '*.report' ! -path ./LICENSE \
    ! -path ./packaging/debian/changelog.in ! -path ./packaging/debian/copyright \
    ! -path ./packaging/windows/qt-more.txt -print0 |
    xargs -0 grep -LF 'SPDX-License-Identifier: GPL-3.0-or-later' || true)
  [ -z "$without" ] || fail "No line \"SPDX-License-Identifier: GPL-3.0-or-later\" at the head of: $without"
  say "Every file tells its licence."
}

case ${1:-all} in
  format) format ;;
  tidy) tidy "${2:-}" ;;
  licence) licence ;;
  all) format; licence; tidy ;;
  *) fail "Usage: tools/lint.sh [format | licence | tidy [BUILD-FOLDER]]" ;;
esac
