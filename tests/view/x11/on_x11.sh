#!/usr/bin/env bash
# Runs a program on an X server and with a window manager of its own.
# Usage: on_x11.sh PROGRAM [WORD...]
set -eu
export QT_QPA_PLATFORM=xcb
# The words are the inner shell's affair.
# shellcheck disable=SC2016
exec xvfb-run -a -s "-screen 0 1600x1200x24 -nolisten tcp" bash -c '
  openbox >/dev/null 2>&1 &
  manager=$!
  code=0
  "$@" || code=$?
  kill "$manager"
  exit "$code"' on_x11 "$@"
