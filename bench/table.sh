# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# The table of all figures: which benchmarks there are, how each is run, what they print and
# where it stands. To be sourced by bash with the project's folder as the current one.

# What a benchmark's exit code says, as bench/table.h has it: that a goal is missed, and that
# it or a peer cannot run here.
# shellcheck disable=SC2034
goal_missed=2 cannot_run=77

# benchmarks: the names of all that the table is made of. The one that takes an hour is run by
# its name.
benchmarks() {
  local source
  for source in bench/*_bench.cpp; do basename "$source" .cpp; done | grep -vx desk_hour_bench
}

# scenario_of NAME: the scenario of the lab inside which a benchmark is run; none for most.
scenario_of() {
  case $1 in
    start_bench | outage_bench | monitor_bench) echo clean-15 ;;
    desk_hour_bench) echo bench/desk_hour.ini ;;
  esac
}

# rows_of NAME: the rows of the table in what a benchmark printed, with its name behind them.
rows_of() { sed -n "s/^| .* |\$/& \`$1\` |/p"; }

# table_of ROWS: the table that the rows of a file make.
table_of() {
  printf '| What | Ours | Beside what | Ratio | Goal | Is met | By |\n|---|---|---|---|---|---|---|\n'
  cat "$1"
}

# put_between DOCUMENT PART: replaces what stands between the two marks of a document by a
# file, with an empty line at both ends.
put_between() {
  local whole
  whole=$(mktemp)
  if ! awk -v part="$2" '
    /^<!-- figures begin -->$/ {
      print $0 "\n"
      while ((getline line < part) > 0) print line
      inside = 1
      began = 1
    }
    /^<!-- figures end -->$/ { if (inside) { print ""; ended = 1 } inside = 0 }
    !inside && !/^<!-- figures begin -->$/
    END { exit !(began && ended) }' "$1" >"$whole"; then
    rm -f "$whole"
    fail "$1 has not both marks of the table."
  fi
  cat "$whole" >"$1"
  rm -f "$whole"
}

# machine: what the figures were taken on, and when.
machine() {
  awk -F ': ' '/^model name/ { print "- Processor: " $2; exit }' /proc/cpuinfo
  echo "- Cores: $(nproc)"
  awk '/^MemTotal:/ { printf "- Memory: %.1f GB\n", $2 / 1e6 }' /proc/meminfo
  echo "- Kernel: $(uname -sr)"
  echo "- Compiler: $(g++ --version | head -n 1)"
  echo "- Qt: $(pkg-config --modversion Qt6Core)"
  echo "- Load before the run: $(cut -d ' ' -f 1 /proc/loadavg)"
  echo "- Date: $(date +%F)"
}
