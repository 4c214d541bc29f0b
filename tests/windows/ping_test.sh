#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts veltrin.exe under Wine in a virtual desktop, opens the Ping Test by the menu,
# runs one pass against 127.0.0.1 with Wine's own ping, copies and saves the report,
# and looks at the file. Usage: ping_test.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

has_file() { compgen -G "$work/PingTest_*.txt" >/dev/null; }

{
  printf '[Ping]\r\nPasses=1\r\nPacket=32\r\n'
  for row in 1 2 3 4 5; do printf 'Pingit %d=127.0.0.1\r\n' "$row"; done
} >"$work/files/Veltrin.dat"

start_program ""
open_tool 1 "Ping Test"
await "its buttons" 60 has_buttons_in "$tool" 2
look idle

press_in "$tool" 1
leave
look running
# Copy and Save can be clicked once the pass is complete.
await "the end of the pass" 120 has_buttons_in "$tool" 4
look complete

press_in "$tool" 2
await "the message of the copy" 60 has_windows "Ping Test" 2
look copied
answer_message "Ping Test" 1
press_in "$tool" 3
await "the saved file" 60 has_file
await "the message about it" 60 has_window PingTest
look saved
answer_message PingTest 0

report=$(cat "$work"/PingTest_*.txt)
printf '%s\n' "$report"
case $report in
  'Ping Test   -   Date: '*) ;;
  *) fail "the report does not begin as one" ;;
esac
rows=$(grep -c '^127\.0\.0\.1   [0-9]* (Low)     [0-9]* (Aver)     [0-9]* (High)     0 (PacketLoss)' <<<"$report" || true)
[ "$rows" -eq 5 ] || fail "$rows of 5 destinations answered"
