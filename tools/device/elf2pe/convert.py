"""The whole conversion, of a program or of resources alone."""

from . import exports, imports, instructions, pe_file, relocations, resources
from .elf_file import ElfFile
from .image import DISCARDABLE, PROGRAM_BASE, READ_ONLY, Image


def convert(elf_bytes, library, export_names, resource_object=None, version=(1, 0)):
    """The DLL's bytes, or without exports a program's; ConversionError when the device could not
    run it."""
    elf = ElfFile(elf_bytes)
    image = Image()
    image.take_program(elf)
    moved = relocations.words_to_relocate(elf)
    instructions.check_code(elf)
    directories = {}

    slots = imports.import_slots(elf)
    rva = image.next_rva()
    table, slot_values = imports.import_directory(slots, rva)
    for slot, value in slot_values.items():
        image.store_word(slot, value)
    directories[pe_file.IMPORTS] = (rva, imports.DESCRIPTOR_SIZE * (len(slots) + 1))
    directories[pe_file.IMPORT_SLOTS] = imports.slot_range(slots)
    table += bytes(-len(table) % 4)
    names = b""
    if export_names:
        names = exports.export_directory(exports.exported_rvas(elf, export_names), library,
                                         rva + len(table))
        directories[pe_file.EXPORTS] = (rva + len(table), len(names))
    image.append(".idata", table + names, READ_ONLY)

    if resource_object is not None:
        directories[pe_file.RESOURCES] = _append_resources(image, resource_object)

    if not export_names:
        image.move(PROGRAM_BASE, moved)
    rva = image.next_rva()
    table = relocations.relocation_table(moved)
    directories[pe_file.RELOCATIONS] = (rva, len(table))
    image.append(".reloc", table, DISCARDABLE)
    return pe_file.write_pe(image, directories, version)


def convert_resources(resource_object, version=(1, 0)):
    """The bytes of a DLL that holds resources alone."""
    image = Image()
    directories = {pe_file.RESOURCES: _append_resources(image, resource_object)}
    return pe_file.write_pe(image, directories, version)


def _append_resources(image, resource_object):
    rva = image.next_rva()
    section = resources.resource_section(resource_object, rva)
    image.append(".rsrc", section, READ_ONLY)
    return rva, len(section)
