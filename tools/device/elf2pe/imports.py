"""The import directory, from the slots that the import stubs left in the image.

A slot is a word in .data marked by a symbol "__iat:LIBRARY:FUNCTION"; the linker script puts the
slots of one library side by side, with a zero word behind them.
"""

import struct

from . import ConversionError
from .elf_file import SHN_UNDEF
from .image import IMAGE_BASE

PREFIX = "__iat:"
DESCRIPTOR_SIZE = 20


def import_slots(elf):
    """{library: [(rva, function)]}, ordered by address."""
    libraries = {}
    for symbol in elf.symbols:
        if symbol.name.startswith(PREFIX) and symbol.section != SHN_UNDEF:
            library, function = symbol.name[len(PREFIX):].split(":")
            libraries.setdefault(library, []).append((symbol.value - IMAGE_BASE, function))
    for library, slots in libraries.items():
        slots.sort()
        first = slots[0][0]
        if [rva for rva, _ in slots] != [first + 4 * i for i in range(len(slots))]:
            raise ConversionError("the import slots of %s are not side by side" % library)
    return libraries


def import_directory(libraries, rva):
    """(bytes of the directory placed at rva, {slot rva: address of its name})."""
    out = bytearray(DESCRIPTOR_SIZE * (len(libraries) + 1))
    slot_values = {}
    for index, (library, slots) in enumerate(sorted(libraries.items())):
        lookup = len(out)
        out += bytes(4 * (len(slots) + 1))
        for i, (slot, function) in enumerate(slots):
            out += bytes(len(out) % 2)
            slot_values[slot] = rva + len(out)
            struct.pack_into("<I", out, lookup + 4 * i, rva + len(out))
            out += struct.pack("<H", 0) + function.encode() + b"\0"
        name = len(out)
        out += library.encode() + b"\0"
        out += bytes(-len(out) % 4)
        struct.pack_into("<5I", out, DESCRIPTOR_SIZE * index,
                         rva + lookup, 0, 0, rva + name, slots[0][0])
    return bytes(out), slot_values


def slot_range(libraries):
    """(rva, size) of all slots, for the directory entry that names them."""
    rvas = [rva for slots in libraries.values() for rva, _ in slots]
    return (min(rvas), max(rvas) + 4 - min(rvas)) if rvas else (0, 0)
