#!/usr/bin/env bash
# Starts veltrin.exe under Wine in a virtual desktop, opens the Ping Test by the menu,
# runs one pass against 127.0.0.1 with Wine's own ping, copies and saves the report,
# and looks at the file. Usage: ping_test.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
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
has_file() { compgen -G "$work/PingTest_*.txt" >/dev/null; }
click() { xdotool mousemove "$1" "$2" sleep 0.1 click 1; }
# The tool's button of that number.
press() { click $(tool_buttons | sed -n "$1p"); }

for part in veltrin.exe files help icons installation.ini; do cp -r "$program_folder/$part" "$work"; done
{
  printf '[Ping]\r\nPasses=1\r\nPacket=32\r\n'
  for row in 1 2 3 4 5; do printf 'Pingit %d=127.0.0.1\r\n' "$row"; done
} >"$work/files/Veltrin.dat"

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
click $(sed -n 1p <<<"$menu")
await "the window" 60 has_tool_buttons 2
sleep 1
look idle

press 1
sleep 2
look running
xdotool mousemove 5 5
# Copy and Save can be clicked once the pass is complete.
await "the end of the pass" 120 has_tool_buttons 4
look complete

before=$(buttons | wc -l)
press 2
await "the message of the copy" 20 eval '[ "$(buttons | wc -l)" -ne "$before" ]'
look copied
xdotool key Return
sleep 1
xdotool mousemove 5 5
await "the window behind the message" 20 has_tool_buttons 4
press 3
await "the saved file" 20 has_file
sleep 1
look saved
xdotool key Return

report=$(cat "$work"/PingTest_*.txt)
printf '%s\n' "$report"
case $report in
  'Ping Test   -   Date: '*) ;;
  *) fail "the report does not begin as one" ;;
esac
rows=$(grep -c '^127\.0\.0\.1   [0-9]* (Low)     [0-9]* (Aver)     [0-9]* (High)     0 (PacketLoss)' <<<"$report" || true)
[ "$rows" -eq 5 ] || fail "$rows of 5 destinations answered"
