#!/usr/bin/env python3
"""Prints the middles, "x y", of the buttons in a picture, from the left.

Standard input is the picture as raw RGB bytes, 8 bits a channel; the one argument
is its width in pixels. A button that can be clicked is found by its colour.
"""

import sys

COLOUR = bytes((0xBD, 0xB7, 0x95))
LEAST_WIDTH = 40
LEAST_HEIGHT = 12


def columns(picture, width):
    """For each x the list of y at which the picture has the colour."""
    found = [[] for _ in range(width)]
    at = picture.find(COLOUR)
    while at >= 0:
        if at % 3 == 0:
            pixel = at // 3
            found[pixel % width].append(pixel // width)
        at = picture.find(COLOUR, at + 1)
    return found


def buttons(found):
    """Runs of columns that are tall enough, as middles."""
    first = None
    for x in range(len(found) + 1):
        tall = x < len(found) and len(found[x]) >= LEAST_HEIGHT
        if tall and first is None:
            first = x
        if not tall and first is not None:
            if x - first >= LEAST_WIDTH:
                rows = found[first + 5]
                yield (first + x) // 2, (rows[0] + rows[-1]) // 2
            first = None


for middle in buttons(columns(sys.stdin.buffer.read(), int(sys.argv[1]))):
    print(*middle)
