#!/usr/bin/env python3
"""Writes the assembly of the import stubs for the functions in the lists.

    import_stubs.py LIST... > stubs.S

A list is named after its library (coredll.dll.txt) and holds function names, "#" starts a comment.
Every stub and slot has a section of its own, so that the linker drops those that nobody calls. A
stub keeps its library's terminating zero word alive.
"""

import pathlib
import re
import sys

STUB = """\
\t.section .text.import.{function},"ax",%progbits
\t.global {function}
\t.type {function}, %function
{function}:
\tldr\tip, 1f
\tldr\tpc, [ip]
1:\t.word\t"__iat:{library}:{function}"
\t.reloc\t0, R_ARM_NONE, "__iatend:{library}"
\t.size\t{function}, . - {function}
\t.section .iat.{library}.{function},"aw",%progbits
\t.global "__iat:{library}:{function}"
"__iat:{library}:{function}":
\t.word\t0
"""

# "~" sorts behind every name.
END = """\
\t.section .iat.{library}.~end,"aw",%progbits
\t.global "__iatend:{library}"
"__iatend:{library}":
\t.word\t0
"""


class ListError(Exception):
    pass


def function_names(text):
    names = []
    for line in text.splitlines():
        names += line.split("#")[0].split()
    for name in names:
        if not re.fullmatch(r"[A-Za-z_]\w*", name):
            raise ListError("not a function name: " + name)
    return names


def stubs(lists):
    """lists: [(library, names)]; a function may stand in one list only, once."""
    seen = {}
    out = ["\t.syntax unified\n\t.arm\n"]
    for library, names in lists:
        out.append(END.format(library=library))
        for name in sorted(names):
            if name in seen:
                raise ListError("%s is listed in %s and %s" % (name, seen[name], library))
            seen[name] = library
            out.append(STUB.format(library=library, function=name))
    return "".join(out)


def main():
    try:
        lists = []
        for argument in sys.argv[1:]:
            path = pathlib.Path(argument)
            lists.append((path.name[:-len(".txt")], function_names(path.read_text())))
        sys.stdout.write(stubs(lists))
    except ListError as error:
        sys.exit("import_stubs: %s" % error)


if __name__ == "__main__":
    main()
