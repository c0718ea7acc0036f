"""The sections of the DLL, at their addresses relative to the image base."""

import struct

from . import ConversionError
from .elf_file import SHF_ALLOC

PAGE = 0x1000
IMAGE_BASE = 0x10000000
# Where the system puts programs.
PROGRAM_BASE = 0x10000
# A process slot of Windows CE 3.0.
IMAGE_LIMIT = 0x2000000

CODE = 0x60000020      # code, execute, read
READ_ONLY = 0x40000040  # initialised data, read
READ_WRITE = 0xC0000040
DISCARDABLE = 0x42000040


def align(value, step):
    return (value + step - 1) // step * step


class ImageSection:
    def __init__(self, name, rva, data, flags, memory_size=None):
        self.name = name
        self.rva = rva
        self.data = bytearray(data)
        self.flags = flags
        self.memory_size = len(data) if memory_size is None else memory_size


class Image:
    """Sections in the order of their addresses; the first begins behind the headers' page."""

    def __init__(self):
        self.base = IMAGE_BASE
        self.entry_rva = 0  # none
        self.sections = []

    def take_program(self, elf):
        """Takes over the program's sections; .bss becomes the zero-filled end of .data."""
        allocated = [s for s in elf.sections if s.flags & SHF_ALLOC and s.size]
        for section in allocated:
            if section.name not in (".text", ".rdata", ".data", ".bss"):
                raise ConversionError("unexpected section " + section.name)
            if not IMAGE_BASE < section.address <= IMAGE_BASE + IMAGE_LIMIT - section.size:
                raise ConversionError("section %s lies outside the image" % section.name)
        self.entry_rva = elf.entry - IMAGE_BASE
        for name, flags in ((".text", CODE), (".rdata", READ_ONLY), (".data", READ_WRITE)):
            section = elf.section(name)
            if section is None:
                raise ConversionError("no section " + name)
            self.sections.append(
                ImageSection(name, section.address - IMAGE_BASE, section.data, flags))
        bss = elf.section(".bss")
        if bss is not None and bss.size:
            data = self.sections[-1]
            data.memory_size = bss.address + bss.size - IMAGE_BASE - data.rva
        end = 0
        for section in self.sections:
            if section.rva % PAGE or section.rva < end:
                raise ConversionError("section %s overlaps or is not aligned" % section.name)
            end = section.rva + section.memory_size

    def next_rva(self):
        if not self.sections:
            return PAGE
        last = self.sections[-1]
        return last.rva + align(max(last.memory_size, 1), PAGE)

    def append(self, name, data, flags):
        """Adds a section behind the others."""
        self.sections.append(ImageSection(name, self.next_rva(), data, flags))

    def size(self):
        return self.next_rva()

    def move(self, base, words):
        """Makes the image one for another base; words: the rvas of all that hold addresses."""
        for rva in words:
            self.store_word(rva, self.word(rva) - self.base + base)
        self.base = base

    def word(self, rva):
        for section in self.sections:
            if section.rva <= rva <= section.rva + len(section.data) - 4:
                return struct.unpack_from("<I", section.data, rva - section.rva)[0]
        raise ConversionError("address %#x lies outside the image's bytes" % rva)

    def store_word(self, rva, value):
        for section in self.sections:
            if section.rva <= rva <= section.rva + len(section.data) - 4:
                struct.pack_into("<I", section.data, rva - section.rva, value)
                return
        raise ConversionError("address %#x lies outside the image's bytes" % rva)
