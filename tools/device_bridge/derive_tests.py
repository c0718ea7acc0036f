#!/usr/bin/env python3
"""Writes the bridge's tests: the 32-bit build's, with the bridge in the library's place.

    derive_tests.py BUILD DOCUMENT OUT.cmake

BUILD holds i686/ and ce-arm-bridge/. The first column of the document's table under "Not run on the
bridge" names the tests that are left out, with * for any text; a row that leaves nothing out is a fault.
"""

import fnmatch
import json
import pathlib
import re
import subprocess
import sys

HEADING = "## Not run on the bridge"


def left_out(document):
    section = document.split(HEADING, 1)[1].split("\n## ", 1)[0]
    return [name for row in re.findall(r"^\|(.*?)\|", section, re.M) for name in re.findall(r"`([^`]+)`", row)]


def moved(text, build):
    return text.replace("%s/i686/bin" % build, "%s/ce-arm-bridge/bin" % build)


def renamed(name):
    return "device." + name[len("i686."):] if name.startswith("i686.") else name


def quoted(text):
    return "[==[%s]==]" % text


def command(test, build):
    words = [moved(word, build) for word in test["command"]]
    # The emulator of this build's programs, and a script that is told the build.
    return ["device" if word == "i686" else word for word in words]


def properties(test, build):
    for property in test.get("properties", []):
        value = property["value"]
        if isinstance(value, list):
            value = ";".join(renamed(str(item)) for item in value)
        elif isinstance(value, bool):
            value = str(value).upper()
        yield property["name"], moved(str(value), build)


def main():
    build, document, out = sys.argv[1:]
    shown = subprocess.run(["ctest", "--show-only=json-v1"], cwd=build + "/i686", check=True,
                           capture_output=True, text=True).stdout
    patterns = {name: 0 for name in left_out(pathlib.Path(document).read_text())}
    lines = []
    for test in json.loads(shown)["tests"]:
        name = test["name"]
        hits = [p for p in patterns if fnmatch.fnmatch(name, "i686." + p)]
        for pattern in hits:
            patterns[pattern] += 1
        if hits:
            continue
        lines.append("add_test(%s %s)\n" % (quoted(renamed(name)), " ".join(map(quoted, command(test, build)))))
        pairs = ["%s %s" % (key, quoted(value)) for key, value in properties(test, build)]
        lines.append("set_tests_properties(%s PROPERTIES %s)\n" % (quoted(renamed(name)), " ".join(pairs)))
    idle = [pattern for pattern, hits in patterns.items() if hits == 0]
    if idle:
        sys.exit("derive_tests: no test is called %s (%s)" % (", ".join(idle), document))
    pathlib.Path(out).write_text("".join(lines))


if __name__ == "__main__":
    main()
