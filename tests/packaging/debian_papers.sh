#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Looks at the Debian packages without installing them: the validators of their papers, the
# version, the parts that they are to hold, the units, and that the manual pages tell every option
# that the tools tell of themselves, and no other. Usage: debian_papers.sh FOLDER_OF_THE_PACKAGES
set -eu
here=$(dirname "$(readlink -f "$0")")
packages=$(readlink -f "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

wrong() {
  printf 'FAILED: %s\n' "$*" >&2
  failures=$((failures + 1))
}
for tool in dpkg-deb desktop-file-validate appstreamcli lintian man; do
  command -v "$tool" >/dev/null || { echo "SKIPPED: there is no $tool here"; exit 77; }
done

version=$(sed -n 's/^project(veltrin VERSION \([0-9.]*\).*/\1/p' "$here/../../CMakeLists.txt")
program=$packages/veltrin_${version}_amd64.deb
endpoint=$packages/veltrin-update-endpoint_${version}_amd64.deb
for package in "$program" "$endpoint"; do
  [ -s "$package" ] || { wrong "there is no $package"; exit 1; }
  dpkg-deb -x "$package" "$work"
  [ "$(dpkg-deb -f "$package" Version)" = "$version" ] || wrong "$package tells another version"
done

# --- Papers ---------------------------------------------------------------

desktop-file-validate "$work/usr/share/applications/veltrin.desktop" || wrong "desktop-file-validate"
metainfo=$work/usr/share/metainfo/org.example.veltrin.metainfo.xml
appstreamcli validate --no-net "$metainfo" || wrong "appstreamcli validate"
grep -q "<release version=\"$version\"" "$metainfo" || wrong "the release is not in the metadata"
lintian --allow-root --fail-on error,warning "$program" "$endpoint" || wrong "lintian"

for size in 16x16 32x32 48x48 64x64 128x128 256x256; do
  file "$work/usr/share/icons/hicolor/$size/apps/veltrin.png" | grep -q "${size/x/ x }," ||
    wrong "there is no icon of $size pixels"
done
[ -s "$work/usr/share/icons/hicolor/scalable/apps/veltrin.svg" ] || wrong "there is no drawn icon"

# --- Manual pages ---------------------------------------------------------

# The options at the beginnings of lines in a tool's own words.
options_told() { "$1" "-?" | tr -d '\r' | grep -oE '^ +-[^ ]' | tr -d ' ' | sort -u; }

# Those that a manual page has entries for.
options_of_page() {
  zcat "$1" | sed -n '/^\.SH OPTIONS/,/^\.SH [^O]/p' | grep -A1 '^\.TP' |
    grep -oE '^\.BI? \\-[^ ]' | grep -oE '.$' | sed 's/^/-/' | sort -u
}

for tool in ping tracert pathping systeminfo fsutil; do
  page=$work/usr/share/man/man1/veltrin-$tool.1.gz
  told=$(options_told "$work/usr/libexec/veltrin/$tool")
  [ -n "$told" ] || wrong "$tool tells no options"
  [ "$told" = "$(options_of_page "$page")" ] ||
    wrong "$tool and its manual page tell different options:
$(diff <(echo "$told") <(options_of_page "$page"))"
done
for page in "$work"/usr/share/man/man*/*.gz; do
  words=$(LC_ALL=C.UTF-8 MANROFFSEQ='' man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
  [ -z "$words" ] || wrong "${page##*/}: $words"
done

# --- Units ----------------------------------------------------------------

units=$work/usr/lib/systemd/system
grep -qx "ExecStart=/usr/bin/update_endpoint $version" "$units/update_endpoint.service" ||
  wrong "the unit starts something else, or tells another version"
if command -v systemd-analyze >/dev/null; then
  # The program is not installed here; all else of the unit is looked at as it is.
  mkdir "$work/units"
  cp "$units/update_endpoint.socket" "$work/units"
  sed "s|/usr/bin/update_endpoint|$work&|" "$units/update_endpoint.service" \
    >"$work/units/update_endpoint.service"
  words=$(systemd-analyze verify --man=no "$work/units/update_endpoint.service" \
    "$work/units/update_endpoint.socket" 2>&1) || wrong "systemd-analyze verify: $words"
  case $words in *update_endpoint*) wrong "systemd-analyze verify: $words" ;; esac
else
  echo "systemd-analyze is not here; the units were not verified by it."
fi

[ "$failures" = 0 ] || exit 1
echo "The papers of $version are in order."
