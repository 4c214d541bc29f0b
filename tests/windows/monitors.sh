#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts veltrin.exe under Wine in a virtual desktop, and opens and closes both network
# monitors by the menu and the keyboard, whatever Wine's counters say.
# Usage: monitors.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

# All of the menu's buttons can be seen, with the mouse away from them, and no other.
is_menu_alone() { [ "$(buttons | wc -l)" -eq "$(wc -l <<<"$menu")" ]; }
is_menu_covered() { ! is_menu_alone; }

start_program ""
xdotool mousemove 5 5
sleep 1
menu=$(buttons)

# The ground of the Bandwidth monitor has the colour of the buttons.
click $(sed -n 7p <<<"$menu")
xdotool mousemove 5 5
await "the Bandwidth monitor" 60 has_tool_buttons 1
sleep 3
look bandwidth
xdotool key Escape
sleep 1
look bandwidth-menu
xdotool key Down Return
await "the end of the Bandwidth monitor" 20 is_menu_alone

click $(sed -n 8p <<<"$menu")
xdotool mousemove 5 5
await "the InDepth Net Monitor" 60 is_menu_covered
sleep 3
look protocols
xdotool key alt+F4
await "the end of the InDepth Net Monitor" 20 is_menu_alone
look monitors-closed
