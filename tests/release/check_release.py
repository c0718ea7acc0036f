"""Packs what is built, twice, and looks into the archives: the same bytes, no time of linking and no path of
this machine in any program, every program's imports in the archive or the system's, and what a reader is
told to use. The hosts of the archive for authors are compiled as its page says.

usage: check_release.py ROOT       77: not everything is built
"""
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import zipfile

BUILT = ["i686/bin/velmora.exe", "x86_64/bin/velmora.exe", "i686/bin/selftest.exe", "x86_64/bin/selftest.exe",
         "x86_64/bin/kelvotool.exe", "ce-arm/bin/selftest.exe", "ce-arm/bin/kv_mui.0C0A.dll"]


def pack(root, out, epoch):
    subprocess.run([root / "scripts/release.sh", "--packed-only", out], check=True, stdout=subprocess.DEVNULL,
                   env={**os.environ, "SOURCE_DATE_EPOCH": epoch, "TMPDIR": str(out)})
    return {path.name: path.read_bytes() for path in sorted(out.iterdir()) if path.is_file()}


def faults(root, name, members):
    for path, data in members.items():
        if data[:2] == b"MZ":
            stamp, = struct.unpack_from("<I", data, struct.unpack_from("<I", data, 0x3C)[0] + 8)
            if stamp:
                yield "%s: linked at %d" % (path, stamp)
            if str(root).encode() in data or str(root).encode("utf-16-le") in data:
                yield "%s: names this machine's folders" % path
    top = name[:-len(".zip")]
    # What the page beside them calls by name has to be there.
    page = members.get(top + "/README.txt", b"").decode()
    for file in set(re.findall(r"`([\w -]+\.(?:dll|exe))`", page)):
        if not any(path.endswith("/" + file) for path in members):
            yield "%s: its page speaks of %s" % (name, file)
    if not page or top + "/LICENSE" not in members:
        yield "%s: lacks its page or the terms" % name


def compile_hosts(archive, folder):
    archive.extractall(folder)
    top = folder / archive.namelist()[0].split("/")[0]
    commands = re.findall(r"^    (\S+-w64-mingw32-.*)$", (top / "README.txt").read_text(), re.M)
    for command in commands or ["false"]:
        done = subprocess.run(command.split(), cwd=top, capture_output=True, text=True)
        if done.returncode != 0:
            yield "%s\n%s" % (command, done.stderr)


def main():
    root = pathlib.Path(sys.argv[1])
    if not all((root / "build" / path).exists() for path in BUILT):
        print("not everything is built")
        return 77
    with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as other:
        packed = pack(root, pathlib.Path(one), "1000000000")
        again = pack(root, pathlib.Path(other), "1000000000")
        found = ["%s differs from itself" % name for name in packed if packed[name] != again.get(name)]
        archives = [name for name in packed if name.endswith(".zip")]
        for name in archives:
            with zipfile.ZipFile(pathlib.Path(one) / name) as archive:
                found += faults(root, name, {path: archive.read(path) for path in archive.namelist()})
                if name.endswith("-sdk.zip"):
                    found += compile_hosts(archive, pathlib.Path(other) / "sdk")
    if len(archives) != 3 or packed["SHA256SUMS"].count(b"\n") != 3:
        found.append("three archives and their sums were expected: %s" % sorted(packed))
    print("\n".join(found) or "%d archives" % len(archives))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
