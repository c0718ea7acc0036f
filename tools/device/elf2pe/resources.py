"""The .rsrc section, from the COFF object that the resource compiler makes."""

import struct

from . import ConversionError

SECTION_HEADER_SIZE = 40
SYMBOL_SIZE = 18
# IMAGE_REL_I386_DIR32NB: an address relative to the image base.
RELATIVE_TO_BASE = 7


def resource_section(coff, rva):
    """The bytes of the section placed at rva."""
    try:
        return _link(coff, rva)
    except (struct.error, KeyError, UnicodeDecodeError):
        raise ConversionError("damaged resource object") from None


def _link(coff, rva):
    count, = struct.unpack_from("<H", coff, 2)
    symbols, = struct.unpack_from("<I", coff, 8)
    optional, = struct.unpack_from("<H", coff, 16)
    first = 20 + optional
    headers = {}
    order = []
    for i in range(count):
        header = struct.unpack_from("<8sIIIIIIHHI", coff, first + SECTION_HEADER_SIZE * i)
        if header[0].startswith(b".rsrc") and header[3]:
            headers[i + 1] = header
            order.append(i + 1)
    if not order:
        raise ConversionError("no resources in the resource object")
    order.sort(key=lambda number: headers[number][0])
    out = bytearray()
    placed = {}
    for number in order:
        _, _, _, size, offset, *_ = headers[number]
        if offset + size > len(coff):
            raise ConversionError("damaged resource object")
        placed[number] = len(out)
        out += coff[offset:offset + size]
        out += bytes(-len(out) % 8)
    for number in order:
        table, entries = headers[number][5], headers[number][7]
        for i in range(entries):
            at, symbol, kind = struct.unpack_from("<IIH", coff, table + 10 * i)
            if kind != RELATIVE_TO_BASE:
                raise ConversionError("resource relocation type %d" % kind)
            value, section = struct.unpack_from("<Ih", coff, symbols + SYMBOL_SIZE * symbol + 8)
            field = placed[number] + at
            addend, = struct.unpack_from("<I", out, field)
            struct.pack_into("<I", out, field, addend + value + placed[section] + rva)
    return bytes(out)
