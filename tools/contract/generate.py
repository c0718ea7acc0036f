#!/usr/bin/env python3
"""Writes all that says the contract from its one table, the files beside this one (README.md).

    generate.py               include/kelvo/*.h, include/kelvo/c/*.h, and docs/slots.md
    generate.py --check       whether they are what this would write
    generate.py --test OUT    a test that compilers see in both kinds of headers what the table says
"""

import pathlib
import re
import subprocess
import sys
import textwrap

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(HERE))
from table import Fault, read_table

WIDTH = 100
NOTICE = "Generated from tools/contract/%s."


def comment(text, indent="", mark="// ", end=""):
    """Paragraphs, wrapped; lines that are indented further stay as they are."""
    lines, paragraph = [], []

    def flush():
        if paragraph:
            lines.extend(textwrap.wrap(" ".join(paragraph), WIDTH - len(indent + mark + end), break_on_hyphens=False))
            paragraph.clear()

    for line in text:
        if line.startswith(" ") or not line:
            flush()
            lines.append(line)
        else:
            paragraph.append(line)
    flush()
    return [(indent + mark + line).rstrip() for line in lines]


def sentence(text):
    """The first one."""
    joined = " ".join(line.strip() for line in text)
    end = re.search(r"[.;](?= [A-Z`(]|$)", joined)
    return joined[:end.start()] + "." if end else joined


def trailing(note, c=False):
    return "" if not note else "  /* %s */" % note if c else "  // " + note


def formatted(lines):
    text = "\n".join(lines) + "\n"
    for _ in range(2):  # it does not agree with its own first answer to long comments behind macros
        text = subprocess.run(["clang-format", "--assume-filename", str(ROOT / "include/kelvo/types.h")],
                              input=text, capture_output=True, text=True, check=True).stdout
    return text


def file_names(table, line):
    """@Enumeration@ in a line as written stands for the file names of its values."""
    def names(match):
        values = table.find("enumeration", match[1]).members
        return ", ".join('"%s"' % value.file for value in values)
    return re.sub(r"@(\w+)@", names, line)


# C++ ---------------------------------------------------------------------------------------------

def cpp_body(interface, slot):
    if slot.body:
        return slot.body
    if interface.party == "library" or (interface.party == "host" and not slot.reserved):
        return "= 0;"
    unused = ", ".join("static_cast<void>(%s)" % name for _, name in slot.arguments)
    parts = [unused + ";" if unused else "", "return 0;" if slot.result != "void" else ""]
    return "{ %s }" % " ".join(part for part in parts if part)


def object_text(found):
    lines = ["The object's words behind the table of operations, by their places on 32 bits. " + " ".join(found.text)]
    for field in found.members:
        lines.append("  %3d  %s%s" % (field.offset, field.declaration(), ": " + field.note if field.note else ""))
    return lines


def cpp_interface(table, item):
    found = table.find("object", item.name) if item.name != "InputPlugin" else None
    lines = comment(item.text + ([""] if item.text and found else []) + (object_text(found) if found else []))
    lines.append("class %s%s {" % (item.name, " : public " + item.base if item.base else ""))
    lines.append(" public:")
    uncalled = False  # the operation before
    for member in item.members:
        if member.kind == "cpp":
            lines.append(member.line)
        if member.kind != "slot":
            continue
        before, uncalled = uncalled, member.reserved and item.party == "host"
        lines += [""] if member.number and not (before and uncalled) else []
        lines += comment(member.slot_text(), "  ") if not uncalled else []
        if not member.as_written:
            arguments = ", ".join("%s %s" % pair for pair in member.arguments)
            lines.append("  virtual %s %s(%s) noexcept %s" % (member.result, member.name, arguments, cpp_body(item, member)))
    if not any("protected:" in m.line for m in item.members if m.kind == "cpp"):
        lines += ["", " protected:", "  ~%s() = default;" % item.name]
    return lines + ["};"]


def cpp_item(table, item):
    if item.kind == "interface":
        return cpp_interface(table, item)
    if item.kind == "object":
        return []
    lines = comment(item.text)
    if item.kind == "verbatim":
        written = [file_names(table, m.line) for m in item.members if m.kind == "cpp"]
        return lines + written if written else []
    if item.kind == "alias":
        return lines + ["using %s = %s;%s" % (item.name, item.value, trailing(item.note))]
    if item.kind == "function":
        arguments = ", ".join("%s %s" % pair for pair in item.arguments)
        return lines + ["using %s = %s(KELVO_CDECL*)(%s);" % (item.name, item.result, arguments)]
    if item.kind == "constant":
        return lines + ["constexpr %s %s = %s;%s" % (item.type, item.name, item.value, trailing(item.note))]
    if item.kind == "string":
        return lines + ["inline constexpr wchar_t %s[] = L%s;" % (item.name, item.value)]
    if item.kind == "enumeration":
        lines.append("enum %s : %s {" % (item.name, item.type))
        lines += ["  %s = %s,%s" % (m.name, m.value, trailing(m.note)) for m in item.members]
        return lines + ["};"]
    lines.append("struct %s {" % item.name)
    lines += ["  %s;%s" % (m.declaration(), trailing(m.note)) for m in item.members]
    return lines + ["};", "static_assert(sizeof(void*) != 4 || sizeof(%s) == %d);" % (item.name, item.size)]


def spaced(items, write):
    """Blank lines between all but constants that share a comment."""
    lines, before = [], None
    for item in items:
        written = write(item)
        if written and not (before and item.kind in ("constant", "alias") and before.kind == item.kind and not item.text):
            lines.append("")
        lines += written
        before = item if written else before
    return lines


def cpp_header(table, header):
    lines = comment(header.text + [""] * bool(header.text) + [NOTICE % (header.name + ".txt")]) + ["#pragma once", ""]
    lines += ["#include <%s>" % name for name in header.system]
    lines += [""] if header.system and header.uses else []
    lines += ['#include "kelvo/%s.h"' % name for name in header.uses]
    lines += spaced([i for i in header.items if i.outside], lambda item: cpp_item(table, item))
    lines += ["", "namespace kelvo {"]
    lines += spaced([i for i in header.items if not i.outside], lambda item: cpp_item(table, item))
    return lines + ["", "}  // namespace kelvo"]


# C -----------------------------------------------------------------------------------------------

class C:
    """The names of C++ and their equals in C."""

    def __init__(self, table):
        self.table = table
        kinds = ("alias", "record", "interface", "function")
        self.types = {i.name for i in table.items() if i.kind in kinds}
        self.constants = {i.name for i in table.items() if i.kind in ("constant", "string")}
        self.constants |= {m.name for i in table.items() if i.kind == "enumeration" for m in i.members}

    def constant(self, name):
        return "KELVO_" + re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", name[1:]).upper()

    def words(self, text):
        def name(match):
            word = match[0]
            return "Kelvo" + word if word in self.types else self.constant(word) if word in self.constants else word
        return re.sub(r"\bk?[A-Z]\w*", name, text).replace("::", ".")

    def block(self, text):
        lines = comment([self.words(line) for line in text], "  ", " * ", " */")
        lines = [line[2:] for line in lines]
        return ["/*" + lines[0][2:]] + lines[1:-1] + [lines[-1] + " */"] if len(lines) > 1 else \
            ["/* %s */" % line[3:] for line in lines]

    def arguments(self, pairs):
        return "".join(", %s %s" % (self.words(kind), name) for kind, name in pairs)

    def slots(self, item):
        """With those of the base in front: the same operations, for this object."""
        inherited = self.slots(self.table.find("interface", item.base)) if item.base else []
        return inherited + [m for m in item.members if m.kind in ("slot", "c")]

    def interface(self, item):
        own = "Kelvo" + item.name
        lines = self.block(item.text) + ["typedef struct %s %s;" % (own, own), "typedef struct %sTable {" % own]
        for m in self.slots(item):
            if m.kind == "c":
                lines.append(m.line)
                continue
            if m in item.members:
                lines += ([""] if m.number else []) + self.block(m.slot_text())
            if not m.as_written:
                lines.append("%s(KELVO_METHOD* %s)(KELVO_SELF(%s)%s);"
                             % (self.words(m.result), m.name, own, self.arguments(m.arguments)))
        lines += ["} %sTable;" % own, "struct %s {" % own, "const %sTable* table;" % own]
        chain = [i for i in (self.table.find("object", item.base), self.table.find("object", item.name)) if i]
        for found in chain:
            lines += ["%s;%s" % (self.words(m.declaration()), trailing(self.words(m.note), True)) for m in found.members]
        return lines + ["};"]

    def item(self, item):
        if item.kind == "interface":
            return self.interface(item)
        if item.kind == "object":
            return []
        text = self.block(item.text)
        if item.kind == "verbatim":
            written = [file_names(self.table, m.line) for m in item.members if m.kind == "c"]
            return text + written if written else []
        if item.kind == "alias":
            return text + ["typedef %s Kelvo%s;%s" % (item.value, item.name, trailing(item.note, True))]
        if item.kind == "function":
            return text + ["typedef %s(KELVO_CDECL* Kelvo%s)(%s);"
                           % (item.result, item.name, self.arguments(item.arguments)[2:])]
        if item.kind in ("constant", "string"):
            value = "L" + item.value if item.kind == "string" else item.value
            return text + ["#define %s %s%s" % (self.constant(item.name), value, trailing(self.words(item.note), True))]
        if item.kind == "enumeration":
            return text + ["#define %s %s%s" % (self.constant(m.name), m.value, trailing(self.words(m.note), True))
                           for m in item.members]
        lines = text + ["typedef struct Kelvo%s {" % item.name]
        lines += ["%s;%s" % (self.words(m.declaration("struct ")), trailing(self.words(m.note), True)) for m in item.members]
        return lines + ["} Kelvo%s;" % item.name]


def c_header(table, header):
    c = C(table)
    guard = "KELVO_C_%s_H" % header.name.upper()
    lines = c.block(header.text + [""] * bool(header.text) + [NOTICE % (header.name + ".txt")])
    lines += ["#ifndef " + guard, "#define " + guard, ""]
    lines += ["#include <%s>" % name for name in header.system if name.endswith(".h")]
    lines += ['#include "%s.h"' % name for name in header.uses]
    return lines + spaced(header.items, c.item) + ["", "#endif"]


# The document and the test -----------------------------------------------------------------------

def cell(text):
    return text.replace("|", "\\|")


def document(table):
    lines = ["# Slots, fields and numbers", "",
             "What `include/kelvo/` says, in tables; the headers say the rest. %s" % (NOTICE % "*.txt"), ""]
    for header in table.headers:
        shown = [i for i in header.items if i.kind in ("interface", "object", "record", "enumeration", "constant", "string")]
        if not shown:
            continue
        lines += ["## %s.h" % header.name, ""]
        plain = [m for i in shown for m in (i.members if i.kind == "enumeration" else [i])
                 if i.kind in ("enumeration", "constant", "string")]
        if plain:
            lines += ["| name | value | what |", "|---|---|---|"]
            lines += ["| `%s` | %s | %s |" % (m.name, m.value, cell(m.note or m.file or sentence(m.text))) for m in plain] + [""]
        for item in shown:
            if item.kind == "interface":
                lines += ["| slot | `%s` | result | what |" % item.name, "|---|---|---|---|"]
                for m in (m for m in item.members if m.kind == "slot"):
                    arguments = ", ".join("%s %s" % pair for pair in m.arguments)
                    lines.append("| %d | `%s(%s)` | `%s` | %s |"
                                 % (m.number, m.name, arguments, m.result, cell(sentence(m.text))))
                lines.append("")
            if item.kind in ("object", "record"):
                lines += ["| offset on 32 bits | `%s`, %d bytes%s | |"
                          % (item.name, item.size, ", behind the table" if item.kind == "object" else ""), "|---|---|---|"]
                lines += ["| %d | `%s` | %s |" % (m.offset, m.declaration(), cell(m.note)) for m in item.members] + [""]
    return lines[:-1]


def test(table):
    c = C(table)
    lines = ["// Written by tools/contract/generate.py.", "#include <gtest/gtest.h>", ""]
    lines += ['#include "kelvo/%s.h"' % header.name for header in table.headers]
    lines += ['#include "kelvo/c/%s.h"' % header.name for header in table.headers] + [""]
    lines += ["#include \"tests/contract/member_slot.h\"", "", "namespace kelvo {", "namespace {", "", "constexpr size_t kWord = sizeof(void*);", ""]
    calls = []
    for item in table.items():
        if item.kind in ("constant", "enumeration"):
            for m in (item.members if item.kind == "enumeration" else [item]):
                lines.append("static_assert(%s == %s);" % (c.constant(m.name), m.name))
        if item.kind in ("record", "object"):
            lines.append("static_assert(kWord != 4 || sizeof(Kelvo%s) == %d);" % (item.name, item.size))
            for m in item.members:
                lines.append("static_assert(kWord != 4 || offsetof(Kelvo%s, %s) == %d);" % (item.name, m.name, m.offset))
                if item.kind == "record":
                    lines.append("static_assert(offsetof(%s, %s) == offsetof(Kelvo%s, %s));" % (item.name, m.name, item.name, m.name))
        if item.kind == "record":
            lines.append("static_assert(sizeof(%s) == sizeof(Kelvo%s));" % (item.name, item.name))
        if item.kind == "interface":
            for m in c.slots(item):
                if m.kind == "slot":
                    lines.append("static_assert(offsetof(Kelvo%sTable, %s) == %d * kWord);" % (item.name, m.name, m.number))
                    calls.append("  EXPECT_EQ(test::MemberSlot(&%s::%s), %d);" % (item.name, m.name, m.number))
    lines += ["", "TEST(ContractTest, CompilersNumberTheOperationsAsTheTableDoes) {"] + calls + ["}"]
    return lines + ["", "}  // namespace", "}  // namespace kelvo"]


def main(arguments):
    table = read_table(HERE)
    if arguments[:1] == ["--test"] and len(arguments) == 2:
        pathlib.Path(arguments[1]).write_text("\n".join(test(table)) + "\n")
        return
    files = {"docs/slots.md": "\n".join(document(table)) + "\n"}
    for header in table.headers:
        for folder, write in (("include/kelvo", cpp_header), ("include/kelvo/c", c_header)):
            files["%s/%s.h" % (folder, header.name)] = formatted(write(table, header))
    if arguments == ["--check"]:
        stale = [path for path, text in files.items() if not (ROOT / path).is_file() or (ROOT / path).read_text() != text]
        if stale:
            sys.exit("not what tools/contract/ says (tools/contract/generate.py writes them): " + " ".join(stale))
    elif not arguments:
        for path, text in files.items():
            (ROOT / path).write_text(text)
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except Fault as fault:
        sys.exit("generate: %s" % fault)
