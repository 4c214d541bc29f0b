#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a program on an X server and with a window manager of its own.
# Usage: on_x11.sh PROGRAM [WORD...]
set -eu
export QT_QPA_PLATFORM=xcb

children=()
folder=$(mktemp -d)
end() {
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap end EXIT

# Asks a question, a command, until it is answered with success.
await() {
  local rounds=300
  while ! "$@"; do
    rounds=$((rounds - 1))
    [ "$rounds" -gt 0 ] || { echo "in vain: $*" >&2; exit 1; }
    sleep 0.1
  done
}
is_managed() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

# The server itself finds a free number and tells it: tests run side by side.
Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp -noreset 3>"$folder/display" 2>/dev/null &
children+=($!)
await test -s "$folder/display"
DISPLAY=:$(cat "$folder/display")
export DISPLAY
openbox >/dev/null 2>&1 &
children+=($!)
# A window that comes while the manager starts may never be shown.
await is_managed
"$@"
