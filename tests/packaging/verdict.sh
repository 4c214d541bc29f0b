# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# What the tests that make packages twice have found the same is remembered in the user's cache
# folder, so that the next run with nothing changed need not make them again. With
# VELTRIN_COMPILE_ALL=1 nothing is taken from there.

# The files of a folder of sources as they lie there, also those that are not in git yet.
sources_of() (
  cd "$1" || exit
  if git rev-parse --git-dir >/dev/null 2>&1; then
    git ls-files -co --exclude-standard | while IFS= read -r file; do [ ! -f "$file" ] || echo "$file"; done
  else
    find . -path ./build -prune -o -type f -printf '%P\n' | LC_ALL=C sort
  fi
)

# The mark of a verdict, a file, by all that two packages can differ by: the first of them, the
# sources, and the tools of this system. Takes the folder of the sources and the files of the
# first package.
verdict_of() {
  local sources=$1 sum
  shift
  sum=$({
    cat "$@"
    sources_of "$sources" | (cd "$sources" && xargs -d '\n' sha256sum)
    dpkg-query -W
  } | sha256sum | cut -d ' ' -f 1)
  echo "${XDG_CACHE_HOME:-$HOME/.cache}/veltrin/same-bytes/$sum"
}

# Ends the test when it was found before.
end_if_found() {
  [ -z "${VELTRIN_COMPILE_ALL:-}" ] && [ -e "$1" ] || return 0
  touch "$1"
  echo "The same bytes, as they were found before with these sources and tools"
  exit 0
}

# What nobody asked for in 30 days is forgotten.
remember_verdict() {
  mkdir -p "${1%/*}"
  touch "$1"
  find "${1%/*}" -type f -mtime +30 -delete
}
