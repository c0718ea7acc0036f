"""Reads the #include lines of the product and fails when folders depend on each other in a circle, when
a higher level is used by a lower one, or when portable code includes a Windows header.

usage: check_includes.py ROOT COMPILE_COMMANDS_OF_THE_NATIVE_BUILD
"""
import json
import os
import re
import sys

# Each level may use those before it. The longest prefix of a path decides.
LEVELS = [
    ["include/kelvo", "res"],
    ["base"],
    ["entry/language"],
    ["effects", "input"],
    ["input/vorbis", "input/wma"],
    ["catalog/media"],
    ["playlist", "bookmarks", "eq", "skins"],
    ["catalog"],
    ["entry"],
]
WINDOWS_HEADERS = re.compile(r"^(windows|windef|winbase|winuser|wingdi|commctrl|prsht|mmsystem|ole2|"
                             r"oleauto|ocidl|objbase|shellapi|shlobj|aygshell)\.h$", re.IGNORECASE)
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)


def level_of(path):
    best = None
    for number, names in enumerate(LEVELS):
        for name in names:
            if path.startswith(name + "/") and (best is None or len(name) > len(best[1])):
                best = (number, name)
    return best


def includes_of(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as file:
        for quoted, angled in INCLUDE.findall(file.read()):
            name = quoted or angled
            for candidate in (name, "include/" + name):
                if os.path.isfile(os.path.join(root, candidate)):
                    yield candidate, None
                    break
            else:
                yield None, name


def product_files(root):
    for names in LEVELS:
        for name in names:
            for folder, _, files in os.walk(os.path.join(root, name)):
                for file in files:
                    if file.endswith((".h", ".cpp")):
                        yield os.path.relpath(os.path.join(folder, file), root)


def check_levels(root):
    errors = []
    for path in sorted(set(product_files(root))):
        here = level_of(path)
        for target, _ in includes_of(root, path):
            there = level_of(target) if target else None
            if there is None or there[1] == here[1]:
                continue
            if there[0] >= here[0]:
                errors.append(f"{path} includes {target}: {here[1]} lies below {there[1]}")
    return errors


def check_portable(root, commands):
    errors = []
    with open(commands, encoding="utf-8") as file:
        sources = {os.path.relpath(entry["file"], root) for entry in json.load(file)}
    todo = [path for path in sources if level_of(path)]
    if not todo:
        errors.append("the native build compiles nothing of the product")
    seen = set(todo)
    while todo:
        path = todo.pop()
        for target, other in includes_of(root, path):
            if target and target not in seen:
                seen.add(target)
                todo.append(target)
            elif other and WINDOWS_HEADERS.match(other):
                errors.append(f"{path} is portable code and includes <{other}>")
    return errors


def main():
    root, commands = sys.argv[1:3]
    errors = check_levels(root) + check_portable(root, commands)
    for error in errors:
        print(error)
    print(f"{len(errors)} bad includes")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
