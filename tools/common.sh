# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# What the project's scripts share: words for people, packages, phases with
# their times, and who does what when a script was started through sudo. To be
# sourced by bash with the project's folder as the current one.

say() { printf 'veltrin: %s\n' "$*"; }

# fail WORDS...: ends the script and tells why.
fail() {
  printf 'veltrin: %s\n' "$*" >&2
  exit 1
}

# --- Phases ---------------------------------------------------------------

phase_name=
phase_start=0
phase_table=()

# phase NAME: ends the phase before, telling how long it took, and begins a new one.
phase() {
  phase_end
  phase_name=$1
  phase_start=$SECONDS
}

phase_end() {
  [ -n "$phase_name" ] || return 0
  say "$phase_name: $((SECONDS - phase_start)) s"
  phase_table+=("$phase_name" $((SECONDS - phase_start)))
  phase_name=
}

# phase_summary: ends the phase and prints the times of all of them.
phase_summary() {
  phase_end
  say "Times of this run:"
  printf '  %-18s %5d s\n' "${phase_table[@]}" "The whole" "$SECONDS"
}

# --- Rights ---------------------------------------------------------------

# as_root COMMAND...: runs a command as root; fails when there is no way to.
as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null; then
    say "\"$1\" needs root's rights, and there is no sudo here."
    return 1
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}

# called_by_sudo: whether a person with an account of their own called through sudo.
called_by_sudo() { [ "$(id -u)" = 0 ] && [ "${SUDO_USER:-root}" != root ]; }

# The words before a command that make it run as the person who called through
# sudo, with that person's home; none when nobody did.
user_prefix=()
if called_by_sudo; then
  user_prefix=(runuser -u "$SUDO_USER" -- env "HOME=$(getent passwd "$SUDO_USER" | cut -d: -f6)"
    "USER=$SUDO_USER" "LOGNAME=$SUDO_USER")
  runtime=/run/user/$(id -u "$SUDO_USER")
  [ ! -d "$runtime" ] || user_prefix+=("XDG_RUNTIME_DIR=$runtime")
fi

# as_user COMMAND...: runs a command as the person who called the script through
# sudo, so that what it makes is theirs; else as whoever runs the script.
as_user() { "${user_prefix[@]}" "$@"; }

# --- Packages -------------------------------------------------------------

# packages GROUP...: the packages of some groups of packages.txt, one a line.
packages() {
  awk -v wanted=" $* " '
    /^#/ || NF == 0 { next }
    /^\[.*\]$/ { group = substr($0, 2, length($0) - 2); next }
    index(wanted, " " group " ") && !seen[$1]++ { print $1 }' packages.txt
}

# missing_packages GROUP...: those of them that are not installed.
missing_packages() {
  local all
  mapfile -t all < <(packages "$@")
  { dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${all[@]}" 2>/dev/null || true; } |
    awk 'NF == 2 && $1 == "installed" { have[$2] = 1 }
         NF == 1 && !have[$1]' - <(printf '%s\n' "${all[@]}")
}

# install_packages GROUP...: installs what is missing. Asks nobody and reaches
# for the network only when something is.
install_packages() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "This is no Debian, so nothing is installed for you. packages.txt lists what is needed, by Debian's names."
    return
  fi
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  as_root true || fail "Packages are missing and can only be installed by root. Run \"sudo $0\", or install them yourself: ${missing[*]}"
  as_root apt-get -q -o DPkg::Lock::Timeout=300 update ||
    say "The package lists could not be brought up to date (the words above say why); trying with the old ones."
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 \
    -o Dpkg::Use-Pty=0 --no-install-recommends install "${missing[@]}" ||
    fail "Not all packages could be installed: ${missing[*]}. Is this machine online, and is it Debian 12? What apt-get said stands above."
  leave_servers_down "${missing[@]}"
}

# leave_servers_down PACKAGE...: when a web server or a print server has just been installed,
# Debian has started it for everybody and would do so at each boot. The tests start their own.
leave_servers_down() {
  local services=()
  case " $* " in *' nginx-light '*) services+=(nginx) ;; esac
  case " $* " in *' cups-daemon '*) services+=(cups.path cups.socket cups.service) ;; esac
  [ ${#services[@]} -gt 0 ] || return 0
  command -v systemctl >/dev/null || return 0
  as_root systemctl disable --now "${services[@]}" >/dev/null 2>&1 ||
    say "Servers that the tests need may run now; \"systemctl disable --now ${services[*]}\" ends them."
}

# need COMMAND...: fails when a program is not there.
need() {
  local command
  for command in "$@"; do
    command -v "$command" >/dev/null ||
      fail "The program \"$command\" is missing. packages.txt lists what is needed, by Debian's names."
  done
}

# --- Building -------------------------------------------------------------

# build PRESET [CMAKE-ARGUMENT...]: configures and builds one preset. What CMake
# says while it configures is shown only when it fails.
build() {
  local preset=$1 log
  shift
  log=$(mktemp)
  if ! as_user cmake --preset "$preset" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    fail "CMake could not prepare build/$preset; its words stand above."
  fi
  rm -f "$log"
  as_user cmake --build --preset "$preset" ||
    fail "The build in build/$preset failed; the compiler's words stand above."
}
