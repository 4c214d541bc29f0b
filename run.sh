#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds Veltrin when needed and starts it. See usage() below.
set -eu
here=$(dirname "$(readlink -f "$0")")
cd "$here"
. tools/common.sh

usage() {
  cat <<'TEXT'
Usage: ./run.sh                 build what is new and start Veltrin
       ./run.sh lab [SCENARIO]  the same on a simulated Internet of this machine's
                                own (scenario "demo" when none is named)
       ./run.sh lab --list      the scenarios there are
       ./run.sh --help          this text

Missing Debian packages are installed first (packages.txt), with sudo when you
are not root. On a machine without a screen, Veltrin is shown over VNC, which
only this machine itself can reach.
TEXT
}

bin=build/linux/bin

# Some console tools send echoes through sockets that need a right of their own,
# where the kernel does not give such sockets to everybody. The others get none,
# as they would keep it.
grant_raw_sockets() {
  local tool lowest highest group
  read -r lowest highest </proc/sys/net/ipv4/ping_group_range || return 0
  group=$(as_user id -g)
  for tool in "$bin"/console/ping "$bin"/console/tracert "$bin"/console/pathping; do
    if [ ! -f "$tool" ] || [ ! -x "$tool" ]; then continue; fi
    case $(getcap "$tool" 2>/dev/null) in *cap_net_raw*) continue ;; esac
    if [ "$(id -u)" != 0 ] && [ "$group" -ge "$lowest" ] && [ "$group" -le "$highest" ]; then
      continue
    fi
    as_root setcap cap_net_raw+ep "$tool" ||
      say "$(basename "$tool") has not got the right to raw sockets, so it may be unable to send echoes. Give it with: sudo setcap cap_net_raw+ep $here/$tool"
  done
}

# --- A screen over VNC ----------------------------------------------------

screen_folder=
screen_server=
program=

# Ends what runs on the screen, and the screen; the window manager ends with it.
# Called by the trap.
# shellcheck disable=SC2317
close_screen() {
  local pid
  for pid in $program $screen_server; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$screen_folder"
}

# The first free port from 5900, where VNC viewers look first.
free_port() {
  local port
  for port in $(seq 5900 5999); do
    [ -n "$(ss -Hltn "sport = :$port")" ] || { echo "$port"; return; }
  done
  return 1
}

# Starts an X server that shows its screen over VNC, to this machine only and
# with a password made for this start, and a window manager on it. Qt's own VNC
# screen would let every machine of the network in, without a password.
open_screen() {
  install_packages screen
  need Xtigervnc tigervncpasswd xauth openbox ss
  local port password cookie
  port=$(free_port) || fail "All ports from 5900 to 5999 are taken, so there is none left for VNC."
  screen_folder=$(mktemp -d)
  trap close_screen EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM
  password=$(head -c 6 /dev/urandom | base64 | tr '+/' 'xy')
  printf '%s\n' "$password" | tigervncpasswd -f >"$screen_folder/password"
  cookie=$(mcookie)
  xauth -q -f "$screen_folder/cookies" add :0 . "$cookie" 2>/dev/null
  Xtigervnc -displayfd 7 -geometry 1280x800 -rfbport "$port" -localhost \
    -SecurityTypes VncAuth -PasswordFile "$screen_folder/password" \
    -auth "$screen_folder/cookies" -nolisten tcp -noreset \
    7>"$screen_folder/number" >"$screen_folder/log" 2>&1 &
  screen_server=$!
  while [ ! -s "$screen_folder/number" ]; do
    if ! kill -0 "$screen_server" 2>/dev/null; then
      cat "$screen_folder/log" >&2
      fail "The VNC screen could not be started; its words stand above."
    fi
    sleep 0.1
  done
  DISPLAY=:$(cat "$screen_folder/number")
  XAUTHORITY=$screen_folder/cookies
  export DISPLAY XAUTHORITY
  xauth -q -f "$XAUTHORITY" add "$DISPLAY" . "$cookie"
  if called_by_sudo; then chown -R "$SUDO_USER" "$screen_folder"; fi
  as_user openbox >/dev/null 2>&1 &
  say "Veltrin is shown over VNC, which only this machine itself can reach."
  say "  To see it:  vncviewer 127.0.0.1:$port     password: $password"
  say "  From another machine, first:  ssh -L $port:127.0.0.1:$port THIS-MACHINE"
}

# --- Start ----------------------------------------------------------------

# start COMMAND...: runs the program; with a screen of our own, until one of the
# two ends.
start() {
  say "Starting Veltrin"
  [ -n "$screen_folder" ] || exec "$@"
  "$@" &
  program=$!
  # A signal interrupts this wait, which it would not with a command in front.
  wait "$program"
}

# Whether there is no screen to show a window on. One on another machine (ssh -X)
# is reached through the network, which the lab replaces by its own.
needs_screen() {
  if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    say "There is no screen here: neither DISPLAY nor WAYLAND_DISPLAY is set."
  elif [ "$mode" = lab ] && [ -n "${DISPLAY:-}" ] && [ "${DISPLAY#:}" = "$DISPLAY" ]; then
    say "The screen $DISPLAY is reached through the network, so it is out of the lab's reach."
  else
    return 1
  fi
}

mode=program
scenario=demo
case ${1:-} in
  '') ;;
  -h | --help) usage; exit 0 ;;
  lab) mode=lab; scenario=${2:-demo} ;;
  *) usage >&2; fail "I do not know \"$1\"." ;;
esac
[ $# -le 2 ] || { usage >&2; fail "These are too many words."; }

phase "Packages"
install_packages build
need cmake ninja g++
phase "Build"
build linux
phase_end
grant_raw_sockets

if [ "$mode" = lab ]; then
  case $scenario in --*) as_user "$bin/lab" "$scenario"; exit ;; esac
  as_user "$bin/lab" --check "$scenario" >/dev/null ||
    fail "The lab has no scenario \"$scenario\" that it can read; \"./run.sh lab --list\" names those it has."
fi
[ -x "$bin/veltrin" ] || fail "The build has made no $bin/veltrin. Delete build/linux and try again."

if needs_screen; then
  unset DISPLAY WAYLAND_DISPLAY
  open_screen
elif [ -z "${DISPLAY:-}" ]; then
  install_packages wayland
fi

# The lab makes its walls with all the rights there are; the program inside has
# those of the person.
if [ "$mode" = lab ]; then
  start "$bin/lab" "$scenario" -- "${user_prefix[@]}" "$bin/veltrin"
else
  start "${user_prefix[@]}" "$bin/veltrin"
fi
