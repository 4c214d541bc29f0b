# SPDX-License-Identifier: GPL-3.0-or-later
# Where Wine keeps its Windows for the tests, for the scripts that start it. Sets WINEPREFIX to
# the one that all tests share.
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"
export WINEPREFIX="${VELTRIN_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/wine}"

# Makes the shared prefix where it is missing. Others may want it at the same moment. Its
# screens have no window manager: told of one, Wine would wait two seconds for its answer
# whenever a window goes.
make_prefix() {
  mkdir -p "$WINEPREFIX"
  (
    flock 9
    [ -e "$WINEPREFIX/system.reg" ] || { wineboot --init >/dev/null 2>&1; wineserver -w; }
    grep -qxF '"Managed"="N"' "$WINEPREFIX/user.reg" ||
      printf '\n[Software\\\\Wine\\\\X11 Driver]\n"Managed"="N"\n' >>"$WINEPREFIX/user.reg"
  ) 9>"$WINEPREFIX/.lock"
}

# Makes that folder a prefix with a registry and a server of its own, and takes it: its screens
# have so many dots an inch, and what a program changes in the registry is gone with it. The
# drive is the shared one. To be ended with end_own_prefix.
take_own_prefix() {
  local shared=$WINEPREFIX
  make_prefix
  mkdir -p "$1/dosdevices"
  cp "$shared/system.reg" "$shared/user.reg" "$shared/userdef.reg" "$shared/.update-timestamp" "$1"
  ln -s "$shared/drive_c" "$1/drive_c"
  ln -s ../drive_c "$1/dosdevices/c:"
  ln -s / "$1/dosdevices/z:"
  sed -i '/^\[Control Panel\\\\Desktop\]/,/^$/{/^"LogPixels"=/d}' "$1/user.reg"
  sed -i "/^\[Control Panel\\\\\\\\Desktop\]/a \"LogPixels\"=dword:$(printf %08x "$2")" "$1/user.reg"
  export WINEPREFIX=$1 VELTRIN_WINEPREFIX=$1
}

# Puts a program into the system folder of the prefix that was taken, under these names and in
# place of Wine's own. All else on the drive stays the shared one's. Usage: put_into_system FILE NAME...
put_into_system() {
  local drive=$WINEPREFIX/drive_c system=$WINEPREFIX/drive_c/windows/system32 shared file=$1 name
  shared=$(readlink -f "$drive")
  rm "$drive"
  mkdir -p "$system"
  find "$shared" -mindepth 1 -maxdepth 1 ! -name windows -exec ln -s -t "$drive" {} +
  find "$shared/windows" -mindepth 1 -maxdepth 1 ! -name system32 -exec ln -s -t "$drive/windows" {} +
  find "$shared/windows/system32" -mindepth 1 -maxdepth 1 -exec ln -s -t "$system" {} +
  shift
  for name in "$@"; do
    rm -f "$system/$name.exe"
    cp "$file" "$system/$name.exe"
    # Wine takes its own program of a name in that folder else, whatever lies there.
    WINEDLLOVERRIDES="$WINEDLLOVERRIDES;$name.exe=n"
  done
}

# Ends all programs of the prefix that was taken, and removes it.
end_own_prefix() {
  wineserver -k 2>/dev/null || true
  # A program that lost its screen may never end.
  timeout 30 wineserver -w 2>/dev/null || wineserver -k9 2>/dev/null || true
  rm -rf "$WINEPREFIX"
}
