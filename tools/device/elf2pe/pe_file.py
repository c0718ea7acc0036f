"""Writes the PE file: headers, section table, sections, checksum. No time stamp, no padding with
anything but zeros: equal input gives equal bytes."""

import struct

from .image import CODE, PAGE, PROGRAM_BASE, align

FILE_ALIGNMENT = 0x200
MACHINE_ARM = 0x1C0
SUBSYSTEM_WINDOWS_CE = 9
HEADER_OFFSET = 0x80
OPTIONAL_SIZE = 224
# Executable, without line numbers and local symbols, 32-bit.
CHARACTERISTICS = 0x010E
DLL = 0x2000
CHECKSUM_OFFSET = HEADER_OFFSET + 24 + 64

EXPORTS, IMPORTS, RESOURCES, RELOCATIONS, IMPORT_SLOTS = 0, 1, 2, 5, 12


def write_pe(image, directories, version):
    """The file's bytes. directories: {number: (rva, size)}; version: (major, minor)."""
    sections = image.sections
    headers_end = HEADER_OFFSET + 24 + OPTIONAL_SIZE + 40 * len(sections)
    headers_size = align(headers_end, FILE_ALIGNMENT)
    out = bytearray(headers_size)
    out[0:2] = b"MZ"
    struct.pack_into("<H", out, 0x18, 0x40)
    struct.pack_into("<I", out, 0x3C, HEADER_OFFSET)
    kind = CHARACTERISTICS | (0 if image.base == PROGRAM_BASE else DLL)
    struct.pack_into("<4sHHIIIHH", out, HEADER_OFFSET, b"PE\0\0", MACHINE_ARM, len(sections), 0, 0,
                     0, OPTIONAL_SIZE, kind)
    _write_optional_header(out, image, directories, version, headers_size)
    at = HEADER_OFFSET + 24 + OPTIONAL_SIZE
    for section in sections:
        raw = align(len(section.data), FILE_ALIGNMENT)
        struct.pack_into("<8sIIIIIIHHI", out, at, section.name.encode(), section.memory_size,
                         section.rva, raw, len(out) if raw else 0, 0, 0, 0, 0, section.flags)
        out += section.data + bytes(raw - len(section.data))
        at += 40
    struct.pack_into("<I", out, CHECKSUM_OFFSET, checksum(out))
    return bytes(out)


def _write_optional_header(out, image, directories, version, headers_size):
    code = data = 0
    for section in image.sections:
        raw = align(len(section.data), FILE_ALIGNMENT)
        if section.flags == CODE:
            code += raw
        else:
            data += raw
    at = HEADER_OFFSET + 24
    struct.pack_into("<HBBIIIIIIIII", out, at, 0x10B, 6, 0, code, data, 0, image.entry_rva,
                     _first_rva(image, True), _first_rva(image, False), image.base, PAGE,
                     FILE_ALIGNMENT)
    # System, image and subsystem versions.
    struct.pack_into("<HHHHHHI", out, at + 40, 4, 0, version[0], version[1], 3, 0, 0)
    struct.pack_into("<III", out, at + 56, image.size(), headers_size, 0)
    struct.pack_into("<HH", out, at + 68, SUBSYSTEM_WINDOWS_CE, 0)
    # Stack and heap: reserved, committed.
    struct.pack_into("<IIIIII", out, at + 72, 0x10000, 0x1000, 0x100000, 0x1000, 0, 16)
    for number, entry in directories.items():
        struct.pack_into("<II", out, at + 96 + 8 * number, *entry)


def _first_rva(image, code):
    """Of the first section that is code, or that is not; 0 when there is none."""
    return next((s.rva for s in image.sections if (s.flags == CODE) == code), 0)


def checksum(data):
    """As the system's own tools compute it, the field itself counting as 0."""
    total = 0
    for i, (word,) in enumerate(struct.iter_unpack("<H", bytes(data) + bytes(len(data) % 2))):
        if not CHECKSUM_OFFSET <= 2 * i < CHECKSUM_OFFSET + 4:
            total += word
            total = (total & 0xFFFF) + (total >> 16)
    return total + len(data)
