#!/usr/bin/env python3
"""Compares the screenshots of two libraries pixel by pixel; exits with 1 when they are not the same.

    compare_pictures.py FOLDER OTHER
"""

import pathlib
import struct
import sys
import zlib

# What moves in a picture while music plays, as left, top, right, bottom: the player's display, the
# row that is lit in its list, and the list's clock.
SINGLE = ((4, 18, 271, 84), (10, 252, 258, 292), (127, 316, 222, 343))
MOVING = {
    "player": SINGLE,
    "player-menu": SINGLE,
    "player-about": SINGLE,
    "player-entry-menu": SINGLE,
    "player-preset-name": SINGLE,
    "player-double": ((8, 36, 543, 169), (20, 504, 517, 585), (254, 632, 445, 687)),
    "player-rolled-up": ((10, 150, 258, 190), (127, 214, 222, 241)),
}
PIXEL = 3


def rows(path):
    """Rows of red, green, blue of a file that the screenshots program wrote: one block, no filters."""
    data = path.read_bytes()
    width, height = struct.unpack_from(">II", data, 16)
    begin = data.index(b"IDAT")
    size = struct.unpack_from(">I", data, begin - 4)[0]
    flat = zlib.decompress(data[begin + 4:begin + 4 + size])
    step = 1 + width * PIXEL
    return [bytearray(flat[y * step + 1:(y + 1) * step]) for y in range(height)]


def still(path):
    picture = rows(path)
    for left, top, right, bottom in MOVING.get(path.stem, ()):
        for row in picture[top:bottom + 1]:
            end = min((right + 1) * PIXEL, len(row))
            row[left * PIXEL:end] = bytes(max(0, end - left * PIXEL))
    return picture


def difference(path, other):
    """None, or where two pictures differ."""
    ours, theirs = still(path), still(other)
    if [len(row) for row in ours] != [len(row) for row in theirs]:
        return "another size"
    places = [(x // PIXEL, y) for y, (a, b) in enumerate(zip(ours, theirs)) if a != b
              for x in range(len(a)) if a[x] != b[x]]
    if not places:
        return None
    columns, lines = zip(*places)
    return "within %d,%d to %d,%d" % (min(columns), min(lines), max(columns), max(lines))


def main():
    folder, other = map(pathlib.Path, sys.argv[1:])
    names = {path.name for path in [*folder.glob("*.png"), *other.glob("*.png")]}
    different = 0
    for name in sorted(names):
        missing = [str(place) for place in (folder, other) if not (place / name).exists()]
        found = "not in " + missing[0] if missing else difference(folder / name, other / name)
        if found:
            different += 1
            print("%s differs: %s" % (name, found))
    masked = sorted(name for name in MOVING if name + ".png" in names)
    print("%d of %d pictures are the same; in %d of them what moves is left out: %s"
          % (len(names) - different, len(names), len(masked), ", ".join(masked)))
    return 1 if different or not names else 0


if __name__ == "__main__":
    sys.exit(main())
