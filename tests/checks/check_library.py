"""Checks the built Kelvo.dll and the objects it is made of: it exports GetFeature alone, needs only the
system's DLLs and the platform's, and nothing but the list of feature objects runs code at load.

usage: check_library.py OBJDUMP NM KELVO_DLL OBJECT-OR-ARCHIVE...
"""
import re
import subprocess
import sys

ALLOWED_IMPORTS = {
    "advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
    "oleaut32.dll", "user32.dll",
    # the platform's, or their desktop stand-ins
    "atlce300.dll", "aygshell.dll", "coredll.dll",
}
# The file whose objects are constructed at load.
FEATURE_OBJECTS = "feature_objects"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def check_dll(objdump, dll):
    text = output(objdump, "-p", dll)
    errors = []
    table = text.split("[Ordinal/Name Pointer] Table", 1)[-1].split("\n\n", 1)[0]
    exports = re.findall(r"\[\s*\d+\](?: \+base\[\s*\d+\])?\s+(?:[0-9a-f]+ )?(\S+)$", table,
                         re.MULTILINE)
    if exports != ["GetFeature"]:
        errors.append(f"exports {exports}, not GetFeature alone")
    for name in re.findall(r"DLL Name: (\S+)", text):
        if name.lower() not in ALLOWED_IMPORTS:
            errors.append(f"needs {name}")
    return errors


def check_initialisers(nm, files):
    errors = []
    found = False
    for file in files:
        member = file
        for line in output(nm, "-A", file).splitlines():
            if "_GLOBAL__sub_I_" not in line:
                continue
            member = line.split("_GLOBAL__sub_I_", 1)[0]
            if FEATURE_OBJECTS in member:
                found = True
            else:
                errors.append(f"an object is constructed at load in {member.strip()}")
    if not found:
        errors.append("the feature objects' initialiser was not found: is this check still right?")
    return errors


def main():
    objdump, nm, dll, *files = sys.argv[1:]
    errors = check_dll(objdump, dll) + check_initialisers(nm, files)
    for error in errors:
        print(error)
    print(f"{len(errors)} faults in the library")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
