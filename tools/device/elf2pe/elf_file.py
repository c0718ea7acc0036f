"""Reads a 32-bit little-endian ARM ELF file that was linked with --emit-relocs."""

import struct
from dataclasses import dataclass

from . import ConversionError

MACHINE_ARM = 40
SHT_SYMTAB = 2
SHT_NOBITS = 8
SHT_REL = 9
SHF_ALLOC = 2
SHN_UNDEF = 0
SHN_ABS = 0xFFF1


@dataclass(frozen=True)
class Section:
    name: str
    kind: int
    flags: int
    address: int
    size: int
    link: int
    info: int
    data: bytes


@dataclass(frozen=True)
class Symbol:
    name: str
    value: int
    section: int


@dataclass(frozen=True)
class Relocation:
    address: int
    kind: int
    symbol: Symbol


class ElfFile:
    def __init__(self, data):
        self._data = data
        try:
            self._read()
        except (struct.error, IndexError, ValueError, UnicodeDecodeError):
            raise ConversionError("damaged ELF file") from None

    def section(self, name):
        """The section of that name, or None."""
        for section in self.sections:
            if section.name == name:
                return section
        return None

    def relocations(self, name):
        """The relocations that the linker applied to the section of that name, by address."""
        found = []
        for section in self.sections:
            if section.kind != SHT_REL or self.sections[section.info].name != name:
                continue
            for address, info in struct.iter_unpack("<II", section.data):
                found.append(Relocation(address, info & 0xFF, self.symbols[info >> 8]))
        return sorted(found, key=lambda relocation: relocation.address)

    def value_of(self, name):
        """Address of a defined symbol, or None."""
        for symbol in self.symbols:
            if symbol.name == name and symbol.section != SHN_UNDEF:
                return symbol.value
        return None

    def _read(self):
        data = self._data
        if data[:6] != b"\x7fELF\x01\x01":
            raise ConversionError("not a 32-bit little-endian ELF file")
        machine, = struct.unpack_from("<H", data, 18)
        if machine != MACHINE_ARM:
            raise ConversionError("ELF file for machine %d, not ARM" % machine)
        self.entry, _, table = struct.unpack_from("<III", data, 24)
        entry_size, count, names_index = struct.unpack_from("<HHH", data, 46)
        raw = [struct.unpack_from("<10I", data, table + i * entry_size) for i in range(count)]
        names = self._bytes(raw[names_index])
        self.sections = [
            Section(_text(names, h[0]), h[1], h[2], h[3], h[5], h[6], h[7], self._bytes(h))
            for h in raw
        ]
        self.symbols = []
        for section in self.sections:
            if section.kind == SHT_SYMTAB:
                strings = self.sections[section.link].data
                for name, value, _, _, _, index in struct.iter_unpack("<IIIBBH", section.data):
                    self.symbols.append(Symbol(_text(strings, name), value, index))

    def _bytes(self, header):
        kind, offset, size = header[1], header[4], header[5]
        if kind == SHT_NOBITS:
            return b""
        if offset > len(self._data) or size > len(self._data) - offset:
            raise ConversionError("ELF section lies outside the file")
        return self._data[offset:offset + size]


def _text(strings, offset):
    return strings[offset:strings.index(b"\0", offset)].decode()
