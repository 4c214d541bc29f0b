# SPDX-License-Identifier: GPL-3.0-or-later
# The Windows program under Wine on a screen and in a prefix of its own, for the scripts that work
# it. Takes the folder of the program and one for pictures; sets `work`, the program's folder here.
#
# Each step waits for what it brings about: a window by its title, buttons, a file. The times are
# so long that only a program that does nothing comes to their end.
set -eu
program_folder=$1
pictures=$2
here=$(dirname "$(readlink -f "$0")")
. "$here/prefix.sh"

percent=100 # scale of the screen

work=$(mktemp -d)
children=()
own_prefix=
end() {
  [ -z "$own_prefix" ] || end_own_prefix
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$work"
}
trap end EXIT

fail() {
  printf 'FAILED: %s\n' "$1" >&2
  windows >&2 || true
  look failed || true
  exit 1
}

# A picture of the screen under the given name.
look() {
  mkdir -p "$pictures"
  import -window root "$pictures/windows-$1.png"
}

# Waits until the question, a command, is answered with success.
await() {
  local what=$1 seconds=$2 until
  shift 2
  until=$((SECONDS + seconds))
  while ! "$@"; do
    [ "$SECONDS" -lt "$until" ] || fail "$what did not come in $seconds seconds"
    sleep 0.3
  done
}

# Places of the buttons that can be clicked, row by row from the left.
buttons() { import -window root -depth 8 rgb:- | python3 "$here/find_buttons.py" "$screen_width"; }

# Those that were not there before the tool was opened.
menu=
tool_buttons() { buttons | grep -vxF -e "$menu" || true; }

has_buttons() { [ "$(buttons | wc -l)" -ge "$1" ]; }
has_tool_buttons() { [ "$(tool_buttons | wc -l)" -ge "$1" ]; }
click() { xdotool mousemove "$1" "$2" sleep 0.1 click 1; }

# The windows that can be seen, by number and title.
windows() {
  local window
  for window in $(xdotool search --onlyvisible --name . 2>/dev/null); do
    printf '%s %s\n' "$window" "$(xdotool getwindowname "$window" 2>/dev/null)"
  done
}

# The numbers of the windows whose title is that one, of which the last came last. Message boxes
# have the titles of their windows.
windows_of() { windows | awk -v title="$1" '{ number = $1; sub(/^[^ ]* /, "") } $0 == title { print number }'; }
count_of() { windows_of "$1" | wc -l; }
window_of() { windows_of "$1" | sort -n | tail -n 1; }
has_window() { [ "$(count_of "$1")" -ge 1 ]; }
has_windows() { [ "$(count_of "$1")" -eq "$2" ]; }

# A window's place on the screen and its size: x, y, width, height.
place_of() {
  xwininfo -id "$1" | awk '/Absolute upper-left/ { printf "%s ", $NF } /Width:|Height:/ { printf "%s ", $NF }'
}

# Places of the buttons inside a window that can be clicked, from its corner. The picture ends
# where the screen does.
buttons_in() {
  local place seen
  read -ra place <<<"$(place_of "$1")"
  seen=$((screen_width - place[0]))
  [ "$seen" -le "${place[2]}" ] || seen=${place[2]}
  import -window "$1" -depth 8 rgb:- 2>/dev/null | python3 "$here/find_buttons.py" "$seen"
}
has_buttons_in() { [ "$(buttons_in "$1" | wc -l)" -ge "$2" ]; }
lacks_buttons_in() { ! has_buttons_in "$1" "$2"; }

# Clicks at a place of a window in pixels of its own; nowhere where no place is given, as of a
# button that has gone.
click_in() { [ $# -lt 3 ] || xdotool mousemove --window "$1" "$2" "$3" sleep 0.1 click 1; }
# Clicks its button of that number.
press_in() {
  local place
  await "button $2 of a window" 60 finds_button_in "$1" "$2"
  click_in "$1" $place
}
finds_button_in() {
  place=$(buttons_in "$1" | sed -n "$2p")
  [ -n "$place" ]
}

# Takes the mouse to where it touches nothing.
leave() { xdotool mousemove 3 3; }

# Does something, a command, until a question is answered with success: what comes to a window
# before it is ready for the mouse and the keyboard is lost. The question is asked for three
# seconds after each time. Usage: repeat WHAT QUESTION... -- COMMAND...
repeat() {
  local what=$1 question=() until=$((SECONDS + 90)) pause
  shift
  while [ "$1" != -- ]; do
    question+=("$1")
    shift
  done
  shift
  until "${question[@]}"; do
    [ "$SECONDS" -lt "$until" ] || fail "$what did not come"
    "$@"
    for pause in 1 2 3 4 5 6; do
      "${question[@]}" && return
      sleep 0.5
    done
  done
}

# Closes a message by its button. So many windows of its title are left.
answer_message() {
  await "the message $1" 60 has_windows "$1" $(($2 + 1))
  repeat "the end of the message $1" has_windows "$1" "$2" -- press_last_of "$1"
  leave
}
press_last_of() {
  local message
  message=$(window_of "$1")
  [ -z "$message" ] || click_in "$message" $(buttons_in "$message" | head -n 1)
}

# The entry of the report window's menu, by its place from the top. The list that comes is a
# window without a title.
choose() {
  local step before
  before=$(shown)
  repeat "the menu" has_more_shown "$before" -- \
    click_in "$(window_of "Detailed System Information")" "$(scaled 38)" "$(scaled 32)"
  for ((step = 0; step < $1; ++step)); do xdotool key Down; done
  xdotool key Return
}
shown() { xdotool search --onlyvisible '' 2>/dev/null | wc -l; }
has_more_shown() { [ "$(shown)" -gt "$1" ]; }

# So many pixels of a screen at 100 percent.
scaled() { echo $(($1 * percent / 100)); }

# Only the virtual desktop and the menu can be seen.
is_menu_alone() { has_in_all 2 && has_windows Veltrin 1; }
has_in_all() { [ "$(windows | wc -l)" -eq "$1" ]; }

# Clicks the menu's button of that number; the window of that title is then `tool`.
open_tool() {
  await "the menu" 60 is_menu_alone
  click $(sed -n "$1p" <<<"$menu")
  take_tool "$2"
}
# Clicks beside the menu's seventh button: what is below it is not found by its colour.
open_below() {
  await "the menu" 60 is_menu_alone
  local x y
  read -r x y <<<"$(sed -n 7p <<<"$menu")"
  click $((x + $(scaled "$1"))) $((y + $(scaled "$2")))
  take_tool "$3"
}
take_tool() {
  await "the window $1" 60 has_window "$1"
  tool=$(window_of "$1")
  leave
  expect_on_screen "$tool" "$1"
}
# All of a window can be seen, but for the right edge of 4 pixels, which Wine draws where Windows
# leaves it clear: the toolkit counts as Windows does.
stands_on_screen() {
  local place edge
  edge=$(scaled 4)
  read -ra place <<<"$(place_of "$1")"
  [ "${place[0]}" -ge 0 ] && [ "${place[1]}" -ge 0 ] &&
    [ $((place[0] + place[2])) -le $((screen_width + edge)) ] &&
    [ $((place[1] + place[3])) -le "$screen_height" ]
}
expect_on_screen() { await "$2 on the screen" 10 stands_on_screen "$1"; }
# Closes a window by the button at the right of its title, and waits for that.
close_window() {
  repeat "the end of $2" has_windows "$2" 0 -- press_close_of "$1"
  leave
}
press_close_of() {
  local place
  read -ra place <<<"$(place_of "$1" 2>/dev/null)"
  [ "${#place[@]}" -lt 4 ] || click_in "$1" $((place[2] - $(scaled 14))) "$(scaled 12)"
}
close_tool() {
  close_window "$tool" "$1"
  await "the menu alone" 60 is_menu_alone
}

# A window without a frame is closed by the second entry of its own menu.
close_by_keys() {
  xdotool key Escape
  sleep 1
  xdotool key Down Return
}

# Presses the link of the window About.
press_link() {
  local place
  read -ra place <<<"$(place_of "$tool")"
  click_in "$tool" $((place[2] / 2)) $((place[3] * 82 / 100))
}

# The button of the window that came last, unless it is that one.
press_newest_but() {
  local newest
  newest=$(windows | sort -n | tail -n 1 | cut -d ' ' -f 1)
  [ "$newest" = "$1" ] || click_in "$newest" $(buttons_in "$newest" | head -n 1)
}

# Nothing has moved on the screen for a second.
is_still() {
  local before
  before=$(import -window root rgb:- | md5sum)
  sleep 1
  [ "$before" = "$(import -window root rgb:- | md5sum)" ]
}

for part in veltrin.exe files help icons installation.ini; do cp -r "$program_folder/$part" "$work"; done

# Starts a screen of `screen_width` by `screen_height` pixels.
start_screen() {
  screen_width=$(scaled 1024)
  screen_height=$(scaled 768)
  local number=$work/screen
  unset VELTRIN_WINE_DISPLAY
  : >"$number"
  Xvfb -displayfd 3 -screen 0 "${screen_width}x${screen_height}x24" -nolisten tcp -noreset \
    3>"$number" >/dev/null 2>&1 &
  children+=($!)
  await "a screen" 60 test -s "$number"
  export DISPLAY=":$(cat "$number")"
  rm "$number"
}

# Starts the program in a virtual desktop and waits for its menu, whose buttons are then
# `menu`, and whose number is `menu_window`. What stands in $work before is what the program finds,
# and `scripted_tool`, where it is set, is what it finds as ping, tracert and pathping of the system.
scripted_tool=
start_program() {
  start_screen
  own_prefix=$(mktemp -d)
  take_own_prefix "$own_prefix" $((96 * percent / 100))
  [ -z "$scripted_tool" ] || put_into_system "$scripted_tool" ping tracert pathping
  wine explorer "/desktop=veltrin,${screen_width}x${screen_height}" \
    "Z:${work//\//\\}\\veltrin.exe" </dev/null >/dev/null 2>&1 &
  children+=($!)
  # Wine has no counter of the processor's idle time; the program tells that and goes on.
  await "the message about the counters" 240 has_buttons 1
  look "splash$1"
  answer_message Veltrin 1
  await "the menu" 240 has_buttons 7
  leave
  await "the menu at rest" 60 has_buttons 8
  look "menu$1"
  menu=$(buttons)
  menu_window=$(window_of Veltrin)
}
