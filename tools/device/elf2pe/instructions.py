"""Looks for instructions that an ARMv4 CPU without Thumb, DSP or coprocessor lacks, and for stack
frames that could step over the guard page (the system commits a thread's stack page by page)."""

import struct

from . import ConversionError

# (mask, value, name); the first that matches names the fault.
FORBIDDEN = (
    (0xF0000000, 0xF0000000, "unconditional instruction (BLX, PLD)"),
    (0x0FFFFFF0, 0x012FFF10, "BX"),
    (0x0FFFFFF0, 0x012FFF30, "BLX"),
    (0x0FF000F0, 0x01200070, "BKPT"),
    (0x0FFF0FF0, 0x016F0F10, "CLZ"),
    (0x0E1000D0, 0x000000D0, "LDRD/STRD"),
    (0x0FF00000, 0x03000000, "MOVW"),
    (0x0FF00000, 0x03400000, "MOVT"),
    (0x0F9000F0, 0x01000050, "saturating arithmetic"),
    (0x0F900090, 0x01000080, "16-bit multiplication"),
    (0x0FD000F0, 0x00400090, "UMAAL/MLS"),
    (0x0F8000F0, 0x01800090, "LDREX/STREX"),
    (0x0E000010, 0x06000010, "media instruction"),
    (0x0F000000, 0x0F000000, "SVC"),
    (0x0E000000, 0x0C000000, "coprocessor load/store"),
    (0x0F000000, 0x0E000000, "coprocessor instruction"),
)

STACK_PAGE = 4096


def forbidden_name(word):
    """What must not run on the device, or None."""
    for mask, value, name in FORBIDDEN:
        if word & mask == value:
            return name
    if word & 0x0FFFF000 == 0x024DD000:  # sub sp, sp, #n
        rotate, value = (word >> 8 & 15) * 2, word & 0xFF
        if (value >> rotate | value << 32 - rotate) & 0xFFFFFFFF >= STACK_PAGE:
            return "stack frame of a page or more"
    return None


def check_code(elf):
    """Checks every ARM instruction of .text; the assembler's marks tell them from constants."""
    text = elf.section(".text")
    index = elf.sections.index(text)
    marks = sorted((s.value, s.name[:2]) for s in elf.symbols
                   if s.section == index and s.name[:2] in ("$a", "$d", "$t")
                   and s.name[2:3] in ("", "."))
    if not marks or marks[0][0] != text.address:
        raise ConversionError("the code carries no marks that tell it from constants")
    ends = [address for address, _ in marks[1:]] + [text.address + text.size]
    for (start, kind), end in zip(marks, ends):
        if kind == "$t":
            raise ConversionError("Thumb code at %#x" % start)
        if kind == "$d":
            continue
        code = text.data[start - text.address:end - text.address]
        for i, (word,) in enumerate(struct.iter_unpack("<I", code[:len(code) // 4 * 4])):
            name = forbidden_name(word)
            if name:
                raise ConversionError("%s (%08x) at %#x" % (name, word, start + 4 * i))
