#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts veltrin.exe under Wine in a virtual desktop, opens the Ping Test by the menu,
# runs one pass against 127.0.0.1 with Wine's own ping, copies and saves the report,
# and looks at the file. Usage: ping_test.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

has_file() { compgen -G "$work/PingTest_*.txt" >/dev/null; }
# The tool's button of that number.
press() { click $(tool_buttons | sed -n "$1p"); }

{
  printf '[Ping]\r\nPasses=1\r\nPacket=32\r\n'
  for row in 1 2 3 4 5; do printf 'Pingit %d=127.0.0.1\r\n' "$row"; done
} >"$work/files/Veltrin.dat"

start_program ""
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
