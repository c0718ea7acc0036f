"""The table of functions that this machine's code may call."""

import pathlib
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
for folder in (HERE.parent, HERE.parent.parent / "device", HERE.parent.parent / "device" / "tests"):
    sys.path.insert(0, str(folder))
from check_image import Dll
from elf2pe.convert import convert
from find_functions import Unknown, find, parameters, symbols
from link import link

FUNCTION = """
    .text
    .type {0}, %function
{0}:
    mov pc, lr
    .size {0}, . - {0}
"""
# Words of data that the linker keeps because the program's table names them.
PROGRAM = """
    .syntax unified
    .arm
    .text
    .global KelvoLibraryEntry, GetFeature
KelvoLibraryEntry:
GetFeature:
    ldr r0, =table
    mov pc, lr
    .ltorg
{functions}
    .section .rodata
table:
    .word {words}
{tables}
"""
# Two tables of one object: of a class, and of a component that it is too.
TABLES = """
    .type _ZTV1A, %object
_ZTV1A:
    .word 0, 0, _ZN1A3RunEPKwi
    .word -4, 0, _ZN1A14QueryInterfaceERKiPPv, _ZN1A7ReleaseEv
    .size _ZTV1A, . - _ZTV1A
"""


def rows(names, words, tables="", internal=()):
    program = PROGRAM.format(functions="".join(map(FUNCTION.format, names)), words=words, tables=tables)
    image = link(program=program)
    with tempfile.NamedTemporaryFile(suffix=".elf") as elf:
        elf.write(image)
        elf.flush()
        dll = Dll(convert(image, "a.dll", ["GetFeature"], None, (1, 0)))
        return [(words, convention, name) for _, words, convention, name
                in find(symbols(elf.name), dll, set(internal))]


class FindFunctions(unittest.TestCase):
    def test_counts_the_parameters(self):
        for name, count in (("f()", 0), ("f(void)", 0), ("f(int)", 1), ("f(int (*)(int, int), char)", 2),
                            ("a::b<int, int>::f(std::pair<int, int>*, long) const", 2)):
            self.assertEqual(len(parameters(name)), count, name)

    def test_knows_how_each_is_called(self):
        found = rows(["_ZN1A3RunEPKwi", "_ZN1A14QueryInterfaceERKiPPv", "_ZN1A7ReleaseEv", "_Z8CallbackPvj"],
                     "_ZTV1A, _Z8CallbackPvj", TABLES)
        self.assertEqual(sorted(found), [
            (1, "Standard", "A::Release()"), (2, "Standard", "Callback(void*, unsigned int)"),
            (2, "This", "A::Run(wchar_t const*, int)"),
            (3, "Standard", "A::QueryInterface(int const&, void**)")])

    def test_leaves_out_what_takes_64_bits_and_what_stays_inside(self):
        self.assertEqual(rows(["_Z4Seekx", "_Z4Sined", "decode"], "_Z4Seekx, _Z4Sined, decode", internal=["decode"]), [])

    def test_refuses_a_function_whose_arguments_are_not_known(self):
        with self.assertRaises(Unknown):
            rows(["decode"], "decode")

    def test_refuses_a_function_that_is_called_in_two_ways(self):
        both = TABLES.replace("_ZN1A3RunEPKwi", "_ZN1A7ReleaseEv")
        with self.assertRaises(Unknown):
            rows(["_ZN1A14QueryInterfaceERKiPPv", "_ZN1A7ReleaseEv"], "_ZTV1A", both)


if __name__ == "__main__":
    unittest.main()
