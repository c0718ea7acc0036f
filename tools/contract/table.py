"""Reads the table of the contract (README.md says how it is written)."""

import re


class Fault(Exception):
    pass


class Item:
    """A thing that the table says: a header, what stands in it, or a member of that."""

    def __init__(self, kind, **values):
        self.kind, self.text, self.members, self.note, self.file, self.outside = kind, [], [], "", "", False
        self.__dict__.update(values)

    def declaration(self, prefix=""):
        """A field's. `prefix` stands before a record that points to its like."""
        kind, brackets = re.fullmatch(r"([^\[]+?)((?:\[\d+\])*)", self.type).groups()
        kind = prefix + kind if prefix and self.own else kind
        return "%s %s%s" % (kind, self.name, brackets)


    def slot_text(self):
        return ["Slot %d. %s" % (self.number, self.text[0] if self.text else "")] + self.text[1:]


class Table:
    def __init__(self, headers):
        self.headers = headers

    def items(self):
        return [item for header in self.headers for item in header.items]

    def find(self, kind, name):
        return next((i for i in self.items() if i.kind == kind and i.name == name), None)


def split_note(line):
    code, _, note = line.partition("  // ")
    return code.strip(), note.strip()


def arguments_of(text):
    return [tuple(a.strip().rsplit(" ", 1)) for a in text.split(",")] if text.strip() else []


def directive(line):
    code, note = split_note(line)
    kind, _, rest = code.partition(" ")
    if kind in ("alias", "record", "object", "interface", "enumeration"):
        words = rest.split()
        item = Item(kind, name=words[0], note=note)
        if kind == "alias":
            item.value = words[1]
        elif kind in ("record", "object"):
            item.size = int(words[1])
        elif kind == "enumeration":
            item.type = words[1]
        else:
            item.party, item.base = words[1], words[2] if len(words) > 2 else None
        return item
    if kind == "verbatim":
        return Item(kind, name="", outside=rest == "outside")
    match = re.fullmatch(r"constant (\w+) (\w+) = (.+)", code)
    if match:
        return Item(kind, type=match[1], name=match[2], value=match[3], note=note)
    match = re.fullmatch(r'string (\w+) = (".*")', code)
    if match:
        return Item(kind, name=match[1], value=match[2])
    match = re.fullmatch(r"function (.+?[ *])(\w+)\((.*)\)", code)
    if match:
        return Item(kind, result=match[1].strip(), name=match[2], arguments=arguments_of(match[3]))
    raise Fault("not understood: " + line)


def member(item, line):
    code, note = split_note(line)
    if item.kind == "enumeration":
        match = re.fullmatch(r'(\w+) = (\w+)(?:  "(.+)")?', code)
        if match:
            return Item("value", name=match[1], value=match[2], file=match[3] or "", note=note)
    elif item.kind == "interface":
        match = re.fullmatch(r"(\d+) (.+?[ *])(\w+)\((.*?)\)(?: (\{.*\}|as written))?", code)
        if match:
            base = [m for m in item.members if m.kind == "slot"]
            first = 16 if item.base else 0
            if int(match[1]) != first + len(base):
                raise Fault("%s: slot %d expected: %s" % (item.name, first + len(base), line))
            return Item("slot", number=int(match[1]), result=match[2].strip(), name=match[3],
                        arguments=arguments_of(match[4]), reserved=match[3].startswith("Reserved"),
                        as_written=match[5] == "as written", body=match[5] if match[5] != "as written" else None)
    elif item.kind in ("record", "object"):
        match = re.fullmatch(r"(\d+) (.+?) (\w+)((?:\[\d+\])*)", code)
        if match:
            return Item("field", offset=int(match[1]), type=match[2] + match[4], name=match[3], note=note,
                        own=match[2].startswith(item.name))
    raise Fault("%s: not understood: %s" % (item.name, line))


def read_header(path):
    header = Item("header", name=path.stem, items=[], uses=[], system=[])
    last = header  # what text belongs to
    for line in path.read_text().split("\n"):
        if line.startswith("    ") or not line:
            last.text.append(line[4:])
        elif line[0] in "|!":
            last = Item("cpp" if line[0] == "|" else "c", line=line[2:])
            header.items[-1].members.append(last)
        elif line.startswith("  "):
            last = member(header.items[-1], line)
            header.items[-1].members.append(last)
        elif line.startswith(("uses ", "system ")):
            setattr(header, line.split()[0], re.findall(r"[\w.]+", line)[1:])
        elif line.startswith("header "):
            if line.split()[1] != path.stem:
                raise Fault("%s: %s" % (path.name, line))
        else:
            last = directive(line)
            header.items.append(last)
    for item in [header] + header.items + [m for i in header.items for m in i.members]:
        while item.text and not item.text[-1]:
            item.text.pop()
    return header


def read_table(folder):
    """The headers, each behind those that it uses."""
    found = {path.stem: read_header(path) for path in sorted(folder.glob("*.txt"))}
    ordered = []

    def add(header):
        for name in header.uses:
            add(found[name])
        if header not in ordered:
            ordered.append(header)

    for header in found.values():
        add(header)
    return Table(ordered)
