"""Which words the loader must change when the image is not at its preferred base."""

import struct

from . import ConversionError
from .elf_file import SHN_ABS, SHN_UNDEF
from .image import IMAGE_BASE, IMAGE_LIMIT, PAGE

R_ARM_ABS32 = 2
R_ARM_TARGET1 = 38
ABSOLUTE = {R_ARM_ABS32, R_ARM_TARGET1}
# NONE, PC24, REL32, PLT32, CALL, JUMP24, V4BX, PREL31: nothing to do when the whole image moves.
RELATIVE = {0, 1, 3, 27, 28, 29, 40, 42}
# MOVW/MOVT pairs: split addresses, which the device's CPU does not have.
SPLIT = {43, 44, 45, 46}

HIGHLOW = 3
ABSOLUTE_PADDING = 0


def words_to_relocate(elf, names=(".text", ".rdata", ".data")):
    """The addresses, relative to the base, of all words that hold an address of the image."""
    found = set()
    for name in names:
        for relocation in elf.relocations(name):
            where = "%#x (%s)" % (relocation.address, relocation.symbol.name)
            if relocation.kind in SPLIT:
                raise ConversionError("MOVW/MOVT at %s: not compiled for ARMv4" % where)
            if relocation.kind in RELATIVE:
                continue
            if relocation.kind not in ABSOLUTE:
                raise ConversionError("relocation type %d at %s" % (relocation.kind, where))
            if _is_constant(relocation.symbol):
                continue
            if relocation.address % 4:
                raise ConversionError("unaligned address word at " + where)
            found.add(relocation.address - IMAGE_BASE)
    return sorted(found)


def _is_constant(symbol):
    """An undefined weak symbol (0) or a number from the linker script."""
    if symbol.section == SHN_UNDEF:
        return True
    inside = IMAGE_BASE <= symbol.value < IMAGE_BASE + IMAGE_LIMIT
    return symbol.section == SHN_ABS and not inside


def relocation_table(rvas):
    """The .reloc section: a block a page, each with an even number of entries."""
    pages = {}
    for rva in rvas:
        pages.setdefault(rva // PAGE * PAGE, []).append(HIGHLOW << 12 | rva % PAGE)
    table = bytearray()
    for page, entries in sorted(pages.items()):
        if len(entries) % 2:
            entries.append(ABSOLUTE_PADDING)
        table += struct.pack("<II", page, 8 + 2 * len(entries))
        table += struct.pack("<%dH" % len(entries), *entries)
    return bytes(table)
