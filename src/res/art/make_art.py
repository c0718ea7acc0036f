#!/usr/bin/env python3
"""Makes the icons and the menu-bar strip from their text sources.

  make_art.py OUTPUT_DIRECTORY [--check]

Writes icon_<id>.ico for each icon of icons.txt and menu_bar.bmp from menu_bar.txt, as 8-bit images.
--check reads the written files back and fails unless sizes and pixels are those of the sources.
"""
import os
import struct
import sys

SIDE = 16
TRANSPARENT = "."
KEY_COLOUR = (0xFF, 0x00, 0xFF)  # stands for "." in bitmaps, which have no mask
HERE = os.path.dirname(os.path.abspath(__file__))


class ArtError(Exception):
    pass


def read_art(path, keyword):
    """Returns (palette, [(number, rows)]): palette maps a character to (red, green, blue)."""
    with open(path, encoding="ascii") as source:
        lines = [line.rstrip("\n") for line in source]
    palette, images = {}, []
    for number, line in enumerate(lines, 1):
        where = f"{os.path.basename(path)}:{number}"
        words = line.split()
        if not words or words[0] == "#" or line == "palette":
            continue
        if words[0] == keyword:
            images.append((int(words[1]), []))
        elif not images:
            char, colour = words
            if len(char) != 1 or char == TRANSPARENT or len(colour) != 6:
                raise ArtError(f"{where}: not a colour: {line}")
            palette[char] = tuple(bytes.fromhex(colour))
        else:
            unknown = set(line) - set(palette) - {TRANSPARENT}
            if len(line) != SIDE or unknown:
                raise ArtError(f"{where}: not a row of {SIDE} known pixels: {line}")
            images[-1][1].append(line)
    for number, rows in images:
        if len(rows) != SIDE:
            raise ArtError(f"{os.path.basename(path)}: {keyword} {number} has {len(rows)} rows")
    return palette, images


def info_header(width, height, bits, colours):
    return struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, 0, 0, 0, colours, 0)


def colour_table(palette, first):
    """256 entries: `first` is entry 0, the palette's characters follow in order."""
    table = [first] + list(palette.values())
    table += [(0, 0, 0)] * (256 - len(table))
    return b"".join(struct.pack("BBBB", blue, green, red, 0) for red, green, blue in table)


def pixels(palette, rows):
    """Bottom row first; widths are multiples of four, so rows need no padding."""
    index = {TRANSPARENT: 0}
    index.update({char: i for i, char in enumerate(palette, 1)})
    return b"".join(bytes(index[char] for char in row) for row in reversed(rows))


def icon_mask(rows):
    """One bit a pixel, set where the background shows; rows padded to four bytes."""
    mask = b""
    for row in reversed(rows):
        bits = int("".join("1" if char == TRANSPARENT else "0" for char in row), 2)
        mask += struct.pack(">HH", bits, 0)
    return mask


def make_icon(palette, rows):
    image = (info_header(SIDE, 2 * SIDE, 8, 256) + colour_table(palette, (0, 0, 0)) +
             pixels(palette, rows) + icon_mask(rows))
    directory = struct.pack("<HHH", 0, 1, 1)
    entry = struct.pack("<BBBBHHII", SIDE, SIDE, 0, 0, 1, 8, len(image), 6 + 16)
    return directory + entry + image


def make_strip(palette, images):
    rows = ["".join(rows[y] for _, rows in images) for y in range(SIDE)]
    image = (info_header(SIDE * len(images), SIDE, 8, 256) + colour_table(palette, KEY_COLOUR) +
             pixels(palette, rows))
    offset = 14 + 40 + 4 * 256
    return struct.pack("<2sIHHI", b"BM", 14 + len(image), 0, 0, offset) + image


def check_strip(data, count):
    size, = struct.unpack_from("<I", data, 2)
    width, height = struct.unpack_from("<ii", data, 18)
    if size != len(data) or (width, height) != (SIDE * count, SIDE):
        raise ArtError(f"menu_bar.bmp: {width}x{height}, {len(data)} bytes")


def check_icon(name, data):
    size, offset = struct.unpack_from("<II", data, 14)
    width, height = struct.unpack_from("<ii", data, offset + 4)
    if offset + size != len(data) or (width, height) != (SIDE, 2 * SIDE):
        raise ArtError(f"{name}: {width}x{height}, {len(data)} bytes")


def main(arguments):
    output, check = arguments[0], "--check" in arguments[1:]
    os.makedirs(output, exist_ok=True)
    palette, icons = read_art(os.path.join(HERE, "icons.txt"), "icon")
    files = {f"icon_{number}.ico": make_icon(palette, rows) for number, rows in icons}
    palette, strip = read_art(os.path.join(HERE, "menu_bar.txt"), "image")
    if [number for number, _ in strip] != list(range(len(strip))):
        raise ArtError("menu_bar.txt: images are not in order")
    files["menu_bar.bmp"] = make_strip(palette, strip)
    for name, data in files.items():
        path = os.path.join(output, name)
        if check:
            with open(path, "rb") as made:
                if made.read() != data:
                    raise ArtError(f"{name} is not what its source says")
            check_strip(data, len(strip)) if name.endswith(".bmp") else check_icon(name, data)
        else:
            with open(path, "wb") as made:
                made.write(data)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except (ArtError, OSError, ValueError) as error:
        sys.exit(f"make_art: {error}")
