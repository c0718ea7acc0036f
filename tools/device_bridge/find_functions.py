#!/usr/bin/env python3
"""Writes functions.cpp: every function of the device's image that code of this machine may call.

    find_functions.py IMAGE.elf FILE.dll OUT.cpp --internal ARCHIVE... --lists LIST...

A function can be called from outside when its address is taken, which shows as a relocated word. How
many words of arguments it takes stands in its C++ name; it is
    this-call  in a table of virtual functions,
    standard   in the table of a component, which begins with QueryInterface, and everywhere else.
Functions of C have no such names: the archives and the imports say which of them stay inside, and so
do the compiler's own, which construct the objects. Any other ends the build. Beside them: the names of
all functions that the device has.
"""

import argparse
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "device"))
from check_image import Dll
from import_stubs import function_names

NM = "arm-none-eabi-nm"


class Unknown(Exception):
    pass


def lines_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()


def symbols(elf):
    """{address: [(mangled, demangled, size, kind)]}"""
    found = {}
    plain = lines_of(NM, "-S", "--no-sort", elf)
    names = lines_of(NM, "-S", "--no-sort", "-C", elf)
    for mangled, demangled in zip(plain, names):
        words = mangled.split()
        if len(words) != 4:
            continue
        address, size, kind, name = words
        found.setdefault(int(address, 16), []).append(
            (name, demangled.split(None, 3)[3], int(size, 16), kind))
    return found


def parameters(demangled):
    """The types of the parameters: ["int", "void (*)(int)"] of "f(int, void (*)(int))"."""
    depth, end = 0, demangled.rindex(")")
    for at in range(end, -1, -1):
        depth += {")": 1, "(": -1}.get(demangled[at], 0)
        if depth == 0:
            break
    types, depth, start = [], 0, at + 1
    for i in range(at + 1, end + 1):
        depth += {"(": 1, "<": 1, ")": -1, ">": -1}.get(demangled[i], 0)
        if i == end or (demangled[i] == "," and depth == 0):
            types.append(demangled[start:i].strip())
            start = i + 1
    return [t for t in types if t not in ("", "void")]


def words_of(demangled):
    """None when an argument has 64 bits: compilers differ in the registers it travels in."""
    types = parameters(demangled)
    if any(re.fullmatch(r"(unsigned )?long long|double", t) for t in types):
        return None
    return len(types)


def in_virtual_tables(by_address, dll, relocated):
    """{function: convention}"""
    found = {}
    for table, names in by_address.items():
        size = max((s[2] for s in names if s[0].startswith("_ZTV")), default=0)
        convention = None
        for rva in range(table - dll.base, table - dll.base + size, 4):
            if rva not in relocated:  # what stands before each table of a class with several
                convention = None
                continue
            function, = dll.words(rva)
            if convention is None:
                first = by_address.get(function, [("", "", 0, "")])[0][1]
                convention = "Component" if "::QueryInterface(" in first else "This"
            if found.setdefault(function, convention) != convention:
                raise Unknown("%s is called in two ways" % by_address[function][0][1])
    return found


def find(by_address, dll, internal):
    relocated = set(dll.relocations())
    members = in_virtual_tables(by_address, dll, relocated)
    rows = []
    for address in sorted({dll.words(rva)[0] for rva in relocated}):
        functions = [s for s in by_address.get(address, ())
                     if s[3] in "tTwW" and not s[0].startswith((".", "$"))]
        if not functions:
            continue
        # Those of C++ first, where a function has several names.
        mangled, demangled, _, _ = min(functions, key=lambda s: not s[0].startswith("_Z"))
        if not mangled.startswith("_Z"):
            if mangled not in internal and not mangled.startswith("_GLOBAL__"):
                raise Unknown("%s: its address is taken, and its arguments are not known" % mangled)
            continue
        words = words_of(demangled)
        if words is None:
            continue
        convention = members.get(address, "Standard")
        if convention == "Component":  # the object is the first argument
            words, convention = words + 1, "Standard"
        rows.append((address - dll.base, words, convention, demangled))
    return rows


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("elf")
    parser.add_argument("dll", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("--internal", nargs="*", default=[])
    parser.add_argument("--lists", nargs="*", default=[], type=pathlib.Path)
    arguments = parser.parse_args()
    internal = {"__cxa_pure_virtual"}
    for archive in arguments.internal:
        internal |= {line.split()[-1] for line in lines_of(NM, "--defined-only", archive)
                     if len(line.split()) == 3}
    dll = Dll(arguments.dll.read_bytes())
    for names in dll.imports().values():
        internal |= set(names)
    listed = set()
    for path in arguments.lists:
        listed |= set(function_names(path.read_text()))
    try:
        rows = find(symbols(arguments.elf), dll, internal)
    except Unknown as error:
        sys.exit("find_functions: %s" % error)
    out = ['#include "functions.h"\n\nnamespace bridge {\n\nconst Function kFunctions[] = {\n']
    for rva, words, convention, name in rows:
        out.append("    {0x%x, %d, Convention::k%s},  // %s\n" % (rva, words, convention, name))
    out.append("};\nconst int kFunctionCount = %d;\n\nconst char* const kDeviceHas[] = {\n" % len(rows))
    out += ['    "%s",\n' % name for name in sorted(listed)]
    out.append("};\nconst int kDeviceHasCount = %d;\n\n}  // namespace bridge\n" % len(listed))
    arguments.out.write_text("".join(out))


if __name__ == "__main__":
    main()
