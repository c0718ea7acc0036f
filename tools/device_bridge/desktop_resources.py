#!/usr/bin/env python3
"""Copies a library of resources alone so that this machine's loader takes it.

    desktop_resources.py DEVICE.dll OUT.dll

Two words of the header differ: the processor and the subsystem.
"""

import pathlib
import struct
import sys

MACHINE_386 = 0x14C
WINDOWS_GUI = 2


def main():
    data = bytearray(pathlib.Path(sys.argv[1]).read_bytes())
    pe, = struct.unpack_from("<I", data, 0x3C)
    struct.pack_into("<H", data, pe + 4, MACHINE_386)
    struct.pack_into("<H", data, pe + 24 + 68, WINDOWS_GUI)
    pathlib.Path(sys.argv[2]).write_bytes(data)


if __name__ == "__main__":
    main()
