#!/usr/bin/env bash
# Starts veltrin.exe under Wine in a virtual desktop, opens the report of the system from About,
# runs it, saves it, and finds no printer to print it on.
# Usage: report.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

# Wine's printers are those of a print server, and none answers here.
export CUPS_SERVER=$work/no-server

button_count() { buttons | wc -l; }
has_exactly() { [ "$(button_count)" -eq "$1" ]; }
has_saved() { compgen -G "$work/SystemInfo (*.txt" >/dev/null; }

# The entry of the report window's menu, by its place from the top.
choose() {
  local step
  xdotool key alt
  sleep 0.5
  for ((step = 0; step < $1; ++step)); do xdotool key Down; done
  xdotool key Return
}

start_program
xdotool mousemove 5 5
sleep 1
menu=$(buttons)

# About is pale and is not found by its colour: it stands below the seventh button.
read -r left top <<<"$(sed -n 7p <<<"$menu")"
click $((left + 35)) $((top + 149))
sleep 2
look about
xdotool key Tab space
await "the report window" 60 has_tool_buttons 1
xdotool mousemove 5 5
sleep 1
get_info=$(tool_buttons | tail -n 1)
click $get_info
xdotool mousemove 5 5
sleep 8
look report
alone=$(button_count)

choose 1
await "the saved report" 60 has_saved
await "the message about it" 20 has_exactly $((alone + 1))
look report-saved
xdotool key Return
await "the end of the message" 20 has_exactly "$alone"
grep -q "Operating System" "$work"/SystemInfo*.txt || fail "The report is not in its file"

choose 2
await "the print window" 60 has_exactly $((alone + 2))
look print
xdotool key Return
sleep 3
look print-no-printer
xdotool key Return
sleep 1
xdotool key Escape
await "the end of the print window" 20 has_exactly "$alone"

xdotool key alt+F4
sleep 1
xdotool key Escape
await "the menu alone" 20 has_exactly "$(wc -l <<<"$menu")"
look report-closed
