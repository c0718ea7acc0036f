"""Reads the #include lines of the product and fails when folders depend on each other in a circle, when
a higher level is used by a lower one, when portable code includes a Windows header, or when the host
knows more of the library than what is there for hosts.

usage: check_includes.py ROOT COMPILE_COMMANDS_OF_THE_NATIVE_BUILD
"""
import json
import os
import re
import sys

# Each level may use those before it. The longest prefix of a path decides.
LEVELS = [
    ["include/kelvo", "src/res"],
    ["src/base"],
    ["src/entry/language"],
    ["src/effects", "src/input"],
    ["src/input/vorbis", "src/input/wma"],
    ["src/catalog/media"],
    ["src/playlist", "src/bookmarks", "src/eq", "src/skins"],
    ["src/catalog"],
    ["src/entry"],
]
# The reference host uses the library as any program would, with one exception: the curve of the
# equalizer is measured with effects of its own.
HOST = ["host"]
FOR_HOSTS = ["include/kelvo", "host"]
HOST_EXCEPTIONS = {("host/player/response.cpp", "src/effects")}
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


def is_of_host(path):
    return any(path.startswith(name + "/") for name in HOST)


def includes_of(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as file:
        for quoted, angled in INCLUDE.findall(file.read()):
            name = quoted or angled
            for candidate in ("src/" + name, "include/" + name, name):
                if os.path.isfile(os.path.join(root, candidate)):
                    yield candidate, None
                    break
            else:
                yield None, name


def files_of(root, levels):
    for names in levels:
        for name in names:
            for folder, _, files in os.walk(os.path.join(root, name)):
                for file in files:
                    if file.endswith((".h", ".cpp")):
                        yield os.path.relpath(os.path.join(folder, file), root)


def check_levels(root):
    errors = []
    for path in sorted(set(files_of(root, LEVELS))):
        here = level_of(path)
        for target, _ in includes_of(root, path):
            there = level_of(target) if target else None
            if there is None or there[1] == here[1]:
                continue
            if there[0] >= here[0]:
                errors.append(f"{path} includes {target}: {here[1]} lies below {there[1]}")
    return errors


def check_host(root):
    errors = []
    for path in sorted(files_of(root, [HOST])):
        for target, _ in includes_of(root, path):
            folder = os.path.dirname(target) if target else None
            allowed = (folder is None or (path, folder) in HOST_EXCEPTIONS or
                       any(target.startswith(name + "/") for name in FOR_HOSTS))
            if not allowed:
                errors.append(f"{path} includes {target}: the host knows include/kelvo alone")
    return errors


def check_portable(root, commands):
    errors = []
    with open(commands, encoding="utf-8") as file:
        sources = {os.path.relpath(entry["file"], root) for entry in json.load(file)}
    todo = [path for path in sources if level_of(path) or is_of_host(path)]
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
    errors = check_levels(root) + check_host(root) + check_portable(root, commands)
    for error in errors:
        print(error)
    print(f"{len(errors)} bad includes")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
