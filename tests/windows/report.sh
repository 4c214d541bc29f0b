#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts veltrin.exe under Wine in a virtual desktop, opens the report of the system from About,
# runs it, saves it, runs it with all of its sections, compares what it saved then with what
# Wine's own tool gets from the same service, and finds no printer to print it on.
# Usage: report.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

# Wine's printers are those of a print server, and none answers here.
export CUPS_SERVER=$work/no-server

button_count() { buttons | wc -l; }
has_exactly() { [ "$(button_count)" -eq "$1" ]; }
has_saved() { compgen -G "$work/SystemInfo (*.txt" >/dev/null; }

# The first value of a property that Wine's service tells of a class; empty when the class is
# unknown to it, has no objects, or not that property. The tool prints two bytes a letter.
told() {
  "$here/under-wine.sh" wmic path "$1" get "$2" 2>/dev/null | tr -d '\0\r\377\376' |
    awk -v name="$2" 'found { sub(/ +$/, ""); print; exit } tolower($1) == tolower(name) { found = 1 }'
}

# The sections of a whole report in their order, by their headings.
headings=("Operating System" Processors Cache "Physical Memory" MotherBoard "Video Card" Monitor
  Sound Keyboard "Mouse - Pointer" Printer "Net Card" USB "PnP Signed" System DeskTOP "Start UP"
  "System Drivers" "Installed Software" Users "HOT Fixes" "Windows Errors")

# The lines of a section in the last of the runs: those behind its heading, up to the heading of
# the next. Fails when the last run lacks the heading.
section() {
  local next='' at
  for at in "${!headings[@]}"; do
    [ "${headings[at]}" != "$1" ] || next=${headings[at + 1]:-}
  done
  awk -v first="${headings[0]}" -v heading="$1" -v next_heading="$next" '
    $0 == first { lines = ""; inside = 0; found = 0 }
    inside && next_heading != "" && $0 == next_heading { inside = 0 }
    inside { lines = lines $0 "\n" }
    !found && $0 == heading { found = inside = 1 }
    END { printf "%s", lines; exit !found }' "$report"
}

# A section of the report holds a line with that value of the class: what stands before it, and
# behind. Where the service tells none there is no such line, and that is said.
expect_line() {
  local value
  value=$(told "$2" "$3")
  if [ -z "$value" ]; then
    printf 'not compared: the service here tells no %s of %s\n' "$3" "$2"
    silent=$((silent + 1))
    return
  fi
  # Blanks at the ends are not told by the tool.
  section "$1" | sed 's/ *$//' | grep -xF -- "$(sed 's/ *$//' <<<"$4$value$5")" >/dev/null ||
    fail "the section $1 lacks the line \"$4$value$5\" of $2"
  printf 'found: "%s"\n' "$4$value$5"
  compared=$((compared + 1))
}

# Nothing has moved on the screen for two seconds.
is_still() {
  local before
  before=$(import -window root rgb:- | md5sum)
  sleep 2
  [ "$before" = "$(import -window root rgb:- | md5sum)" ]
}

start_program ""
open_below 35 149 About
look about
repeat "the report window" has_window "Detailed System Information" -- press_link
window=$(window_of "Detailed System Information")
leave
await "its button" 60 has_tool_buttons 1
get_info=$(tool_buttons | tail -n 1)
click $get_info
xdotool mousemove 5 5
sleep 4
await "the end of the run" 240 is_still
look report
alone=$(button_count)

choose 1
await "the saved report" 60 has_saved
await "the message about it" 60 has_exactly $((alone + 1))
look report-saved
repeat "the end of the message" has_exactly "$alone" -- press_newest_but "$window"
leave
grep -q "Operating System" "$work"/SystemInfo*.txt || fail "The report is not in its file"

# All of the sections. ALL stands above the button, at its left.
rm "$work"/SystemInfo*.txt
read -r left top <<<"$get_info"
click $((left - 59)) $((top - 28))
sleep 1
click $get_info
xdotool mousemove 5 5
sleep 8
await "the end of the run" 240 is_still
look report-all
xdotool mousemove $((left - 400)) $((top - 200)) click --repeat 8 --delay 100 5
sleep 1
look report-all-devices
xdotool mousemove 5 5
choose 1
await "the saved report of all" 60 has_saved
await "the message about it" 60 has_exactly $((alone + 1))
repeat "the end of the message" has_exactly "$alone" -- press_newest_but "$window"
leave
# Text behind text: the first run, which had fewer sections, is in the file as well.
report=$work/all.txt
tr -d '\r' <"$(compgen -G "$work/SystemInfo (*.txt")" >"$report"
cp "$report" "$pictures/windows-report-all.txt"

for heading in "${headings[@]}"; do
  section "$heading" >/dev/null || fail "the report lacks the heading $heading"
done
compared=0
silent=0
unnamed=0 # lines of a graphics card that cannot be compared
expect_line Processors Win32_Processor Name "Name: " ""
expect_line Processors Win32_Processor Manufacturer "    Manufacturer: " ""
expect_line Processors Win32_Processor DataWidth "    DataWidth: " ""
expect_line Cache Win32_CacheMemory Level "    Level: " ""
# A slot of memory is shown when its place begins with "A".
case $(told Win32_PhysicalMemory DeviceLocator) in
  A*)
    section "Physical Memory" | grep "^   Slot 1:   " >/dev/null ||
      fail "the report lacks the first slot of memory"
    compared=$((compared + 1))
    ;;
  *)
    printf 'not compared: the service here tells no DeviceLocator of Win32_PhysicalMemory with an A\n'
    silent=$((silent + 1))
    ;;
esac
expect_line MotherBoard Win32_SystemSlot SlotDesignation "    " ""
expect_line MotherBoard Win32_IDEController Name "       Name: " ""
expect_line MotherBoard Win32_FloppyController Caption "   " ""
# Where Wine's graphics do not answer a program in time, as on a busy machine, its service calls
# the card by its number to that program. Then its name cannot be compared.
if [ "$(told Win32_VideoController Caption)" = VideoController1 ] ||
  section "Video Card" | grep VideoController1 >/dev/null; then
  printf 'not compared: the service here calls the graphics card by its number\n'
  unnamed=2
else
  expect_line "Video Card" Win32_VideoController Caption "" " "
  expect_line "Video Card" Win32_VideoController VideoProcessor "    " ""
fi
expect_line "Video Card" Win32_VideoController CurrentBitsPerPixel "    Bits Per Pixel: " ""
expect_line Monitor Win32_DesktopMonitor Description "" ""
expect_line Sound Win32_SoundDevice Name "    " ""
expect_line Keyboard Win32_Keyboard Name "" ""
expect_line "Mouse - Pointer" Win32_PointingDevice Description "" ""
expect_line Printer Win32_Printer Name "    Name: " ""
expect_line USB Win32_USBHub Description "" ""
expect_line "PnP Signed" Win32_PnPSignedDriver Description "" ""
expect_line System Win32_ComputerSystem Description "    Description: " ""
expect_line System Win32_ComputerSystem Domain "    Domain: " ""
expect_line System Win32_ComputerSystem Model "    Model: " ""
expect_line System Win32_ComputerSystem Name "    Name: " ""
expect_line DeskTOP Win32_Desktop Name "Name: " " "
expect_line "Start UP" Win32_StartupCommand Caption "Name: " ""
expect_line "System Drivers" Win32_SystemDriver Name "" ""
expect_line "Installed Software" Win32_Product Name "" ""
expect_line Users Win32_Account Name "    Name: " ""
expect_line "Windows Errors" Win32_NTLogEvent EventCode "    EventCode: " ""
# The drives have no heading and stand behind the memory. Their list ends with the first that does
# not tell its medium.
if [ -n "$(told Win32_LogicalDisk MediaType)" ]; then
  expect_line "Physical Memory" Win32_DiskDrive Model "    Model: " ""
  expect_line "Physical Memory" Win32_DiskDrive InterfaceType "    InterfaceType: " ""
else
  printf 'not compared: the service here tells no MediaType of Win32_LogicalDisk, and so no drive\n'
  silent=$((silent + 1))
fi
printf '%s lines compared, %s that the service here does not tell\n' "$compared" "$silent"
[ $((compared + unnamed)) -ge 11 ] || fail "no more than $compared lines could be compared"

choose 2
await "the print window" 60 has_exactly $((alone + 2))
look print
xdotool key Return
sleep 3
look print-no-printer
# The message, if one is there, and the window.
repeat "the end of the print window" has_windows Print 0 -- xdotool key Escape
close_window "$window" "Detailed System Information"
close_tool About
look report-closed
