#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a Windows program under Wine in a prefix of the tests' own, as Wine makes no
# windows without a screen on that of VELTRIN_WINE_DISPLAY, or on one of its own where
# there is none. With VELTRIN_WINE_DPI it is always one of its own, with so many dots an inch: 96
# are 100 percent.
set -eu
. "$(dirname "$(readlink -f "$0")")/prefix.sh"

# Services of Wine that the program starts outlive it and keep its output open: a
# file does not mind, and whoever waits for a pipe's end would wait for ever.
output=$(mktemp)
own_prefix=
end() {
  [ -z "$own_prefix" ] || end_own_prefix
  rm -f "$output"
}
trap end EXIT

if [ -n "${VELTRIN_WINE_DPI:-}" ]; then
  own_prefix=$(mktemp -d)
  take_own_prefix "$own_prefix" "$VELTRIN_WINE_DPI"
  unset DISPLAY VELTRIN_WINE_DISPLAY
else
  make_prefix
fi

screen=()
[ -z "${VELTRIN_WINE_DISPLAY:-}" ] || export DISPLAY=$VELTRIN_WINE_DISPLAY
[ -n "${DISPLAY:-}" ] || screen=(xvfb-run -a -s "-screen 0 1024x768x24 -nolisten tcp -noreset")

code=0
"${screen[@]}" wine "$@" >"$output" 2>&1 </dev/null || code=$?
cat "$output"
exit "$code"
