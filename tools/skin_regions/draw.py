#!/usr/bin/env python3
"""Draws the bitmaps of a skin with the pieces that the player shows of them: each piece in a frame, what is
never shown dark.

usage: draw.py [--check] REGIONS SKIN PICTURES
REGIONS is the program skin_regions, SKIN a folder of 24-bit bitmaps, PICTURES the folder of pictures.
--check compares with the pictures that are there.
"""
import pathlib
import struct
import subprocess
import sys
import zlib

SCALE = 2
FRAME = (255, 0, 200)


def read_bitmap(path):
    """(width, height, rows of (red, green, blue) from the top)."""
    data = path.read_bytes()
    offset, = struct.unpack_from("<I", data, 10)
    width, height = struct.unpack_from("<ii", data, 18)
    stride = (3 * width + 3) // 4 * 4
    return [[tuple(reversed(data[at + 3 * x:at + 3 * x + 3])) for x in range(width)]
            for at in (offset + stride * y for y in reversed(range(height)))]


def enlarged(pixels, digits):
    """The picture's rows, with frames between the pieces."""
    rows = []
    for y, row in enumerate(pixels):
        for sub_y in range(SCALE):
            out = bytearray()
            for x, colour in enumerate(row):
                digit = digits[y][x]
                if not digit & 1:
                    colour = tuple(part // 4 for part in colour)
                for sub_x in range(SCALE):
                    edge = (digit & 2 and sub_x == SCALE - 1) or (digit & 4 and sub_y == SCALE - 1)
                    out += bytes(FRAME if edge else colour)
            rows.append(bytes(out))
    return rows


def png(rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    header = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(b"".join(b"\0" + row for row in rows), 9)) + chunk(b"IEND", b""))


def pixels_of(data):
    """Of a picture made here; however it was packed."""
    length, = struct.unpack_from(">I", data, 33)
    return data[16:24], zlib.decompress(data[41:41 + length])


def main():
    checks = sys.argv[1] == "--check"
    regions, skin, pictures = map(pathlib.Path, sys.argv[-3:])
    lines = iter(subprocess.run([regions], check=True, capture_output=True, text=True).stdout.splitlines())
    wrong = 0
    for line in lines:
        name, _, height = line.split()
        digits = [[int(digit) for digit in next(lines)] for _ in range(int(height))]
        data = png(enlarged(read_bitmap(skin / name), digits))
        picture = pictures / name.replace(".bmp", ".png")
        if not checks:
            picture.write_bytes(data)
        elif not picture.exists() or pixels_of(picture.read_bytes()) != pixels_of(data):
            print("%s is not what the player shows" % picture)
            wrong = 1
    sys.exit(wrong)


if __name__ == "__main__":
    main()
