import pathlib
import struct
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import check_image
import import_stubs
from elf2pe import ConversionError
from elf2pe.convert import convert, convert_resources
from elf2pe.elf_file import ElfFile
from elf2pe.instructions import forbidden_name
from elf2pe.pe_file import CHECKSUM_OFFSET
from elf2pe.relocations import relocation_table
from link import IMPORTS, PROGRAM, link, resources

ALLOWED = {library: set(names) for library, names in IMPORTS}
DIALOG = """
1 DIALOG 0, 0, 100, 50
CAPTION "Name"
BEGIN
  LTEXT "Text", 2, 1, 1, 20, 8
END
STRINGTABLE
BEGIN
  2000 "built-in\\0"
END
"""


def convert_library(elf, **options):
    return convert(elf, "Library.dll", ["GetFeature"], **options)


class Conversion(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.elf = link()
        cls.dll = convert_library(cls.elf)
        cls.image = check_image.Dll(cls.dll)

    def test_finished_file_is_in_order(self):
        self.assertEqual([], check_image.faults(self.dll, "GetFeature", ALLOWED))

    def test_equal_input_gives_equal_bytes(self):
        self.assertEqual(self.dll, convert_library(link()))

    def test_unused_imports_are_dropped(self):
        self.assertEqual({"coredll.dll": ["malloc"], "ole32.dll": ["CoUninitialize"]},
                         self.image.imports())

    def test_import_slots_hold_the_names_before_binding(self):
        at, size = self.image.directories[12]
        first, end, second = self.image.words(at, 3)
        self.assertEqual(12, size)
        self.assertEqual(("malloc", 0, "CoUninitialize"),
                         (self.image.text(first + 2), end, self.image.text(second + 2)))

    def test_every_absolute_word_is_relocated(self):
        # Three in the table, two in the stubs' literals, one in the program's.
        self.assertEqual(6, len(list(self.image.relocations())))

    def test_zero_filled_data_takes_no_file_space(self):
        name, rva, memory = self.image.sections[2]
        self.assertEqual(".data", name)
        self.assertGreater(memory, 5000)
        self.assertLess(len(self.dll), 5000)

    def test_checksum_makes_the_sum_of_all_words_come_out(self):
        data = bytearray(self.dll)
        stored, = struct.unpack_from("<I", data, CHECKSUM_OFFSET)
        struct.pack_into("<I", data, CHECKSUM_OFFSET, 0)
        total = sum(word for word, in struct.iter_unpack("<H", bytes(data)))
        while total >> 16:
            total = (total & 0xFFFF) + (total >> 16)
        self.assertEqual(stored, total + len(data))

    def test_resources(self):
        dll = convert_library(self.elf, resource_object=resources(DIALOG))
        self.assertEqual([], check_image.faults(dll, "GetFeature", ALLOWED))
        image = check_image.Dll(dll)
        self.assertEqual(1, len(list(image.dialogs())))
        rva, size = image.directories[2]
        self.assertIn("built-in\0".encode("utf-16-le"), image.memory[rva:rva + size])

    def test_resources_alone(self):
        dll = convert_resources(resources(DIALOG))
        self.assertEqual([], check_image.faults(dll))
        image = check_image.Dll(dll)
        self.assertEqual(1, len(list(image.dialogs())))
        self.assertNotEqual([], check_image.faults(self.dll), "a library with code")
        self.assertNotEqual([], check_image.faults(dll, "GetFeature", ALLOWED))


class Refusals(unittest.TestCase):
    CASES = (
        # name, assembly added to the program, assembler flags, text of the error
        ("movw/movt", "movw r0, #:lower16:table\nmovt r0, #:upper16:table", "armv7-a", "MOVW/MOVT"),
        ("movw of a constant", "movw r0, #0x1234", "armv7-a", "MOVW"),
        ("unaligned address word", ".data\n.byte 0\n.4byte table", "armv4", "unaligned"),
        ("unexpected section", 'ldr r0, =1f\n.section .surprise,"a",%progbits\n1: .word 1', "armv4",
         ".surprise"),
        ("half-word address", ".data\n.2byte absolute\n.set absolute, 1\n.2byte outside", "armv4",
         "relocation type 5"),
        ("blx", "blx r3", "armv5te", "BLX"),
        ("clz", "clz r0, r1", "armv5te", "CLZ"),
        ("ldrd", "ldrd r0, r1, [r2]", "armv5te", "LDRD/STRD"),
        ("strd by register", "strd r0, r1, [r2, r3]", "armv5te", "LDRD/STRD"),
        ("pld", "pld [r0]", "armv5te", "unconditional"),
        ("smulbb", "smulbb r0, r1, r2", "armv5te", "16-bit multiplication"),
        ("smlal of halves", "smlalbt r0, r1, r2, r3", "armv5te", "16-bit multiplication"),
        ("qadd", "qadd r0, r1, r2", "armv5te", "saturating"),
        ("uxtb", "uxtb r0, r1", "armv6", "media"),
        ("umaal", "umaal r0, r1, r2, r3", "armv6", "UMAAL"),
        ("ldrex", "ldrex r0, [r1]", "armv6", "LDREX"),
        ("floating point", "vadd.f32 s0, s1, s2", "armv6 -mfpu=vfp", "coprocessor"),
        ("svc", "svc #0", "armv4", "SVC"),
        ("thumb", ".thumb\nmovs r0, #1\n.arm", "armv4t", "Thumb"),
        ("a page of stack", "sub sp, sp, #4096", "armv4", "stack frame"),
        ("much stack", "sub sp, sp, #0x10000", "armv4", "stack frame"),
    )

    def test_what_the_device_lacks(self):
        for name, assembly, flags, error in self.CASES:
            with self.subTest(name):
                elf = link("\n.text\n%s\n" % assembly, options=("--defsym=outside=0x40",),
                           assembler=("-march=" + flags).split())
                with self.assertRaisesRegex(ConversionError, error):
                    convert_library(elf)

    def test_ordinary_code_is_let_through(self):
        for name, word in (("mov pc, lr", 0xE1A0F00E), ("ldrh", 0xE1D030B0),
                           ("ldrsh", 0xE1D030F0), ("strh", 0xE1C030B0), ("swp", 0xE1020091),
                           ("umull", 0xE0810392), ("smlal", 0xE0E10392), ("tst", 0xE3130001),
                           ("tst register", 0xE1130002), ("cmp shifted", 0xE1510112),
                           ("sub sp, #4092", 0xE24DDEFF), ("mrs", 0xE10F0000),
                           ("ldr with register offset", 0xE7910002)):
            with self.subTest(name):
                self.assertIsNone(forbidden_name(word))

    def test_export_that_is_not_there(self):
        with self.assertRaisesRegex(ConversionError, "NoSuchFunction"):
            convert(link(), "Library.dll", ["NoSuchFunction"])

    def test_function_outside_the_lists_fails_the_link_with_its_name(self):
        with self.assertRaises(subprocess.CalledProcessError) as failed:
            link("\n.text\nbl GetProcessHeap\n")
        self.assertIn("GetProcessHeap", failed.exception.stderr)

    def test_damaged_files(self):
        elf = link()
        other_machine = elf[:18] + b"\x03\0" + elf[20:]
        for name, data in (("empty", b""), ("text", b"hello, world" * 10),
                           ("another machine", other_machine)):
            with self.subTest(name), self.assertRaises(ConversionError):
                convert_library(data)
        for length in range(0, len(elf), 97):
            with self.subTest(length=length), self.assertRaises(ConversionError):
                convert_library(elf[:length])

    def test_damaged_resources(self):
        elf, coff = link(), resources(DIALOG)
        for length in (0, 10, 19, 60, len(coff) // 2):
            with self.subTest(length=length), self.assertRaises(ConversionError):
                convert_library(elf, resource_object=coff[:length])


class Relocations(unittest.TestCase):
    def test_blocks(self):
        for name, rvas, want in (
                ("none", [], b""),
                ("one, padded to a word", [0x1004], struct.pack("<IIHH", 0x1000, 12, 0x3004, 0)),
                ("two pages", [0x1000, 0x1FFC, 0x3008],
                 struct.pack("<IIHHIIHH", 0x1000, 12, 0x3000, 0x3FFC, 0x3000, 12, 0x3008, 0))):
            with self.subTest(name):
                self.assertEqual(want, relocation_table(rvas))

    def test_constants_stay(self):
        elf = link("\n.data\n.word outside\n", options=("--defsym=outside=0x40",))
        image = check_image.Dll(convert_library(elf))
        self.assertEqual(6, len(list(image.relocations())))


class FinishedFile(unittest.TestCase):
    """The check finds what it is there to find."""

    def test_faults(self):
        dll = convert_library(link())
        pe, = struct.unpack_from("<I", dll, 0x3C)
        for name, offset, value, want in (
                ("machine", pe + 4, 0x14C, "machine"),
                ("subsystem", pe + 24 + 68, 2, "subsystem"),
                ("version", pe + 24 + 48, 4, "subsystem version"),
                ("no relocations", pe + 24 + 96 + 44, 0, "no base relocations")):
            with self.subTest(name):
                changed = bytearray(dll)
                struct.pack_into("<H", changed, offset, value)
                self.assertIn(want, " ".join(check_image.faults(changed, "GetFeature", ALLOWED)))
        self.assertIn("exports", check_image.faults(dll, "Other", ALLOWED)[0])
        self.assertIn("malloc", check_image.faults(dll, "GetFeature", {"ole32.dll":
                                                                       {"CoUninitialize"}})[0])

    def test_extended_dialog(self):
        coff = resources(DIALOG.replace("1 DIALOG ", "1 DIALOGEX "))
        dll = convert_library(link(), resource_object=coff)
        self.assertIn("extended dialog", check_image.faults(dll, "GetFeature", ALLOWED)[0])


class Stubs(unittest.TestCase):
    def test_lists(self):
        self.assertEqual(["a", "b_2", "_c"],
                         import_stubs.function_names("# head\na b_2 # tail\n\n_c"))
        for name, text in (("a path", "a.b"), ("an ordinal", "12"), ("a quote", 'x"')):
            with self.subTest(name), self.assertRaises(import_stubs.ListError):
                import_stubs.function_names(text)

    def test_a_function_has_one_library(self):
        with self.assertRaisesRegex(import_stubs.ListError, "malloc"):
            import_stubs.stubs([("one.dll", ["malloc"]), ("two.dll", ["malloc"])])

    def test_slots_that_are_not_side_by_side(self):
        elf = link(program=PROGRAM + '\n.section .iat.coredll.dll.zz,"aw",%progbits\n.word 0\n'
                   '.global "__iat:coredll.dll:zz"\n"__iat:coredll.dll:zz":\n.word 0\n.text\n'
                   'ldr r0, ="__iat:coredll.dll:zz"\n')
        with self.assertRaisesRegex(ConversionError, "side by side"):
            convert_library(elf)


if __name__ == "__main__":
    unittest.main()
