#!/usr/bin/env python3
"""Checks a finished DLL as the device's loader will see it, independently of the converter.

    check_image.py FILE.dll EXPORT LIST...    a library; the lists are those of import_stubs.py
    check_image.py FILE.exe "" LIST...        a program
    check_image.py FILE.dll                   a library of resources alone
"""

import pathlib
import struct
import sys

from import_stubs import function_names

MACHINE_ARM = 0x1C0
WINDOWS_CE = 9
RT_DIALOG = 5


class Dll:
    def __init__(self, data):
        pe, = struct.unpack_from("<I", data, 0x3C)
        self.signature = data[:2] + data[pe:pe + 4]
        self.machine, count, self.stamp = struct.unpack_from("<HHI", data, pe + 4)
        optional_size, self.characteristics = struct.unpack_from("<HH", data, pe + 20)
        optional = pe + 24
        self.entry, = struct.unpack_from("<I", data, optional + 16)
        self.base, = struct.unpack_from("<I", data, optional + 28)
        self.subsystem_version = struct.unpack_from("<HH", data, optional + 48)
        self.size, = struct.unpack_from("<I", data, optional + 56)
        self.subsystem, = struct.unpack_from("<H", data, optional + 68)
        self.directories = [struct.unpack_from("<II", data, optional + 96 + 8 * i)
                            for i in range(16)]
        self.sections = []
        self.memory = bytearray(self.size)
        for i in range(count):
            name, memory, rva, raw, offset = struct.unpack_from("<8sIIII", data,
                                                                optional + optional_size + 40 * i)
            self.sections.append((name.rstrip(b"\0").decode(), rva, memory))
            length = min(memory, raw)
            self.memory[rva:rva + length] = data[offset:offset + length]

    def words(self, rva, count=1):
        return struct.unpack_from("<%dI" % count, self.memory, rva)

    def text(self, rva):
        return self.memory[rva:self.memory.index(0, rva)].decode()

    def exports(self):
        rva, _ = self.directories[0]
        count, _, names = self.words(rva + 24, 3)
        return [self.text(name) for name in self.words(names, count)]

    def imports(self):
        at, _ = self.directories[1]
        found = {}
        while self.words(at + 12)[0]:
            lookup, _, _, name, _ = self.words(at, 5)
            functions = found.setdefault(self.text(name), [])
            while self.words(lookup)[0]:
                functions.append(self.text(self.words(lookup)[0] + 2))
                lookup += 4
            at += 20
        return found

    def relocations(self):
        at, size = self.directories[5]
        end = at + size
        while at < end:
            page, block = self.words(at, 2)
            for entry in struct.unpack_from("<%dH" % ((block - 8) // 2), self.memory, at + 8):
                if entry >> 12 == 3:
                    yield page + (entry & 0xFFF)
            at += block

    def dialogs(self):
        """The templates of all dialogs, as addresses."""
        root, size = self.directories[2]
        if not size:
            return

        def leaves(node):
            named, numbered = struct.unpack_from("<HH", self.memory, node + 12)
            for i in range(named + numbered):
                _, child = self.words(node + 16 + 8 * i, 2)
                if child >> 31:
                    yield from leaves(root + (child & 0x7FFFFFFF))
                else:
                    yield self.words(root + child)[0]

        named, numbered = struct.unpack_from("<HH", self.memory, root + 12)
        for i in range(named + numbered):
            kind, child = self.words(root + 16 + 8 * i, 2)
            if kind == RT_DIALOG:
                yield from leaves(root + (child & 0x7FFFFFFF))


def faults(data, export=None, allowed=None):
    """What is wrong with the file, in words. export: None in a library of resources alone, empty for
    a program. allowed: {library: names}."""
    dll = Dll(data)
    found = []

    def expect(what, value, want):
        if value != want:
            found.append("%s is %r, not %r" % (what, value, want))

    expect("signature", dll.signature, b"MZPE\0\0")
    expect("machine", hex(dll.machine), hex(MACHINE_ARM))
    expect("time stamp", dll.stamp, 0)
    expect("subsystem", dll.subsystem, WINDOWS_CE)
    expect("subsystem version", dll.subsystem_version, (3, 0))
    expect("relocations stripped", dll.characteristics & 1, 0)
    expect("DLL flag", dll.characteristics & 0x2000, 0 if export == "" else 0x2000)
    expect("base", dll.base, 0x10000 if export == "" else 0x10000000)
    expect("exports", dll.exports(), [export] if export else [])
    for library, functions in dll.imports().items():
        for function in functions:
            if function not in (allowed or {}).get(library, ()):
                found.append("import %s!%s is in no list" % (library, function))
    moved = list(dll.relocations())
    if export is not None and not moved:
        found.append("no base relocations")
    if export is None:
        expect("sections", [name for name, _, _ in dll.sections], [".rsrc"])
        expect("entry point", dll.entry, 0)
    for rva in moved:
        if not dll.base <= dll.words(rva)[0] < dll.base + dll.size:
            found.append("the relocated word at %#x holds no address of the image" % rva)
    for rva in dll.dialogs():
        if dll.words(rva)[0] == 0xFFFF0001:
            found.append("extended dialog template at %#x; the device reads plain ones" % rva)
    return found


def main():
    file = pathlib.Path(sys.argv[1])
    export = sys.argv[2] if len(sys.argv) > 2 else None
    allowed = {}
    for argument in sys.argv[3:]:
        path = pathlib.Path(argument)
        allowed[path.name[:-len(".txt")]] = set(function_names(path.read_text()))
    data = file.read_bytes()
    found = faults(data, export, allowed)
    for fault in found:
        print("%s: %s" % (file.name, fault))
    if found:
        sys.exit(1)
    dll = Dll(data)
    print("%s: %d bytes, %d relocations, %s" %
          (file.name, len(data), len(list(dll.relocations())),
           ", ".join("%s %d" % (name, len(names)) for name, names in dll.imports().items())))


if __name__ == "__main__":
    main()
