"""Checks the built Kelvo.dll and the objects it is made of: it exports GetFeature alone, needs only the
system's DLLs and the platform's, and nothing but the list of feature objects runs code at load, which
builds them in their order and registers each one's destruction right behind it. The programs and
DLLs around it need nothing of the compiler's either.

usage: check_library.py OBJDUMP NM KELVO_DLL BESIDE_IT OBJECT-OR-ARCHIVE...
BESIDE_IT: the programs and DLLs around it, with commas between them
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
# What the reference host and the stand-ins may need besides.
ALLOWED_BESIDE_IT = ALLOWED_IMPORTS | {"comdlg32.dll", "shell32.dll", "winmm.dll"}
# The file whose objects are constructed at load.
FEATURE_OBJECTS = "feature_objects"
# In the order in which hosts rely on them; the first one has nothing to destroy.
FEATURES = ["SkinReaderFeature", "CatalogFeature", "PresetsFeature", "OggVorbisPlugin",
            "BookmarksFeature", "WmaInputPlugin", "FixedPointEffects"]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def foreign_imports(objdump_text, allowed):
    return [name for name in re.findall(r"DLL Name: (\S+)", objdump_text)
            if name.lower() not in allowed]


def check_dll(objdump, dll):
    text = output(objdump, "-p", dll)
    errors = [f"needs {name}" for name in foreign_imports(text, ALLOWED_IMPORTS)]
    table = text.split("[Ordinal/Name Pointer] Table", 1)[-1].split("\n\n", 1)[0]
    exports = re.findall(r"\[\s*\d+\](?: \+base\[\s*\d+\])?\s+(?:[0-9a-f]+ )?(\S+)$", table,
                         re.MULTILINE)
    if exports != ["GetFeature"]:
        errors.append(f"exports {exports}, not GetFeature alone")
    return errors


def check_beside_it(objdump, file):
    text = output(objdump, "-p", file)
    return [f"{file} needs {name}" for name in foreign_imports(text, ALLOWED_BESIDE_IT)]


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


def check_order(objdump, files):
    """The initialiser names each class when it builds the object: its constructor, or its table."""
    text = "".join(output(objdump, "-dr", file) for file in files if FEATURE_OBJECTS in file)
    code = re.search(r"<_+GLOBAL__sub_I_\w+>:\n(.*?)(?:\n\n|\Z)", text, re.DOTALL)
    steps = []
    for symbol in re.findall(r"^\s+[0-9a-f]+: \S+\s+(\S+)", code.group(1) if code else "", re.MULTILINE):
        name = re.search(r"_ZTVN5kelvo\d+(\w+)E|_ZN5kelvo\d+(\w+?)C[12]E", symbol)
        step = "atexit" if symbol.endswith("atexit") else name and (name.group(1) or name.group(2))
        if step == "atexit" or (step in FEATURES and step not in steps):
            steps.append(step)
    wanted = [step for name in FEATURES for step in (name, "atexit")]
    wanted.remove("atexit")
    return [] if steps == wanted else [f"built at load: {steps}, not {wanted}"]


def main():
    objdump, nm, dll, beside_it, *files = sys.argv[1:]
    errors = check_dll(objdump, dll) + check_initialisers(nm, files) + check_order(objdump, files)
    for file in beside_it.split(","):
        errors += check_beside_it(objdump, file)
    for error in errors:
        print(error)
    print(f"{len(errors)} faults in the library")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
