#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the middles, "x y", of the buttons in a picture, row by row from the left.

Standard input is the picture as raw RGB bytes, 8 bits a channel; the one argument
is its width in pixels. A button that can be clicked is found by its colour: an area
of it that hangs together, with a text or a picture inside.
"""

import sys

COLOUR = bytes((0xBD, 0xB7, 0x95))
LEAST_WIDTH = 40
LEAST_HEIGHT = 12


def runs(row):
    """The stretches of the colour in a row of pixels, as (first, behind the last)."""
    first = None
    width = len(row) // 3
    for x in range(width + 1):
        inside = x < width and row[3 * x : 3 * x + 3] == COLOUR
        if inside and first is None:
            first = x
        if not inside and first is not None:
            yield first, x
            first = None


class Area:
    """Pixels that hang together: their bounds, and the area they grew into."""

    def __init__(self, left, right, y):
        self.left, self.right, self.top, self.bottom = left, right, y, y + 1
        self.grown = None

    def root(self):
        return self if self.grown is None else self.grown.root()

    def take(self, other):
        other.grown = self
        self.left = min(self.left, other.left)
        self.right = max(self.right, other.right)
        self.top = min(self.top, other.top)
        self.bottom = max(self.bottom, other.bottom)


def areas(picture, width):
    """All areas of the colour."""
    found = []
    above = []
    for y in range(len(picture) // (3 * width)):
        row = picture[3 * width * y : 3 * width * (y + 1)]
        present = []
        for left, right in runs(row) if COLOUR in row else ():
            area = Area(left, right, y)
            found.append(area)
            for first, behind, other in above:
                root = other.root()
                if first < right and behind > left and root is not area:
                    area.take(root)
            present.append((left, right, area))
        above = present
    return [area for area in found if area.grown is None]


buttons = [
    area
    for area in areas(sys.stdin.buffer.read(), int(sys.argv[1]))
    if area.right - area.left >= LEAST_WIDTH and area.bottom - area.top >= LEAST_HEIGHT
]
for area in sorted(buttons, key=lambda area: (area.top // LEAST_HEIGHT, area.left)):
    print((area.left + area.right) // 2, (area.top + area.bottom) // 2)
