#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Windows installer of a built program and uses it under Wine: for all users without a
# window, with one pass of the Ping Test; and for one user page by page, with an upgrade. Each
# time it looks at what the installation consists of, and at what is left when it is removed.
# Usage: windows_installer.sh BUILD-FOLDER FOLDER_FOR_PICTURES
set -eu
build=$(readlink -f "$1")
command -v makensis >/dev/null || { echo "SKIPPED: there is no makensis (package nsis)"; exit 77; }
. "$(dirname "$(readlink -f "$0")")/wine_room.sh" "$2"

# --- The installer --------------------------------------------------------

step "the installer is made"
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-1700000000}
"$sources/packaging/windows/make-installer.sh" "$build"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
expect "the version of the project" "$version" \
  "$(sed -n 's/^project(veltrin VERSION \([0-9.]*\).*/\1/p' "$sources/CMakeLists.txt")"
cp "$build/packages/veltrin-$version-setup.exe" "$drive/setup.exe"
stage=$build/installer/stage
setup='C:\setup.exe'

# --- What is looked at ----------------------------------------------------

user=$drive/users/$(id -un)/AppData
own_menu="$user/Roaming/Microsoft/Windows/Start Menu/Programs/Veltrin.lnk"
common_menu="$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/Veltrin.lnk"

# The files below a folder, one a line.
files_of() { (cd "$1" && find . -type f | LC_ALL=C sort); }

# An installation holds the files of the stage, word for word, and those named.
expect_files() {
  local folder=$1
  shift
  expect "the list of files in $folder" "$(files_of "$folder")" \
    "$({ files_of "$stage"; printf './%s\n' installation.default.ini uninstall.exe "$@"; } | LC_ALL=C sort)"
  (cd "$stage" && find . -type f -exec cmp {} "$folder/{}" \;) >"$room/differences" || true
  [ ! -s "$room/differences" ] || fail "a file came in otherwise: $(head -n 1 "$room/differences")"
}

# Windows's list of apps names the installation as it is.
expect_registered() {
  expect "the name in $1" "$(registered "$1" DisplayName)" Veltrin
  expect "the version in $1" "$(registered "$1" DisplayVersion)" "$version"
  expect "the publisher in $1" "$(registered "$1" Publisher)" "The makers of Veltrin"
  expect "the folder in $1" "$(registered "$1" InstallLocation)" "$2"
  local size
  size=$(registered "$1" EstimatedSize)
  [ "$((size))" -gt 10000 ] || fail "the size in $1 is $size kilobytes"
}

expect_unregistered() {
  ! registered "$1" DisplayName >/dev/null || fail "$1 still names the installation"
}

# The program, once started, comes to its menu, whose buttons are then `menu`.
await_menu() {
  # Wine has no counter of the processor's idle time; the program tells that and goes on.
  await "the message about the counters" 180 has_buttons 1
  xdotool key Return
  await "the menu" 60 has_buttons 3
  sleep 1
  menu=$(buttons)
}

# Ends the program, once it has been told to: whoever looks on waits for its process.
runs() {
  local process
  for process in $(pgrep -f 'veltrin\.exe$'); do
    ! grep -sqzxF "WINEPREFIX=$WINEPREFIX" "/proc/$process/environ" || return 0
  done
  return 1
}
has_ended() { ! runs; }
close_program() {
  runs || fail "the program does not run"
  windows taskkill /F /IM veltrin.exe || fail "the program cannot be ended"
  await "the end of the program" 60 has_ended
}

# --- In a folder that cannot be made --------------------------------------

step "nothing is installed that cannot be written"
code=0
windows "$setup" /S '/D=Z:\proc\veltrin' || code=$?
expect "the exit code for a folder that cannot be made" "$code" 2
expect_unregistered HKCU
missing "$own_menu" || fail "the start menu names a program that is not there"

# --- For all users, without a window --------------------------------------

step "for all users: installation"
code=0
windows "$setup" /S /AllUsers /CurrentUser || code=$?
expect "the exit code for switches that contradict each other" "$code" 87
windows "$setup" /S /AllUsers || fail "the silent installation for all users ended with $?"
shared_folder="$drive/Program Files/Veltrin"
data="$user/Local/Veltrin"
expect_files "$shared_folder" for-all-users.txt
expect_registered HKLM 'C:\Program Files\Veltrin'
expect_unregistered HKCU
there "$common_menu" || fail "the start menu does not name the program"
missing "$own_menu" || fail "the user's own start menu names the program, too"

step "for all users: a pass of the Ping Test"
mkdir -p "$data/Files"
{
  printf '[Ping]\r\nPasses=1\r\nPacket=32\r\n'
  for row in 1 2 3 4 5; do printf 'Pingit %d=127.0.0.1\r\n' "$row"; done
} >"$data/Files/Veltrin.dat"
start 'C:\Program Files\Veltrin\veltrin.exe'
await_menu
look all-users-menu
click $(sed -n 1p <<<"$menu")
await "the Ping Test" 60 has_tool_buttons 2
click $(tool_buttons | sed -n 1p)
sleep 1
xdotool mousemove 5 5
await "the end of the pass" 180 has_tool_buttons 4
# Copy gathers the report, and tells so; Save writes it.
complete=$(buttons | wc -l)
has_other_buttons() { [ "$(buttons | wc -l)" -ne "$complete" ]; }
has_all_buttons() { [ "$(buttons | wc -l)" -eq "$complete" ]; }
click $(tool_buttons | sed -n 2p)
await "the message of the copy" 60 has_other_buttons
xdotool key Return
xdotool mousemove 5 5
await "the window behind the message" 60 has_all_buttons
click $(tool_buttons | sed -n 3p)
has_report() { grep -qs PacketLoss "$data"/PingTest_*.txt; }
await "the saved report" 60 has_report
rows=$(grep -c '^127\.0\.0\.1   .* 0 (PacketLoss)' "$data"/PingTest_*.txt || true)
[ "$rows" -eq 5 ] || cat "$data"/PingTest_*.txt
expect "the number of destinations that answered" "$rows" 5
look all-users-saved

step "for all users: removal"
code=0
windows "$setup" /S /AllUsers || code=$?
expect "the exit code of an installation while the program runs" "$code" 3
code=0
# With this last word, unquoted, the uninstaller stays in its folder and tells how it ended.
printf '"C:\\Program Files\\Veltrin\\uninstall.exe" /S _?=C:\\Program Files\\Veltrin\r\nexit %%errorlevel%%\r\n' >"$drive/remove.cmd"
windows cmd.exe /c 'C:\remove.cmd' || code=$?
expect "the exit code of a removal while the program runs" "$code" 3
close_program
expect_files "$shared_folder" for-all-users.txt

windows 'C:\Program Files\Veltrin\uninstall.exe' /S
await "the end of the silent removal" 60 missing "$shared_folder"
expect_unregistered HKLM
missing "$common_menu" || fail "the start menu still names the program"
expect "what a silent removal leaves the user" \
  "$(files_of "$data" | sed 's/PingTest_.*/PingTest/')" $'./Files/Veltrin.dat\n./PingTest'

windows "$setup" /S /AllUsers
windows 'C:\Program Files\Veltrin\uninstall.exe' /S /DeleteResults
await "the end of the removal" 60 missing "$shared_folder"
await "the end of the results" 60 missing "$data"

# --- For one user, page by page -------------------------------------------

folder="$user/Local/Programs/Veltrin"
step "for one user: installation"
start "$setup"
await "the installer" 60 has_page
sleep 1
look 1-licence
turn 2-users Return
turn 3-folder Return
missing "$folder" || fail "files were installed before the last question"
xdotool key Return
await "the installed program" 120 there "$own_menu"
sleep 2
look 4-finish
expect_files "$folder"
expect_registered HKCU 'C:\users\'"$(id -un)"'\AppData\Local\Programs\Veltrin'
expect_unregistered HKLM
xdotool key Return
await_menu
look 5-started
expect "the folder that the program keeps" \
  "$(sed -n 's/^Path=//p' "$folder/files/Veltrin.dat" | tr -d '\r')" \
  'C:\users\'"$(id -un)"'\AppData\Local\Programs\Veltrin'
close_program

step "for one user: upgrade"
# An upgrade leaves what the user has changed, and renews the rest.
printf '\r\n; changed here\r\n' >>"$folder/installation.ini"
printf 'old\n' >"$folder/help/home.html"
touch "$folder/PingTest_01Jan2024_1200.txt" "$folder/files/Outage Log 01 Jan 24 1200.txt"
windows "$setup" /S || fail "the upgrade ended with $?"
expect "the last line of the changed settings" "$(tail -n 1 "$folder/installation.ini" | tr -d '\r')" "; changed here"
cmp "$stage/installation.ini" "$folder/installation.default.ini" || fail "the settings as they come were not renewed"
cmp "$stage/help/home.html" "$folder/help/home.html" || fail "the upgrade did not renew a file"
there "$folder/files/Veltrin.dat" || fail "the upgrade took the settings away"
there "$folder/PingTest_01Jan2024_1200.txt" || fail "the upgrade took a result away"

step "for one user: removal"
# A removal that is not told otherwise takes nothing of the user's.
remove() {
  start 'C:\users\'"$(id -un)"'\AppData\Local\Programs\Veltrin\uninstall.exe'
  await "the uninstaller" 60 has_page
  sleep 1
}
remove
look 6-remove
turn 7-removed Return
await "the end of the removal" 60 missing "$folder/uninstall.exe"
xdotool key Return
expect "what a removal leaves the user" "$(files_of "$folder")" \
  $'./PingTest_01Jan2024_1200.txt\n./files/Outage Log 01 Jan 24 1200.txt\n./files/Veltrin.dat\n./installation.ini'
expect_unregistered HKCU
missing "$own_menu" || fail "the user's start menu still names the program"

# With the tick nothing is left but files that the program does not know.
windows "$setup" /S
touch "$folder/letter.txt"
sleep 1
remove
xdotool key alt+d
sleep 0.5
look 8-remove-all
turn 9-removed-all Return
await "the end of the removal" 60 missing "$folder/uninstall.exe"
await "the end of the results" 60 missing "$folder/files"
expect "what a whole removal leaves" "$(files_of "$folder")" ./letter.txt
rm "$folder/letter.txt"
windows "$setup" /S
windows 'C:\users\'"$(id -un)"'\AppData\Local\Programs\Veltrin\uninstall.exe' /S /DeleteResults
await "the end of the removal" 60 missing "$folder"
printf 'The installer of version %s: %s bytes\n' "$version" "$(stat -c %s "$drive/setup.exe")"
