#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Takes all figures: builds the benchmarks, runs each beside its peer, in the lab where it
# has to be, prints one table of what they found, and writes it into docs/performance.md with
# the facts of the machine. A whole run takes ten minutes behind the build and wants a machine
# that does nothing else; desk_hour_bench takes an hour and is run by its name alone. It ends
# with 0 when all have run, whatever they found; what falls short of its goal, and a peer that
# is not here, are told in their row.
#
#   bench/run.sh                       all benchmarks
#   bench/run.sh NAME...               some; only prints
#   bench/run.sh --smoke FOLDER NAME   one of a build folder's, as small as it can: that is
#                                      how the tests see that it works and gives a row
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/common.sh
. bench/table.sh

rows=$(mktemp)
printed=$(mktemp)
trap 'rm -f "$rows" "$printed"' EXIT

# run_one FOLDER NAME [WORD...]: runs a benchmark, shows what it prints, and adds its rows.
# Its exit code is the benchmark's; EXIT_FAILURE also where it gave no row.
run_one() {
  local folder=$1 name=$2 code=0 command=()
  shift 2
  if [ $# = 0 ] && [ -n "$(scenario_of "$name")" ]; then
    command=("$folder/bin/lab" "$(scenario_of "$name")" --)
  fi
  command+=("$folder/bench/$name" "$@")
  "${command[@]}" | tee "$printed" || code=${PIPESTATUS[0]}
  rows_of "$name" <"$printed" >>"$rows"
  if [ "$code" != "$cannot_run" ] && ! grep -q "^| .* |\$" "$printed"; then
    say "$name has given no row of the table."
    return 1
  fi
  return "$code"
}

if [ "${1:-}" = --smoke ]; then
  [ $# = 3 ] || fail "Usage: bench/run.sh --smoke FOLDER NAME"
  run_one "$2" "$3" --smoke
  exit
fi

need cmake ninja g++ pkg-config
mapfile -t names < <(benchmarks)
[ $# = 0 ] || names=("$@")
facts=$(machine)
cmake --preset bench >/dev/null
targets=("${names[@]}")
for name in "${names[@]}"; do
  [ -z "$(scenario_of "$name")" ] || targets+=(lab)
done
cmake --build --preset bench --target "${targets[@]}"

broken=()
for name in "${names[@]}"; do
  say "$name"
  code=0
  run_one build/linux "$name" || code=$?
  case $code in
    0 | "$goal_missed") ;;
    "$cannot_run") grep -qF "\`$name\` |" "$rows" ||
      printf '| All of it | not measured | cannot run here | | | | `%s` |\n' "$name" >>"$rows" ;;
    *) broken+=("$name") ;;
  esac
done

table=$(mktemp)
trap 'rm -f "$rows" "$printed" "$table"' EXIT
{
  printf '%s\n\n' "$facts"
  table_of "$rows"
} >"$table"
cat "$table"
if [ ${#broken[@]} -gt 0 ]; then
  fail "These have not worked, and no document was written: ${broken[*]}"
fi
[ $# -gt 0 ] || put_between docs/performance.md "$table"
