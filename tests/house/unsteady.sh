#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# That tools/unsteady.py lets the processes of a name stand still, and only these, hands on the
# exit code and leaves nothing behind. Usage: unsteady.sh SOURCES. Ends with 77 where it may not
# freeze processes.
set -euo pipefail
unsteady() { python3 "$sources/tools/unsteady.py" "$@"; }
fail() {
  echo "unsteady.sh: $*" >&2
  exit 1
}
sources=$1
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT

unsteady 1 nobody 1 1 true >"$room/words" 2>&1 || {
  grep -q "may be changed" "$room/words" || fail "$(cat "$room/words")"
  cat "$room/words"
  exit 77
}

# A program that tells the longest time in ms that it was not let run, within two seconds. The
# name of a process is that of its file.
cat >"$room/beat" <<'PROGRAM'
#!/usr/bin/python3
import time
longest, last = 0, time.monotonic()
end = last + 2
while last < end:
    time.sleep(0.001)
    now = time.monotonic()
    longest, last = max(longest, now - last), now
print(round(longest * 1000))
PROGRAM
chmod +x "$room/beat"
stillness() { unsteady 2 "$1" 1200 1000 "$room/beat" 2>/dev/null; }

[ "$(stillness beat)" -ge 1500 ] || fail "a process was not stopped"
[ "$(stillness eat)" -lt 1500 ] || fail "a process of another name was stopped"

code=0
unsteady 1 nobody 1 1 sh -c 'exit 7' 2>/dev/null || code=$?
[ "$code" = 7 ] || fail "the exit code was $code and not 7"

! ls -d /sys/fs/cgroup/unsteady-* /sys/fs/cgroup/*/unsteady-* 2>/dev/null ||
  fail "these groups were left behind"
