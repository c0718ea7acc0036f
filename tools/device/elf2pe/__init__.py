"""Turns a linked ARM ELF image into a Windows CE DLL."""


class ConversionError(Exception):
    """The input is not an image that the device could run; the text says why."""
