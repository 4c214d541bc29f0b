#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes a clean Debian of nothing but its essential packages, from the sources that apt has here,
# installs the packages there with apt, runs each console tool as an ordinary user, starts the
# program on a screen, asks the update endpoint, and takes all away again: nothing is left.
# Usage: debian_clean.sh FOLDER_OF_THE_PACKAGES FOLDER_FOR_ALL_THIS FOLDER_FOR_PICTURES
set -eu
here=$(dirname "$(readlink -f "$0")")
packages=$(readlink -f "$1")
work=$2/clean
pictures=$3

skip() {
  printf 'SKIPPED: %s\n' "$1"
  exit 77
}

# All that is done with root's rights happens in namespaces of its own: who is not root gets
# such rights from a user namespace, mounts are nobody else's, and all processes end with it.
if [ "${VELTRIN_INSIDE:-}" != yes ]; then
  for tool in mmdebstrap unshare Xvfb import xdotool apt-get; do
    command -v "$tool" >/dev/null || skip "there is no $tool here"
  done
  apart=(unshare --mount --pid --fork --kill-child --mount-proc)
  [ "$(id -u)" = 0 ] || apart+=(--user --map-root-user --map-auto)
  "${apart[@]}" true 2>/dev/null || skip "neither root nor user namespaces with ranges of users here"
  mkdir -p "$work" "$pictures"
  exec env VELTRIN_INSIDE=yes "${apart[@]}" "$0" "$packages" "$2" "$pictures"
fi

root=$work/root
fail() {
  printf 'FAILED: %s\n' "$1" >&2
  exit 1
}
end() {
  # Whatever is mounted below goes with the namespaces; here it is only taken out of the way.
  if [ -n "${screen:-}" ]; then kill "$screen" 2>/dev/null || true; fi
  rm -rf --one-file-system "$root"
}
trap end EXIT
step() { printf '%4d s  %s\n' "$SECONDS" "$*"; }

# inside COMMAND...: runs a command in the clean Debian, as root and with the network of the
# machine. offline COMMAND...: as an ordinary user, with no network but the loopback interface
# and only the rights to echoes that the package gives.
run_inside='mount -t proc proc "$1/proc" && mount --rbind /dev "$1/dev" && exec env -i \
  PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} \
  chroot "$@"'
inside() { unshare --mount --pid --fork --kill-child sh -c "$run_inside" sh "$root" "$@"; }
run_offline='ip link set lo up && { [ ! -d /tmp/.X11-unix ] || { mkdir -p "$1/tmp/.X11-unix" &&
  mount --bind /tmp/.X11-unix "$1/tmp/.X11-unix"; }; } && '
offline() {
  unshare --mount --pid --net --fork --kill-child sh -c "$run_offline$run_inside" sh \
    "$root" setpriv --reuid=tester --regid=tester --clear-groups env HOME=/home/tester "$@"
}

# Every path in the clean Debian but what belongs to packages, to apt and to logs.
paths() {
  (cd "$root" && find . -xdev \( -path ./proc -o -path ./dev -o -path ./tmp -o -path ./home \
    -o -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache/apt -o -path ./var/log \) -prune \
    -o -print) | sed 's/^\.//' | sort
}
# Those of all packages; some still name what lies in /usr by its older place.
owned() { cat "$root"/var/lib/dpkg/info/*.list | sed -E 'p; s#^/(s?bin|lib[0-9x]*)/#/usr&#' | sort -u; }

# What the packages that the program needs make of their own, beside their files.
kept='^/(usr/share/mime|usr/local/share/fonts|var/cache/(fontconfig|ldconfig)|etc/(fonts/conf\.d|rcS\.d))(/|$)'

# --- A clean Debian -------------------------------------------------------

rm -rf --one-file-system "$work"
mkdir "$work"
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
  'Identifier: Packages' 'Origin: Debian' >"$work/sources"
[ -s "$work/sources" ] || skip "apt has no lists of Debian's packages here"
suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
mmdebstrap --variant=minbase --skip=cleanup/apt --dpkgopt=force-unsafe-io --quiet \
  "$suite" "$root" "$work/sources" || skip "mmdebstrap cannot make a clean $suite; its words stand above"
inside useradd --create-home --shell /bin/sh tester
paths >"$work/before"
step "a clean Debian of $(inside dpkg-query -f '.\n' -W | wc -l) packages"

# --- Installation ---------------------------------------------------------

cp "$packages"/*.deb "$root/tmp"
install=(apt-get -q -y --no-install-recommends install)
program=/tmp/$(cd "$packages" && echo veltrin_*.deb)
endpoint=/tmp/$(cd "$packages" && echo veltrin-update-endpoint_*.deb)
inside "${install[@]}" --simulate "$program" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "what the program needs cannot be had from Debian"; }
inside "${install[@]}" --download-only "$program" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; skip "what the program needs cannot be fetched; apt's words stand above"; }
step "its needs fetched"
inside "${install[@]}" "$program" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "the program cannot be installed"; }
step "installed; $(inside dpkg-query -f '.\n' -W | wc -l) packages now"

# --- Console tools --------------------------------------------------------

tools=/usr/libexec/veltrin
for tool in ping tracert pathping; do
  [ "$(inside getcap "$tools/$tool")" = "$tools/$tool cap_net_raw=ep" ] ||
    fail "$tool has not got the right to raw sockets"
done
for tool in systeminfo fsutil; do
  [ -z "$(inside getcap "$tools/$tool")" ] || fail "$tool has a right that it does not need"
done

# says TEXT COMMAND...: the command ends well, and its words hold the text.
says() {
  local text=$1 words
  shift
  words=$(offline "$@" 2>&1) || fail "$* ended with $?: $words"
  case $words in *"$text"*) ;; *) fail "$* does not say \"$text\": $words" ;; esac
}
says 'Packets: Sent = 2, Received = 2, Lost = 0 (0% loss)' "$tools/ping" -n 2 -w 1000 127.0.0.1
says 'Usage: tracert' "$tools/tracert" '-?'
says 'Trace complete.' "$tools/tracert" -d 127.0.0.1
says 'Trace complete.' "$tools/pathping" -n -q 3 -p 20 127.0.0.1
says 'OS Name:' "$tools/systeminfo"
says 'Total # of avail free bytes  : ' "$tools/fsutil" volume diskfree C:
says 'demo ' veltrin-lab --list
says 'demo: sound.' veltrin-lab --check demo
# It is the right of the file that lets the user send echoes.
inside cp "$tools/ping" /home/tester/ping
if offline /home/tester/ping -n 1 -w 1000 127.0.0.1 >/dev/null 2>&1; then
  fail "echoes are sent without the right of the file"
fi
step "the console tools"

# --- The program ----------------------------------------------------------

for path in applications/veltrin.desktop metainfo/org.example.veltrin.metainfo.xml \
  icons/hicolor/48x48/apps/veltrin.png icons/hicolor/scalable/apps/veltrin.svg \
  man/man1/veltrin.1.gz; do
  [ -s "$root/usr/share/$path" ] || fail "there is no /usr/share/$path"
done

Xvfb -displayfd 3 -ac -screen 0 900x640x24 -nolisten tcp -noreset 3>"$work/number" >/dev/null 2>&1 &
screen=$!
for ((wait = 0; wait < 300; wait++)); do
  [ ! -s "$work/number" ] || break
  sleep 0.1
done
[ -s "$work/number" ] || fail "Xvfb does not start"
DISPLAY=:$(cat "$work/number")
export DISPLAY

menu_is_shown() {
  import -window root -depth 8 rgb:- | python3 "$here/../windows/find_buttons.py" 900 >"$work/buttons"
  [ "$(wc -l <"$work/buttons")" = 8 ]
}
settings=$root/home/tester/.local/share/veltrin/Files/Veltrin.dat
offline env "DISPLAY=$DISPLAY" veltrin >"$work/program.log" 2>&1 &
program_inside=$!
for ((wait = 0; wait < 240; wait++)); do
  if menu_is_shown; then break; fi
  kill -0 "$program_inside" 2>/dev/null || { cat "$work/program.log"; fail "the program has ended"; }
  sleep 0.5
done
import -window root "$pictures/debian-menu.png"
menu_is_shown || { cat "$work/program.log"; fail "the menu does not come"; }
# The first start has asked the tools what the machine is made of, so they were found.
grep -q $'^Total Ram=[1-9][0-9,.]*\r$' "$settings" || fail "the program has not found its tools"
# The button Exit, at the lower right of the menu.
xdotool mousemove --window "$(xdotool search --onlyvisible --name '^Veltrin$')" 404 429 sleep 0.2 click 1
for ((wait = 0; wait < 60; wait++)); do
  kill -0 "$program_inside" 2>/dev/null || break
  sleep 0.5
done
if kill -0 "$program_inside" 2>/dev/null; then
  import -window root "$pictures/debian-failed.png"
  fail "the program does not end by its button Exit"
fi
wait "$program_inside" || fail "the program ended with $?"
step "the program"

# --- The update endpoint --------------------------------------------------

inside "${install[@]}" "$endpoint" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "the update endpoint cannot be installed"; }
command=$(sed -n 's/^ExecStart=//p' "$root/usr/lib/systemd/system/update_endpoint.service")
answer=$(offline bash -c "$command >/dev/null & for i in {1..100}; do
    if { exec 3</dev/tcp/127.0.0.1/31113; } 2>/dev/null; then cat <&3; break; fi; sleep 0.1; done; kill %1")
[ "$answer" = "${command##* }127.0.0.1" ] || fail "the update endpoint answers \"$answer\""
step "the update endpoint"

# --- Taken away -----------------------------------------------------------

inside apt-get -q -y purge veltrin veltrin-update-endpoint >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "the packages cannot be taken away"; }
left=$(comm -13 "$work/before" <(paths) | grep -vxF -f <(owned) | grep -vE "$kept" || true)
[ -z "$left" ] || fail "left behind: $left"
left=$(cd "$root" && find . -xdev -iname '*veltrin*' -not -path './tmp/*' -not -path './home/*' -not -path './proc/*')
[ -z "$left" ] || fail "left behind: $left"
step "taken away; nothing is left"
