#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Whether every benchmark is built, and whether their rows become the table of a document.
#
#   bench/table_test.sh BUILD-FOLDER
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/common.sh
. bench/table.sh

# same WHAT EXPECTED SEEN
same() { [ "$2" = "$3" ] || fail "$1 should be: $2"$'\n'"but is: $3"; }

mapfile -t names < <(benchmarks)
[ ${#names[@]} -gt 10 ] || fail "Only ${#names[@]} benchmarks were found."
for name in "${names[@]}"; do
  [ -x "$1/bench/$name" ] || fail "$name is not built: bench/CMakeLists.txt forgets it."
done

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
rows_of quick_bench >"$folder/rows" <<'END'
some words | of a person
| One thing | 1.00 s | another: 2.00 s | 0.5 | 1.00 or less | met |
END
same "The row" '| One thing | 1.00 s | another: 2.00 s | 0.5 | 1.00 or less | met | `quick_bench` |' \
  "$(cat "$folder/rows")"

table_of "$folder/rows" >"$folder/table"
printf 'Before\n<!-- figures begin -->\nold\n<!-- figures end -->\nBehind\n' >"$folder/document"
put_between "$folder/document" "$folder/table"
same "The document" 'Before
<!-- figures begin -->

| What | Ours | Beside what | Ratio | Goal | Is met | By |
|---|---|---|---|---|---|---|
| One thing | 1.00 s | another: 2.00 s | 0.5 | 1.00 or less | met | `quick_bench` |

<!-- figures end -->
Behind' "$(cat "$folder/document")"

cp "$folder/document" "$folder/again"
put_between "$folder/again" "$folder/table"
same "The document, written again," "$(cat "$folder/document")" "$(cat "$folder/again")"

printf 'No marks\n' >"$folder/unmarked"
if (put_between "$folder/unmarked" "$folder/table") 2>/dev/null; then
  fail "A document without marks was written."
fi
same "The document without marks" 'No marks' "$(cat "$folder/unmarked")"
say "The table is made of ${#names[@]} benchmarks."
