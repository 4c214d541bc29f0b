# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# A Windows of its own under Wine, on a screen of its own, for scripts that install programs: a
# registry, an empty "Program Files" and a user without files. Only what belongs to Windows is
# that of the other tests. Takes the folder for pictures; sets `room`, the folder of all this,
# and `drive`, that of the drive C.
pictures=$1
sources=$(readlink -f "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../..")

# Tells what comes now, and how many seconds have gone by.
step() { printf '%4d s: %s\n' "$SECONDS" "$1"; }

fail() {
  printf 'FAILED: %s\n' "$1" >&2
  look failed || true
  exit 1
}

. "$sources/tests/windows/prefix.sh"
make_prefix
shared=$WINEPREFIX

room=$(mktemp -d)
children=()
leave() {
  wineserver -k 2>/dev/null || true
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$room"
}
trap leave EXIT

export WINEPREFIX=$room/prefix VELTRIN_WINEPREFIX=$room/prefix
drive=$WINEPREFIX/drive_c
mkdir -p "$WINEPREFIX/dosdevices" "$drive/Program Files" "$drive/ProgramData" "$drive/users/Public"
cp "$shared"/{system.reg,user.reg,userdef.reg,.update-timestamp} "$WINEPREFIX"
ln -s "$shared/drive_c/windows" "$drive/windows"
ln -s ../drive_c "$WINEPREFIX/dosdevices/c:"
ln -s / "$WINEPREFIX/dosdevices/z:"

# Waits until the question, a command, is answered with success.
await() {
  local what=$1 until=$((SECONDS + $2))
  shift 2
  while ! "$@"; do
    [ "$SECONDS" -lt "$until" ] || fail "$what did not come"
    sleep 0.3
  done
}

# A screen that nobody else has taken; the X server chooses its number itself.
Xvfb -displayfd 3 -screen 0 900x640x24 -nolisten tcp -noreset 3>"$room/display" >/dev/null 2>&1 &
children+=($!)
await "a screen" 30 test -s "$room/display"
DISPLAY=:$(cat "$room/display")
export DISPLAY
unset VELTRIN_WINE_DISPLAY

# Runs a Windows program to its end; its exit code is that program's.
windows() { wine "$@" </dev/null >"$room/output" 2>&1; }

# Starts a Windows program on the screen.
start() {
  wine explorer "/desktop=room,900x640" "$1" </dev/null >/dev/null 2>&1 &
  children+=($!)
}

# A picture of the screen under the given name.
look() {
  mkdir -p "$pictures"
  import -window root "$pictures/installer-$1.png"
}

# Places of the program's buttons that can be clicked, row by row from the left; those beyond
# the menu's; the press of one of these.
buttons() { import -window root -depth 8 rgb:- | python3 "$sources/tests/windows/find_buttons.py" 900; }
menu=
tool_buttons() { buttons | grep -vxF -e "$menu" || true; }
has_buttons() { [ "$(buttons | wc -l)" -ge "$1" ]; }
has_tool_buttons() { [ "$(tool_buttons | wc -l)" -ge "$1" ]; }
click() { xdotool mousemove "$1" "$2" sleep 0.1 click 1; }

screen() { import -window root -depth 8 rgb:- | sha256sum; }
shows_another() { [ "$(screen)" != "$before" ]; }

# Whether a page of the installer is there: its ground is light, that of the screen is not.
has_page() {
  local red
  red=$(import -window root -crop 1x1+450+436 -depth 8 rgb:- | od -An -tu1 -N1)
  [ "$((red))" -ge 220 ]
}

# Presses keys and waits until the screen shows something else, which is then photographed.
turn() {
  local name=$1 before
  shift
  before=$(screen)
  xdotool key "$@"
  await "the page behind $name" 60 shows_another
  sleep 1
  look "$name"
}

# A value of the registry; fails where there is none.
registered() {
  windows reg query "$1\\$uninstall_key" /v "$2" || return 1
  sed -n "s/^ *$2 *REG_[A-Z]* *//p" "$room/output" | tr -d '\r'
}
# shellcheck disable=SC1003
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\Veltrin'

expect() {
  [ "$2" = "$3" ] || fail "$1 is \"$2\" and not \"$3\""
}
missing() { [ ! -e "$1" ]; }
there() { [ -e "$1" ]; }
