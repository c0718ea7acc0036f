"""Reads the #include lines of the product and fails when folders depend on each other in a circle, when
a higher room is used by a lower one, when portable code includes a Windows header, when the host
knows more of the library than what is there for hosts, when a header for hosts needs a certain
compiler, or when docs/architecture.md shows another order than the one that is held here.

usage: check_includes.py ROOT COMPILE_COMMANDS_OF_THE_NATIVE_BUILD
       check_includes.py --table      prints the order as the document shows it
"""
import json
import os
import re
import sys

# The rooms from the ground up: each may use those before it. The longest prefix of a path decides.
ROOMS = [
    (["include/kelvo"], "the contract with hosts"),
    (["src/res"], "numbers of texts, dialogs, menus"),
    (["src/base"], "the system, wrapped once"),
    (["src/entry/language"], "texts, dialogs and menu bars in the user's language"),
    (["src/effects", "src/input"], "the effects processor; what input plug-ins share"),
    (["src/input/vorbis", "src/input/wma"], "the two input plug-ins"),
    (["src/catalog/media"], "media files: kinds, tags"),
    (["src/playlist", "src/bookmarks", "src/eq", "src/skins"], "one feature each"),
    (["src/catalog"], "the catalog, which shows media and playlists"),
    (["src/entry"], "the export, and the list of all features"),
]
LEVELS = [names for names, _ in ROOMS]
DOCUMENT = "docs/architecture.md"
# The reference host uses the library as any program would, with two exceptions: the curve of the
# equalizer is measured with effects of its own, and playlists, which are no feature of the library
# for themselves, are read and written with the library's code.
HOST = ["host"]
FOR_HOSTS = ["include/kelvo", "host"]
HOST_EXCEPTIONS = {("host/player/response.cpp", "src/effects"),
                   ("host/player/playlist_files.cpp", "src/playlist"),
                   ("host/player/playlist_files.cpp", "src/base/text")}
WINDOWS_HEADERS = re.compile(r"^(windows|windef|winbase|winuser|wingdi|commctrl|prsht|mmsystem|ole2|"
                             r"oleauto|ocidl|objbase|shellapi|shlobj|aygshell)\.h$", re.IGNORECASE)
# Words of compilers, but for those that only ask what is compiled for, and calling conventions.
COMPILERS_OWN = re.compile(r"\b__(?!cdecl\b|fastcall\b|attribute__\(\(unused\)\)|i386__\b|GNUC__\b)\w+|"
                           r"#pragma (?!once)|\b_Atomic\b")
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
        # What a test compiles for itself may stand on seams of the test's.
        sources = {os.path.relpath(entry["file"], root) for entry in json.load(file)
                   if " -o tests/" not in entry["command"]}
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


def check_contract(root):
    errors = []
    for path in sorted(files_of(root, [["include/kelvo"]])):
        with open(os.path.join(root, path), encoding="utf-8") as file:
            for number, line in enumerate(file, 1):
                if COMPILERS_OWN.search(line.split("//", 1)[0]):
                    errors.append(f"{path}:{number}: not every compiler knows this")
    return errors


def table():
    lines = ["| rooms, from the ground up | what |", "|---|---|"]
    for names, what in ROOMS:
        lines.append(f"| {', '.join(f'`{name}/`' for name in names)} | {what} |")
    return "\n".join(lines)


def check_document(root):
    with open(os.path.join(root, DOCUMENT), encoding="utf-8") as file:
        shown = f"\n\n{table()}\n\n" in file.read()
    return [] if shown else [f"{DOCUMENT} does not hold what check_includes.py --table prints"]


def main():
    if sys.argv[1:] == ["--table"]:
        print(table())
        return 0
    root, commands = sys.argv[1:3]
    errors = (check_levels(root) + check_host(root) + check_portable(root, commands) +
              check_contract(root) + check_document(root))
    for error in errors:
        print(error)
    print(f"{len(errors)} bad includes")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
