"""Assembles and links small images for the tests."""

import pathlib
import subprocess
import tempfile

import import_stubs

HERE = pathlib.Path(__file__).resolve().parent
IMPORTS = [("coredll.dll", ["malloc", "free"]), ("ole32.dll", ["CoUninitialize"])]

# A function that calls what the stubs offer, a constant, a variable, a zero-filled one.
PROGRAM = """
    .syntax unified
    .arm
    .text
    .global KelvoLibraryEntry, GetFeature
KelvoLibraryEntry:
GetFeature:
    push {r4, lr}
    bl malloc
    bl CoUninitialize
    ldr r0, =table
    pop {r4, pc}
    .ltorg
    .section .rodata
    .word 0x12345678
    .data
table:
    .word GetFeature, variable, table
    .bss
variable:
    .space 5000
"""


def link(extra="", program=PROGRAM, options=(), assembler=("-march=armv4",)):
    """The linked image's bytes; subprocess.CalledProcessError when it does not link."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "stubs.S").write_text(import_stubs.stubs(IMPORTS))
        (folder / "program.S").write_text(program + extra)
        for source, flags in (("stubs", ("-march=armv4",)), ("program", assembler)):
            _run("arm-none-eabi-as", *flags, folder / (source + ".S"),
                 "-o", folder / (source + ".o"))
        _run("arm-none-eabi-ld", "-static", "-T", HERE.parent / "image.ld", "--emit-relocs",
             "--fix-v4bx", "--gc-sections", "-u", "GetFeature", "--no-warn-rwx-segments", *options,
             "-o", folder / "image.elf", folder / "program.o", folder / "stubs.o")
        return (folder / "image.elf").read_bytes()


def resources(script):
    """The resource compiler's object file for a script."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "script.rc").write_text(script)
        _run("i686-w64-mingw32-windres", "-O", "coff", folder / "script.rc", folder / "script.o")
        return (folder / "script.o").read_bytes()


def _run(*command):
    subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True)
