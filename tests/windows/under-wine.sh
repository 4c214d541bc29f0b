#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a Windows program under Wine in a prefix of the tests' own, as Wine makes no
# windows without a screen on that of VELTRIN_WINE_DISPLAY, or on one of its own where
# there is none.
set -eu
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"
export WINEPREFIX="${VELTRIN_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/wine}"
mkdir -p "$WINEPREFIX"
(
  flock 9
  [ -e "$WINEPREFIX/system.reg" ] || { wineboot --init >/dev/null 2>&1; wineserver -w; }
) 9>"$WINEPREFIX/.lock"

screen=()
[ -z "${VELTRIN_WINE_DISPLAY:-}" ] || export DISPLAY=$VELTRIN_WINE_DISPLAY
[ -n "${DISPLAY:-}" ] || screen=(xvfb-run -a -s "-screen 0 1024x768x24 -nolisten tcp")

# Services of Wine that the program starts outlive it and keep its output open: a
# file does not mind, and whoever waits for a pipe's end would wait for ever.
output=$(mktemp)
trap 'rm -f "$output"' EXIT
code=0
"${screen[@]}" wine "$@" >"$output" 2>&1 </dev/null || code=$?
cat "$output"
exit "$code"
