# SPDX-License-Identifier: GPL-3.0-or-later
# The Windows program under Wine on a screen of its own, for the scripts that work it. Takes the
# folder of the program and one for pictures; sets `work`, the program's folder here.
set -eu
program_folder=$1
pictures=$2
here=$(dirname "$(readlink -f "$0")")

work=$(mktemp -d)
children=()
end() {
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$work"
}
trap end EXIT

fail() {
  printf 'FAILED: %s\n' "$1" >&2
  look failed || true
  exit 1
}

# A picture of the screen under the given name.
look() {
  mkdir -p "$pictures"
  import -window root "$pictures/windows-$1.png"
}

# Places of the buttons that can be clicked, row by row from the left.
buttons() { import -window root -depth 8 rgb:- | python3 "$here/find_buttons.py" 900; }

# Those that were not there before the tool was opened.
menu=
tool_buttons() { buttons | grep -vxF -e "$menu" || true; }

# Waits until the question, a command, is answered with success.
await() {
  local what=$1 rounds=$2
  shift 2
  while ! "$@"; do
    rounds=$((rounds - 1))
    [ "$rounds" -gt 0 ] || fail "$what did not come"
    sleep 0.5
  done
}

has_buttons() { [ "$(buttons | wc -l)" -ge "$1" ]; }
has_tool_buttons() { [ "$(tool_buttons | wc -l)" -ge "$1" ]; }
click() { xdotool mousemove "$1" "$2" sleep 0.1 click 1; }

for part in veltrin.exe files help icons installation.ini; do cp -r "$program_folder/$part" "$work"; done

# Starts the program in a virtual desktop and waits for its menu, whose buttons are then
# `menu`. What stands in $work before is what the program finds.
start_program() {
  number=120
  while [ -e "/tmp/.X$number-lock" ]; do number=$((number + 1)); done
  export DISPLAY=":$number"
  unset VELTRIN_WINE_DISPLAY
  Xvfb "$DISPLAY" -screen 0 900x640x24 -nolisten tcp >/dev/null 2>&1 &
  children+=($!)
  await "a screen" 20 test -e "/tmp/.X11-unix/X$number"

  "$here/under-wine.sh" explorer "/desktop=veltrin$number,900x640" \
    "Z:${work//\//\\}\\veltrin.exe" >/dev/null 2>&1 &
  children+=($!)
  # Wine has no counter of the processor's idle time; the program tells that and goes on.
  await "the message about the counters" 120 has_buttons 1
  look splash
  xdotool key Return
  await "the menu" 60 has_buttons 3
  sleep 1
  look menu
  menu=$(buttons)
}
