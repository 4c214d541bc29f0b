#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens every window of veltrin.exe under Wine by the mouse, at a scale of the screen that its
# system is set to, uses it once, photographs it, and closes it, until the menu is alone again.
# The console tools are scripted ones: Wine has no tracert and no pathping, and its ping does not
# tell what that of Windows does.
# Usage: windows.sh FOLDER_OF_THE_PROGRAM FOLDER_FOR_PICTURES SCRIPTED_TOOL PERCENT [PART [TOOL...]]
# PART is "slow" for the tool that takes a minute by itself and some more, and "quick" for the
# others. Without it both run side by side, as programs of their own.
set -eu
if [ $# -eq 4 ]; then
  "$0" "$@" slow &
  slow=$!
  code=0
  "$0" "$@" quick || code=$?
  wait "$slow" || code=$?
  exit "$code"
fi
. "$(dirname "$(readlink -f "$0")")/program.sh"
scripted_tool=$3
percent=$4
part=$5

# A picture of a window, and what lies above it, under the given name and the scale, once all is
# at rest; one that moves is not waited for.
photograph() {
  local place rounds before='' now
  for rounds in 1 2 3 4 5; do
    now=$(import -window root rgb:- | md5sum)
    [ "$now" != "$before" ] || break
    before=$now
    sleep 0.3
  done
  read -ra place <<<"$(place_of "$1")"
  mkdir -p "$pictures"
  import -window root -crop "${place[2]}x${place[3]}+${place[0]}+${place[1]}" +repage \
    "$pictures/windows-$2-$percent.png"
  printf 'photographed at %s percent: %s\n' "$percent" "$2"
}

has_file() { compgen -G "$work/$1" >/dev/null; }
# The one file of that name holds a line that fits the pattern.
expect_in_file() {
  await "the file $1" 60 has_file "$1"
  tr -d '\r' <"$(compgen -G "$work/$1")" | grep -E -- "$2" >/dev/null ||
    fail "$1 lacks a line like \"$2\""
}
holds_line() { has_file "$1" && tr -d '\r' <"$(compgen -G "$work/$1")" | grep -E -- "$2" >/dev/null; }

use_ping_test() {
  open_tool 1 "Ping Test"
  photograph "$tool" ping
  press_in "$tool" 1
  leave
  await "the end of the pass" 120 has_buttons_in "$tool" 4
  press_in "$tool" 2
  answer_message "Ping Test" 1
  press_in "$tool" 3
  answer_message PingTest 0
  leave
  photograph "$tool" ping-complete
  expect_in_file 'PingTest_*.txt' '^far\.example   24 \(Low\)     24 \(Aver\)     24 \(High\)     0 '
  close_tool "Ping Test"
}

use_trace_route() {
  open_tool 2 "Trace Route Test"
  photograph "$tool" trace
  # The menu bar has the colour of the buttons. These cannot be clicked while the tools run.
  press_in "$tool" 2
  leave
  await "the start of the pass" 60 lacks_buttons_in "$tool" 5
  await "the end of the pass" 120 has_buttons_in "$tool" 5
  photograph "$tool" trace-complete
  press_in "$tool" 4
  answer_message "Trace Routes" 0
  expect_in_file 'Traceroute_*.txt' '^  4    24 ms    24 ms    24 ms  www\.mozilla\.org \[203\.0\.113\.7\] $'
  close_tool "Trace Route Test"
}

# What is saved while the tools run is not yet all. Save is the last button but one.
save_in_depth() {
  rm -f "$work"/InDepthAnalysis_*.txt
  click_in "$tool" $(buttons_in "$tool" | tail -n 2 | head -n 1)
  answer_message "InDepth Internet Analysis" 1
  holds_line 'InDepthAnalysis_*.txt' '^Trace complete'
}
has_changed_buttons() { [ "$(buttons_in "$tool" | tail -n 2)" != "$1" ]; }
use_in_depth() {
  local idle
  open_tool 5 "InDepth Internet Analysis"
  photograph "$tool" indepth
  idle=$(buttons_in "$tool" | tail -n 2)
  press_in "$tool" 1
  leave
  # Before, Test It, Info and Close can be clicked; now Copy and Save as well, but not Info.
  await "the start of the analysis" 60 has_changed_buttons "$idle"
  await "the whole analysis" 120 save_in_depth
  leave
  photograph "$tool" indepth-complete
  expect_in_file 'InDepthAnalysis_*.txt' '^  3   24ms     0/ 100 =  0%     0/ 100 =  0%  far\.example '
  close_tool "InDepth Internet Analysis"
}

# One hop that answers, a hundred times, and one that does not: both of the windows that tell
# the results come.
use_hop_stability() {
  open_tool 3 "Stability Test"
  photograph "$tool" stability
  press_in "$tool" 1
  leave
  await "the analysis of the silent hop" 400 has_window "InDepth Internet Analysis"
  photograph "$(window_of "InDepth Internet Analysis")" indepth2
  close_window "$(window_of "InDepth Internet Analysis")" "InDepth Internet Analysis"
  await "the summary" 60 has_window "Stability Summary"
  photograph "$(window_of "Stability Summary")" stability-summary
  close_window "$(window_of "Stability Summary")" "Stability Summary"
  photograph "$tool" stability-complete
  close_tool "Stability Test"
}

# Nothing answers at the tool's address, so that an outage begins and is traced.
use_outage_monitor() {
  await "the menu" 60 is_menu_alone
  click $(sed -n 4p <<<"$menu")
  take_tool "Monitor for Outage"
  photograph "$tool" outage
  press_in "$tool" 1
  leave
  await "the outage" 60 holds_line 'files/Outage Log *.txt' '^Outage Detected at: '
  await "the trace" 60 has_buttons_in "$tool" 1
  photograph "$tool" outage-running
  press_in "$tool" 1
  await "the end of the monitor" 60 holds_line 'files/Outage Log *.txt' '^Total Test Completed: [1-9]'
  leave
  close_tool "Monitor for Outage"
}

# The fifty pings and the search behind them. Its probes name no host, so that the tool tells of no
# fragments, and the largest of the sizes is taken.
use_mtu_optimizer() {
  local key='HKLM\SYSTEM\CurrentControlSet\Services\Tcpip\Parameters\Interfaces'
  # Windows has this key, Wine has not.
  wine reg add "$key" /f >/dev/null
  open_tool 6 "MTU Test/Set"
  photograph "$tool" mtu
  press_in "$tool" 1
  leave
  await "the pings" 60 has_window "Verifying Ping/Packet Loss"
  photograph "$(window_of "Verifying Ping/Packet Loss")" pingit
  await "the search" 400 has_window "Veltrin (MTU Test) "
  photograph "$(window_of "Veltrin (MTU Test) ")" setmtu
  await "the course search" 60 has_window "SpeedTest (MTU) Course Test"
  await "the end of the search" 240 has_windows Veltrin 2
  photograph "$(window_of "SpeedTest (MTU) Course Test")" setmtu-complete
  answer_message Veltrin 1
  await "the end of the optimizer" 60 is_menu_alone
  wine reg query "$key" /v MTU | tr -d '\r' | grep -E '^ *MTU +REG_SZ +1500$' >/dev/null ||
    fail "the registry lacks the MTU 1500"
}

use_download_test() {
  open_below -77 64 "Stability Analyzer "
  await "the end of the download" 120 has_file 'Download Stability Test.txt'
  leave
  await "its button" 60 has_buttons_in "$tool" 1
  photograph "$tool" download
  expect_in_file 'Download Stability Test.txt' '^Total Bytes Received = 3000000$'
  press_in "$tool" 1
  leave
  await "the end of the window" 60 is_menu_alone
}

use_monitors() {
  printf 'not tested: the figures of both monitors; Wine counts neither bytes nor packets\n'
  open_tool 7 "NETWORK BANDWIDTH"
  photograph "$tool" bandwidth
  repeat "the end of the window" is_menu_alone -- close_by_keys
  open_tool 8 "Indepth Internet Monitor"
  photograph "$tool" protocols
  close_tool "Indepth Internet Monitor"
}

# The report from About, and the window that prints it.
use_report() {
  local report print
  open_below 35 149 About
  photograph "$tool" about
  repeat "the report" has_window "Detailed System Information" -- press_link
  report=$(window_of "Detailed System Information")
  leave
  press_in "$report" 1
  leave
  await "the end of the run" 240 is_still
  photograph "$report" report
  choose 2
  await "the print window" 60 has_window Print
  print=$(window_of Print)
  photograph "$print" print
  printf 'not tested: a printed sheet; Wine has no printer without a print server\n'
  close_window "$print" Print
  choose 1
  await "the saved report" 60 has_file 'SystemInfo (*.txt'
  answer_message Veltrin 1
  expect_in_file 'SystemInfo (*.txt' '^Operating System'
  close_window "$report" "Detailed System Information"
  close_tool About
}
# A web server of this machine with the file of the download test, whose port is then `port`.
start_web_server() {
  mkdir "$work/web"
  head -c 3000000 /dev/zero >"$work/web/file"
  python3 -u -m http.server 0 --bind 127.0.0.1 --directory "$work/web" >"$work/web.log" 2>&1 &
  children+=($!)
  await "the web server" 60 grep -qs ' port [0-9]' "$work/web.log"
  port=$(sed -n 's/.* port \([0-9]*\).*/\1/p' "$work/web.log" | head -n 1)
}

case $part in
  slow) tools=(mtu_optimizer outage_monitor report) ;;
  quick) tools=(ping_test trace_route in_depth monitors download_test hop_stability) ;;
esac
# For a look at some windows only.
[ $# -eq 5 ] || tools=("${@:6}")

printf 'not tested: the ping, tracert and pathping of Windows; a scripted tool stands in for them\n'
printf 'not opened: setlang, DosFrm and DosApp; the program shows them to nobody\n'
start_web_server
sed -i "s/^ProbeHost=.*/ProbeHost=far.example\r/
        s|^\(DownloadTestUrl[1-6]\)=.*|\1=http://127.0.0.1:$port/file\r|" "$work/installation.ini"
printf '[Ping]\r\nPasses=1\r\n[Settings]\r\nOut Scan Time=1\r\n[Stability]\r\nUse=near.example\r\n' \
  >"$work/files/Veltrin.dat"
start_program "-$part-$percent"
for name in "${tools[@]}"; do
  "use_$name"
  printf 'opened, used and closed: %s, %s seconds after the start\n' "$name" "$SECONDS"
done
