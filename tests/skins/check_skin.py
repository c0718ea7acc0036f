#!/usr/bin/env python3
"""Looks at the drawn skin as a player does: check_skin.py FOLDER

States must differ, what is lit must lie on plain glass, and the two texts must say what they have
to.
"""
import pathlib
import re
import struct
import sys

faults = []


def expect(held, what):
    if not held:
        faults.append(what)


class Sheet:
    """A 24-bit bitmap; part() returns its rows of (red, green, blue)."""

    def __init__(self, folder, name):
        data = (folder / name).read_bytes()
        offset, = struct.unpack_from("<I", data, 10)
        self.width, self.height = struct.unpack_from("<ii", data, 18)
        stride = (3 * self.width + 3) // 4 * 4
        starts = [offset + stride * y for y in reversed(range(self.height))]
        self.rows = [[data[at + 3 * x:at + 3 * x + 3][::-1] for x in range(self.width)]
                     for at in starts]

    def part(self, x, y, width, height):
        assert x + width <= self.width and y + height <= self.height
        return [row[x:x + width] for row in self.rows[y:y + height]]

    def colours(self, x, y, width, height):
        return {pixel for row in self.part(x, y, width, height) for pixel in row}


def check_displays(main, sheets):
    """What is lit is drawn with its own background: behind it the glass must be the same."""
    glass = sheets["text"].colours(150, 0, 5, 6)
    expect(len(glass) == 1, "the space of text.bmp is not blank")
    for x, y, width, height in [(111, 27, 154, 6), (111, 43, 15, 6), (156, 43, 10, 6),
                                (26, 28, 9, 9), (24, 43, 76, 16), (36, 26, 9, 13)]:
        expect(main.colours(x, y, width, height) == glass, f"main.bmp {x},{y} is not plain glass")
    blank = sheets["numbers"].part(90, 0, 9, 13)
    for x in (48, 60, 78, 90):
        expect(main.part(x, 26, 9, 13) == blank, f"main.bmp has no blank numeral at {x},26")
    expect(sheets["nums_ex"].part(0, 0, 99, 13) == sheets["numbers"].part(0, 0, 99, 13),
           "nums_ex.bmp and numbers.bmp differ")


def check_states(sheets):
    """Places of one control in all its states: none may look like another."""
    pair = (0, 15)
    groups = [(name, [(x, y, width, height) for y in ys for x in xs]) for name, width, height, xs, ys in [
        ("nums_ex", 9, 13, range(0, 108, 9), [0]), ("playpaus", 9, 9, range(0, 36, 9), [0]),
        ("playpaus", 3, 9, (36, 39), [0]), ("volume", 68, 13, [0], range(0, 420, 15)),
        ("volume", 14, 11, pair, [422]), ("balance", 38, 13, [9], range(0, 420, 15)),
        ("balance", 14, 11, pair, [422]), ("posbar", 29, 10, (248, 278), [0]),
        ("monoster", 29, 12, [0], (0, 12)), ("monoster", 27, 12, [29], (0, 12)),
        ("shufrep", 28, 15, [0], (0, 15, 30, 45)), ("shufrep", 47, 15, [28], (0, 15, 30, 45)),
        ("shufrep", 23, 12, (0, 23, 46, 69), (61, 73)), ("titlebar", 275, 14, [27], pair),
        ("titlebar", 275, 13, [27], (29, 42)), ("titlebar", 9, 9, (0, 9), (0, 9, 18)),
        ("titlebar", 9, 9, [18], (0, 9)), ("eqmain", 26, 12, (10, 69, 128, 187), [119]),
        ("eqmain", 32, 12, (36, 95, 154, 213), [119]), ("eqmain", 44, 12, [224], (164, 176)),
        ("eqmain", 11, 11, [0], (164, 176)), ("eqmain", 9, 9, [0], (116, 125)),
        ("eqmain", 275, 14, [0], (134, 149)), ("eq_ex", 275, 14, [0], pair),
        ("pledit", 25, 20, [0], (0, 21)), ("pledit", 100, 20, [26], (0, 21)),
        ("pledit", 25, 20, [153], (0, 21)), ("pledit", 8, 18, (52, 61), [53]),
        ("cbuttons", 22, 16, [114], (0, 16)), *[("cbuttons", 22, 18, [23 * i], (0, 18)) for i in range(5)]]]
    groups += [("text", [(5 * x, 6 * y, 5, 6)  # but the numeral 0 may be the letter O
                         for y, first, last in ((0, 0, 28), (1, 1, 31), (2, 0, 5))
                         for x in range(first, last)] + [(150, 0, 5, 6)]),
               ("eqmain", [(13 + 15 * i, y, 14, 63) for y in (164, 229) for i in range(14)
                           if (i, y) != (0, 229)])]  # the two steps beside the middle may be one
    for name, places in groups:
        seen = {}
        for place in places:
            part = str(sheets[name].part(*place))
            expect(part not in seen, f"{name} {place} looks like {seen.get(part)}")
            seen[part] = place


def check_texts(folder):
    lines = (folder / "viscolor.txt").read_text(encoding="ascii").splitlines()
    colours = [re.match(r"(\d+),(\d+),(\d+),", line) for line in lines]
    expect(len(lines) == 24 and all(colours), "viscolor.txt is not 24 colours")
    values = [tuple(int(part) for part in match.groups()) for match in colours if match]
    expect(max(max(value) for value in values) < 256, "a colour of viscolor.txt is out of range")
    for first, last in ((2, 17), (18, 22)):
        brightness = [sum(value) for value in values[first:last + 1]]
        expect(brightness == sorted(brightness, reverse=True), f"colours {first} to {last} rise")
    entries = (folder / "pledit.txt").read_text(encoding="ascii").splitlines()
    expect(entries[0] == "[Text]", "pledit.txt has no section")
    for key in ("Normal", "Current", "NormalBG", "SelectedBG"):
        expect(any(re.fullmatch(f"{key}=#[0-9A-F]{{6}}", entry) for entry in entries),
               f"pledit.txt has no {key}")


def main(folder):
    folder = pathlib.Path(folder)
    sheets = {path.stem: Sheet(folder, path.name) for path in folder.glob("*.bmp")}
    check_displays(sheets["main"], sheets)
    check_states(sheets)
    check_texts(folder)
    if faults:
        sys.exit("\n".join(faults))


if __name__ == "__main__":
    main(*sys.argv[1:])
