"""The export directory."""

import struct

from . import ConversionError
from .image import IMAGE_BASE

DIRECTORY_SIZE = 40


def exported_rvas(elf, names):
    """[(name, rva)], sorted by name as the loader's search needs."""
    found = []
    for name in sorted(names):
        value = elf.value_of(name)
        if value is None:
            raise ConversionError("export %s is not defined" % name)
        found.append((name, value - IMAGE_BASE))
    return found


def export_directory(exports, library, rva):
    """The directory placed at rva; ordinals count from 1 in the order of the names."""
    count = len(exports)
    functions = DIRECTORY_SIZE
    names = functions + 4 * count
    ordinals = names + 4 * count
    texts = bytearray(library.encode() + b"\0")
    texts_at = ordinals + 2 * count
    name_rvas = []
    for name, _ in exports:
        name_rvas.append(rva + texts_at + len(texts))
        texts += name.encode() + b"\0"
    out = struct.pack("<IIHHIIIIIII", 0, 0, 0, 0, rva + texts_at, 1, count, count,
                      rva + functions, rva + names, rva + ordinals)
    out += struct.pack("<%dI" % count, *[target for _, target in exports])
    out += struct.pack("<%dI" % count, *name_rvas)
    out += struct.pack("<%dH" % count, *range(count))
    return out + bytes(texts)
