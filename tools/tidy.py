# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs clang-tidy over the project's own sources in a build folder.

Usage: tidy.py BUILD-FOLDER CACHE-FOLDER

A file that was found clean is remembered under a hash of everything that the
verdict rests on: its own bytes, those of the project's headers that it includes,
the flags it is compiled with, the checks, clang-tidy and this script. It is looked
at again only when one of these has changed. Where the project lies is no part of it,
so that a fresh checkout of the same sources is quick, too.

The plugin of its own that is told of below is no part of a build and is not looked at.

The tests are spared the static analyzer: it takes most of the time over
GoogleTest's macros, and the sanitizers watch every test run anyway.

Where clang-tidy's headers are there to build it, a plugin keeps the checks out of the
headers of others, in which nothing is reported anyway: the same findings in a third of the
time. It all runs at the lowest priority, so that tests with clocks may run beside it.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("src", "machine", "console", "lab", "tools", "tests", "bench")

PLUGIN_SOURCE = ROOT / "tools" / "tidy_scope" / "own_code.cpp"

# Marks that nobody asked for in so many seconds are dropped: 30 days.
LONGEST_LIFE = 30 * 24 * 3600


def is_ours(path):
    """Whether a file is a source of the project and not one that a build made."""
    try:
        return pathlib.Path(path).relative_to(ROOT).parts[0] in FOLDERS
    except ValueError:
        return False


def compile_commands(build):
    """The compile commands of our sources, one for each file."""
    commands = json.loads((build / "compile_commands.json").read_text())
    return list({c["file"]: c for c in commands if is_ours(c["file"])}.values())


def object_of(command):
    """The object that a compile command makes, by the name that Ninja has for it."""
    words = shlex.split(command["command"])
    return words[words.index("-o") + 1]


def known_headers(build):
    """For every object that was built: our files that went into it, as Ninja knows."""
    text = subprocess.run(["ninja", "-C", build, "-t", "deps"], check=True, text=True,
                          capture_output=True).stdout
    headers, current = {}, None
    for line in text.splitlines():
        if not line.startswith(" "):
            current = headers.setdefault(line.split(": #deps")[0], [])
        else:
            path = os.path.normpath(os.path.join(build, line.strip()))
            if is_ours(path):
                current.append(path)
    return headers


def all_headers():
    """Every header of ours: for a file that was not built yet, any may matter."""
    return [str(path) for folder in FOLDERS for path in (ROOT / folder).rglob("*.h")]


class Verdicts:
    """Knows which files were found clean."""

    def __init__(self, build, cache):
        self.cache = cache
        self.headers = known_headers(build)
        self.version = subprocess.run(["clang-tidy", "--version"], check=True,
                                      capture_output=True).stdout
        settings = [ROOT / ".clang-tidy", pathlib.Path(__file__), PLUGIN_SOURCE]
        self.common = self.version + b"".join(path.read_bytes() for path in settings)
        self.hashes = {}

    def _hash_of_file(self, path):
        if path not in self.hashes:
            try:
                self.hashes[path] = hashlib.sha256(pathlib.Path(path).read_bytes()).digest()
            except OSError:
                self.hashes[path] = b"gone"
        return self.hashes[path]

    def mark_of(self, command):
        """The file whose presence says that this source was found clean."""
        built = self.headers.get(object_of(command))
        files = {command["file"], *(all_headers() if built is None else built)}
        flags = command["command"].replace(command["directory"], "BUILD").replace(str(ROOT), "ROOT")
        digest = hashlib.sha256(self.common + flags.encode())
        for path in sorted(files):
            digest.update(os.path.relpath(path, ROOT).encode() + self._hash_of_file(path))
        return self.cache / digest.hexdigest()


def plugin(cache, version):
    """The plugin, built when it is not there yet; nothing where the headers are missing."""
    headers = pathlib.Path(shutil.which("clang-tidy")).resolve().parent.parent / "include"
    if not (headers / "clang-tidy" / "ClangTidyCheck.h").exists():
        print(f"No headers of clang-tidy in {headers}: looking at those of others, too.")
        return None
    name = hashlib.sha256(version + PLUGIN_SOURCE.read_bytes()).hexdigest()
    library = cache / f"own-code-{name}.so"
    if not library.exists():
        made = library.with_suffix(f".{os.getpid()}")
        subprocess.run(["clang++", "-std=c++17", "-O1", "-fno-rtti", "-fPIC", "-shared", "-isystem",
                        headers, PLUGIN_SOURCE, "-o", made], check=True)
        made.rename(library)
    library.touch()
    return library


def check(build, command, mark, library):
    """Runs clang-tidy over one source; its words when it found something."""
    words = ["clang-tidy", "--quiet", "-p", build]
    checks = []
    if library:
        words.append(f"--load={library}")
        checks.append("veltrin-own-code")
    if pathlib.Path(command["file"]).is_relative_to(ROOT / "tests"):
        checks.append("-clang-analyzer-*")
    if checks:
        words.append("--checks=" + ",".join(checks))
    run = subprocess.run([*words, command["file"]], text=True, capture_output=True)
    if run.returncode == 0:
        mark.touch()
        return ""
    return run.stdout or run.stderr or f"{command['file']}: clang-tidy failed\n"


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    cache = pathlib.Path(sys.argv[2]).resolve()
    if not (build / "compile_commands.json").exists():
        sys.exit(f"{build} is no build folder; ./test.sh makes build/asan.")
    cache.mkdir(parents=True, exist_ok=True)
    os.nice(19)
    verdicts = Verdicts(build, cache)
    commands = compile_commands(build)
    marks = [(command, verdicts.mark_of(command)) for command in commands]
    todo = [(command, mark) for command, mark in marks if not mark.exists()]
    for _, mark in marks:
        if mark.exists():
            mark.touch()
    library = plugin(cache, verdicts.version) if todo else None
    bad = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(check, build, command, mark, library) for command, mark in todo]
        for run in concurrent.futures.as_completed(runs):
            if run.result():
                bad += 1
                print(run.result(), flush=True)
    for mark in cache.iterdir():
        if time.time() - mark.stat().st_mtime > LONGEST_LIFE:
            mark.unlink()
    print(f"clang-tidy: {len(commands)} files, {len(todo)} of them looked at now, {bad} with findings.")
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
