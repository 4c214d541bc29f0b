#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts veltrin.exe under Wine in a virtual desktop, and opens and closes both network
# monitors by the menu, whatever Wine's counters say.
# Usage: monitors.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES
. "$(dirname "$(readlink -f "$0")")/program.sh"

start_program ""
open_tool 7 "NETWORK BANDWIDTH"
# Some ticks of its timer.
sleep 3
look bandwidth
repeat "the end of the Bandwidth monitor" is_menu_alone -- close_by_keys

open_tool 8 "Indepth Internet Monitor"
sleep 3
look protocols
close_tool "Indepth Internet Monitor"
look monitors-closed
