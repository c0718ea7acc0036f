"""Mutation testing of one folder, see scripts/mutate.sh.

usage: mutate.py ROOT BUILD FOLDER [N] [--seed S] [--own]
"""
import argparse
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

# What stands in place of what, one change at a time. Spaces tell operators from templates.
SWAPS = {
    " < ": [" <= ", " >= "], " <= ": [" < "], " > ": [" >= ", " <= "], " >= ": [" > "],
    " == ": [" != "], " != ": [" == "], " && ": [" || "], " || ": [" && "],
    " + ": [" - "], " - ": [" + "], " += ": [" -= ", " = "], " -= ": [" += "], " & ": [" | "],
    " | ": [" & "], " << ": [" >> "], " >> ": [" << "], "++": ["--"], "--": ["++"],
    "true": ["false"], "false": ["true"],
}
SWAP = re.compile("|".join(r"\b%s\b" % key if key.isalpha() else re.escape(key) for key in SWAPS))
NUMBER = re.compile(r"(?<![\w.'\"])(0[xX][0-9a-fA-F]+|\d+)(?=[uUlL]*\b)(?![\w.]*\.)")
CONDITION = re.compile(r"\b(?:if|while) \((?!auto\b|const\b|\w+[ *&]+\w+ = )(.*)\)(?: \{| [^()]*;)?$")
# A call or an assignment that fills a line; not a declaration, not a jump.
STATEMENT = re.compile(r"^\s*(?!return\b|static\b|using\b|const\b|goto\b|delete\b|default\b|namespace\b)"
                       r"(?:\*?[\w.>\[\]-]++(?:\([^;]*\))?(?:->|\.)?)+\s*(?:[-+*/|&^]?= [^;]*|\([^;]*\)|\+\+|--)?;$")
JUMP = re.compile(r"^\s*(?:break|continue);$")
ARGUMENTS = re.compile(r"(?<=\()([\w.*&>-]+), ([\w.*&>-]+)(?=[,)])")
# Tests of all rooms, which belong to each.
COMMON = ("bin/oracle_tests", "bin/hostile_replay")
NO_CODE = re.compile(r'^\s*(?:#|//|/\*|\*|static_assert|namespace|using|template|class|struct|enum|})')


def code_of(line):
    """The line without its comment; characters of texts become blanks of the same width."""
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', lambda m: "_" * len(m.group()), line)
    return line.split("//", 1)[0].rstrip()


def mutants_of_line(line):
    """Yields (what, changed line)."""
    code = code_of(line)
    if not code.strip() or NO_CODE.match(code):
        return
    for match in SWAP.finditer(code):
        for new in SWAPS[match.group()]:
            yield f"{match.group().strip()} -> {new.strip()}", line[:match.start()] + new + line[match.end():]
    for match in NUMBER.finditer(code):
        old = match.group(1)
        value = int(old, 8 if re.match(r"0\d", old) else 0)
        for new in {value + 1, value - 1 if value > 0 else value + 1}:
            yield f"{old} -> {new}", line[:match.start()] + str(new) + line[match.end():]
    match = CONDITION.search(code)
    if match:
        start, end = match.span(1)
        yield "condition negated", f"{line[:start]}!({line[start:end]}){line[end:]}"
    if STATEMENT.match(code) or JUMP.match(code):
        indent = len(line) - len(line.lstrip())
        yield "statement dropped", " " * indent + ";"
    for match in ARGUMENTS.finditer(code):
        first, second = match.groups()
        if first != second:
            yield "arguments swapped", line[:match.start()] + f"{second}, {first}" + line[match.end():]


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **options)


def copy_tree(root, tree):
    """Makes tree the same as the files of the checkout; what has not changed keeps its time."""
    listed = run(["git", "-C", str(root), "ls-files", "-co", "--exclude-standard"]).stdout.splitlines()
    wanted = {name for name in listed if (root / name).is_file()}
    for name in wanted:
        source, target = root / name, tree / name
        if not target.exists() or target.read_bytes() != source.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)
    for path in [path for path in tree.rglob("*") if path.is_file()]:
        name = str(path.relative_to(tree))
        if name not in wanted and not name.startswith("build/"):
            path.unlink()


class Tests:
    """The test programs that are linked with a source file: the folder's own first, because they
    notice most, then the quickest. Each is built when those before it have noticed nothing."""

    def __init__(self, build, folder, only_own):
        self.build = build
        rooms = [f"/tests/{part}/" for part in folder.split("/") if part != "src"]
        self.own = set()
        self.commands = {}  # by program; filled when it is built: CTest knows no sooner
        self.seconds = {}
        for test in self.listing():
            program = "bin/" + test["name"].split(".", 1)[-1]
            inputs = run(["ninja", "-C", str(build), "-t", "inputs", program])
            if inputs.returncode == 0 and f"/{folder}/" in inputs.stdout:
                if program in COMMON or any(room in inputs.stdout for room in rooms):
                    self.own.add(program)
                if program in self.own or not only_own:
                    self.commands[program] = None

    def listing(self):
        shown = run(["ctest", "--test-dir", str(self.build), "--show-only=json-v1"])
        return json.loads(shown.stdout)["tests"]

    def find_commands(self):
        for test in self.listing():
            program = "bin/" + test["name"].split(".", 1)[-1]
            if program in self.commands:
                properties = {p["name"]: p["value"] for p in test.get("properties", [])}
                self.commands[program] = (test["command"], properties["WORKING_DIRECTORY"])

    def build_all(self):
        return run(["ninja", "-C", str(self.build), *self.commands])

    def failing(self):
        """The program that notices the change, None when all pass, False when it does not compile."""
        for name in sorted(self.commands, key=lambda name: (name not in self.own,
                                                            self.seconds.get(name, 0))):
            if run(["ninja", "-C", str(self.build), name]).returncode:
                return False
            command, folder = self.commands[name]
            begin = time.monotonic()
            try:
                result = run(command, cwd=folder, timeout=10 + 10 * self.seconds.get(name, 60),
                             env={**os.environ, "GTEST_FAIL_FAST": "1"})
            except subprocess.TimeoutExpired:
                return name
            if result.returncode != 0:
                return name
            self.seconds.setdefault(name, time.monotonic() - begin)
        return None


def compiled_sources(build, tree, folder):
    commands = json.loads((build / "compile_commands.json").read_text())
    sources = {pathlib.Path(entry["file"]) for entry in commands}
    inside = {path for path in sources if (tree / folder) in path.parents}
    used = set(run(["ninja", "-C", str(build), "-t", "deps"]).stdout.split())
    headers = {path for path in (tree / folder).rglob("*.h")
               if str(path) in used and "decoder_config" not in path.parts}
    return sorted(inside | headers)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("folder")
    parser.add_argument("count", nargs="?", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--own", action="store_true", help="run the tests of the folder's room alone")
    options = parser.parse_args()
    folder = options.folder.strip("/")
    tree = options.build / "mutate" / "tree"
    # Where a preset of the copy would build, so that a compiler cache knows its files.
    build = tree / "build" / "native"
    copy_tree(options.root, tree)
    media = build.parent / "media"
    if not media.exists():
        media.symlink_to(options.build / "media")
    # Debug information and linking would take most of a change's time.
    linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
    configured = run(["cmake", "-S", str(tree), "-B", str(build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                      "-DCMAKE_CXX_FLAGS_DEBUG=",
                      "-DKELVO_SANITIZE=ON", *linker, f"-DKELVO_SOURCES={options.build}/sources"])
    if configured.returncode:
        sys.exit(configured.stdout)
    tests = Tests(build, folder, options.own)
    if not tests.commands:
        sys.exit(f"no native test uses {folder}")
    built = tests.build_all()
    if built.returncode:
        sys.exit(built.stdout)
    tests.find_commands()
    if failed := tests.failing():
        sys.exit(f"{failed} fails without any change")

    candidates = []
    for path in compiled_sources(build, tree, folder):
        for number, line in enumerate(path.read_text().split("\n")):
            candidates += [(path, number, what, changed) for what, changed in mutants_of_line(line)]
    random.Random(options.seed).shuffle(candidates)

    killed, survivors = 0, []
    for path, number, what, changed in candidates:
        if killed + len(survivors) == options.count:
            break
        original = path.read_text()
        lines = original.split("\n")
        before, lines[number] = lines[number], changed
        path.write_text("\n".join(lines))
        try:
            found = tests.failing()
            if found is False:
                continue  # no mutant
            if found:
                killed += 1
            else:
                place = f"{path.relative_to(tree)}:{number + 1}"
                survivors.append(place)
                print(f"survived  {place}  {what}\n    {before.strip()}\n    {changed.strip()}", flush=True)
        finally:
            path.write_text(original)
        print(f"\r{killed} of {killed + len(survivors)} killed ", end="", file=sys.stderr, flush=True)
    total = killed + len(survivors)
    print(f"{folder}: {killed} of {total} killed ({100 * killed // max(total, 1)} %), "
          f"tests: {', '.join(pathlib.Path(name).name for name in tests.commands)}")


if __name__ == "__main__":
    main()
