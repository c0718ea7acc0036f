"""Types what the documents say to type.

usage: check_commands.py ROOT BUILD       BUILD: the native build, whose programs are used by name

A line "$ COMMAND" in a block is run in a folder with sample files; the lines below it are what it prints, each
of which may go on with a remark, and "..." stands for any lines. Other lines in blocks that begin with one of
the project's programs show how it is used, or take long: they are held against its own help. (The compilers'
lines are run by tests/host and tests/release.)
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import textwrap

DOCUMENTS = ["README.md", "CONTRIBUTING.md", "docs/**/*.md", "src/res/languages/README.md", "pocketpc/README.md"]
SAMPLES = ["{root}/build/media/sine.mp3", "{root}/build/media/sample.wma", "{root}/build/media/sample.ogg",
           "{build}/bin/presets/Rock.eqf", "{build}/bin/skins/default.zip", "{build}/bin/skins/default/main.bmp"]
PROGRAM = re.compile(r"^(scripts/\w+\.sh|velmora(\.exe)?|kelvotool(\.exe)?) ")


def blocks(text):
    """The lines of each indented or fenced block, with those that end in a backslash joined."""
    found, block, fenced = [], [], False  # (a block in a list is indented further)
    for line in text.splitlines() + [""]:
        if line.startswith("```"):
            fenced = not fenced
            line = ""
        if fenced or line.startswith("    "):
            line = line if fenced else line[4:]
            if block and block[-1].endswith("\\"):
                block[-1] = block[-1][:-1].rstrip() + " " + line.strip()
            else:
                block.append(line)
        elif block and line:  # a paragraph
            found.append(block)
            block = []
        elif block:
            block.append("")
    return [textwrap.dedent("\n".join(block)).splitlines() for block in found + [block]]


class Checker:
    def __init__(self, root, build):
        self.root, self.folder = root, build / "docs"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()
        self.environment = {**os.environ, "PATH": "%s:%s" % (build / "bin", os.environ["PATH"])}
        for sample in SAMPLES:
            target = pathlib.Path(sample.format(root=root, build=build))
            (self.folder / target.name).symlink_to(target)
        self.compared = self.held_against_help = 0
        self.faults = []

    def run(self, command, folder):
        result = subprocess.run(["bash", "-c", command], cwd=folder, capture_output=True, text=True,
                                errors="replace", env=self.environment)
        lines = (result.stdout + result.stderr).splitlines()
        return result.returncode, [line.rstrip().replace("\t", "  ") for line in lines]

    def check_session(self, document, command, expected):
        code, printed = self.run(command, self.folder)
        self.compared += 1
        at = 0
        for number, line in enumerate(expected):
            if line.strip() == "...":
                rest = expected[number + 1:number + 2]
                while at < len(printed) and not (rest and rest[0].startswith(printed[at])):
                    at += 1
                continue
            shown = printed[at] if at < len(printed) else None
            if shown is None or not line.startswith(shown):
                self.faults.append("%s: $ %s\n  says:   %s\n  prints: %s" % (document, command, line, shown))
                return
            at += 1
        if at < len(printed):
            self.faults.append("%s: $ %s\n  prints more: %s" % (document, command, printed[at]))

    def check_help(self, document, line):
        words = re.split(r"  | && ", line)[0].split()
        program = words[0]
        if program.startswith("scripts/"):
            code, text = self.run(program + " --help", self.root)
        elif program.startswith("kelvotool"):
            code, text = self.run("kelvotool --help", self.root)
        else:
            code, text = 0, [(self.root / "host/main.cpp").read_text()]
        self.held_against_help += 1
        text = "\n".join(text)
        wanted = [word.strip("[]") for word in words[1:] if re.match(r"\[?--\w", word)]
        if program.startswith(("kelvotool", "velmora")) and words[1:] and re.match(r"\w", words[1]):
            wanted.append(words[1])
        missing = [word for word in wanted if word not in text and word != "--help"]
        if code != 0 or missing:
            self.faults.append("%s: %s: %s" % (document, line, missing or "has no help"))

    def check(self, path):
        name = path.relative_to(self.root)
        for block in blocks(path.read_text(encoding="utf-8")):
            at = 0
            while at < len(block):
                line = block[at]
                at += 1
                if line.startswith("$ "):
                    first = at
                    while at < len(block) and block[at] and not block[at].startswith("$ "):
                        at += 1
                    self.check_session(name, line[2:], block[first:at])
                elif PROGRAM.match(line):
                    self.check_help(name, line)


def main():
    root, build = map(pathlib.Path, sys.argv[1:])
    checker = Checker(root, build)
    for pattern in DOCUMENTS:
        for path in sorted(root.glob(pattern)):
            if path.name != "sdk.md":  # of another folder: tests/release
                checker.check(path)
    print("\n".join(checker.faults))
    print("%d compared, %d held against help" % (checker.compared, checker.held_against_help))
    return 1 if checker.faults or checker.compared < 10 or checker.held_against_help < 10 else 0


if __name__ == "__main__":
    sys.exit(main())
