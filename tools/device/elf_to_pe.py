#!/usr/bin/env python3
"""Makes a Windows CE DLL, or without exports a program, from an ARM ELF image linked by image.ld.

    elf_to_pe.py IMAGE.elf OUT [--export NAME...] [--resources RES.o] [--version MAJOR.MINOR]
"""

import argparse
import pathlib
import sys

from elf2pe import ConversionError
from elf2pe.convert import convert


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("elf", type=pathlib.Path)
    parser.add_argument("dll", type=pathlib.Path)
    parser.add_argument("--export", action="append", default=[])
    parser.add_argument("--resources", type=pathlib.Path)
    parser.add_argument("--version", default="1.0")
    arguments = parser.parse_args()
    resource_object = arguments.resources.read_bytes() if arguments.resources else None
    version = tuple(int(part) for part in arguments.version.split(".")[:2])
    try:
        dll = convert(arguments.elf.read_bytes(), arguments.dll.name, arguments.export,
                      resource_object, version)
    except ConversionError as error:
        sys.exit("%s: %s" % (arguments.elf, error))
    arguments.dll.write_bytes(dll)


if __name__ == "__main__":
    main()
