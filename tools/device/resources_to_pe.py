#!/usr/bin/env python3
"""Makes a Windows CE DLL that holds resources alone from what the resource compiler made.

    resources_to_pe.py RES.o OUT.dll [--version MAJOR.MINOR]
"""

import argparse
import pathlib
import sys

from elf2pe import ConversionError
from elf2pe.convert import convert_resources


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("resources", type=pathlib.Path)
    parser.add_argument("dll", type=pathlib.Path)
    parser.add_argument("--version", default="1.0")
    arguments = parser.parse_args()
    version = tuple(int(part) for part in arguments.version.split(".")[:2])
    try:
        dll = convert_resources(arguments.resources.read_bytes(), version)
    except ConversionError as error:
        sys.exit("%s: %s" % (arguments.resources, error))
    arguments.dll.write_bytes(dll)


if __name__ == "__main__":
    main()
