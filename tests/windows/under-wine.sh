#!/usr/bin/env bash
# Runs a Windows program under Wine in a prefix of the tests' own.
set -eu
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"
export WINEPREFIX="${VELTRIN_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/wine}"
mkdir -p "$WINEPREFIX"
(
  flock 9
  [ -e "$WINEPREFIX/system.reg" ] || { wineboot --init >/dev/null 2>&1; wineserver -w; }
) 9>"$WINEPREFIX/.lock"
exec wine "$@"
