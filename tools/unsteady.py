# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs a command while processes stand still now and then, each by itself.

Usage: unsteady.py SEED NAMES STILL RUNNING COMMAND...

NAMES is a regular expression for the names of the processes meant, as /proc tells them; on
average each stands still for STILL ms and then runs for RUNNING ms. For the superuser, as

  python3 tools/unsteady.py 1 'veltrin|openbox|Xvfb' 60 150 \\
    ctest --test-dir build -j4 -R desk --output-on-failure

A test that fails so rests on who of two comes first, or on a time that only an idle machine
keeps. Programs that all stand still together, or are slow together, do not show the first.

The kernel's freezer is used (cgroups, version 2): a signal would interrupt calls that a busy
machine does not interrupt. Ends with the exit code of the command.
"""

import pathlib
import random
import re
import subprocess
import sys
import time

GLANCE = 0.004  # s between two looks at what is due
CENSUS = 0.03  # s between two looks for new processes


def hierarchy():
    """Where cgroups of version 2 are mounted in which this user may make some."""
    for line in pathlib.Path("/proc/mounts").read_text().splitlines():
        _, place, kind, *_ = line.split()
        if kind == "cgroup2" and may_freeze(pathlib.Path(place) / "unsteady-trial"):
            return pathlib.Path(place)
    sys.exit("unsteady.py: no cgroups of version 2 that may be changed")


def may_freeze(group):
    try:
        group.mkdir()
    except OSError:
        return False
    frozen = tell(group / "cgroup.freeze", 0)
    group.rmdir()
    return frozen


def tell(file, value):
    """Writes a value into a file of the kernel's; false when it is not taken."""
    try:
        file.write_text(str(value))
        return True
    except OSError:
        return False


def processes(names):
    """The numbers of the processes whose names fit."""
    found = set()
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if names.fullmatch((folder / "comm").read_text().rstrip("\n")):
                found.add(int(folder.name))
        except OSError:
            pass  # it has ended meanwhile
    return found


class Freezer:
    """A group for one process, which can stand still."""

    def __init__(self, root, pid):
        self.root = root
        self.group = root / f"unsteady-{pid}"
        self.group.mkdir(exist_ok=True)
        self.pid = pid
        self.still = False
        self.due = 0.0  # when it changes next

    def take(self):
        """Puts the process into the group; false when it has ended."""
        return tell(self.group / "cgroup.procs", self.pid)

    def turn(self):
        self.still = not self.still
        tell(self.group / "cgroup.freeze", int(self.still))

    def leave(self):
        """Lets the process and its children go on where all others are."""
        tell(self.group / "cgroup.freeze", 0)
        for pid in (self.group / "cgroup.procs").read_text().split():
            tell(self.root / "cgroup.procs", pid)
        try:
            self.group.rmdir()
        except OSError:
            pass  # a child has come meanwhile


class Disturber:
    """Lets all processes of some names stand still now and then."""

    def __init__(self, root, names, still, running, chance):
        self.root = root
        self.names = names
        self.lasting = {True: still, False: running}  # s on average
        self.chance = chance
        self.freezers = {}
        self.stops = 0

    def count(self, now):
        """Takes what has come and leaves what has gone."""
        there = processes(self.names)
        for pid in self.freezers.keys() - there:
            self.freezers.pop(pid).leave()
        for pid in there - self.freezers.keys():
            freezer = Freezer(self.root, pid)
            freezer.due = now + self.chance.uniform(0, self.lasting[False])
            if freezer.take():
                self.freezers[pid] = freezer
            else:
                freezer.leave()

    def turn(self, now):
        for freezer in self.freezers.values():
            if freezer.due > now:
                continue
            freezer.turn()
            self.stops += freezer.still
            freezer.due = now + self.chance.uniform(0, 2 * self.lasting[freezer.still])

    def end(self):
        for freezer in self.freezers.values():
            freezer.leave()


def main():
    if len(sys.argv) < 6:
        sys.exit(__doc__)
    seed, names, still, running, *words = sys.argv[1:]
    disturber = Disturber(hierarchy(), re.compile(names), float(still) / 1000,
                          float(running) / 1000, random.Random(int(seed)))
    census = 0.0
    try:
        command = subprocess.Popen(words)
        while command.poll() is None:
            now = time.monotonic()
            if now >= census:
                census = now + CENSUS
                disturber.count(now)
            disturber.turn(now)
            time.sleep(GLANCE)
    finally:
        disturber.end()
    print(f"unsteady.py: processes stood still {disturber.stops} times", file=sys.stderr)
    sys.exit(command.returncode)


if __name__ == "__main__":
    main()
