"""Packs a folder into a zip archive of which only names and contents of the files decide: sorted, with one
time for all (SOURCE_DATE_EPOCH) and the same rights.

usage: pack.py OUT.zip ROOT FOLDER      FOLDER is below ROOT and the archive's only one
"""
import os
import pathlib
import sys
import time
import zipfile


def main():
    out, root, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    # The format counts in steps of two seconds.
    when = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]) // 2 * 2)[:6]
    files = sorted(path.relative_to(root).as_posix() for path in (root / folder).rglob("*") if path.is_file())
    with zipfile.ZipFile(out, "w") as archive:
        for name in files:
            entry = zipfile.ZipInfo(name, when)
            entry.create_system = 3
            entry.external_attr = 0o100644 << 16
            archive.writestr(entry, (root / name).read_bytes(), zipfile.ZIP_DEFLATED, 9)
    print("%s: %d files" % (out.name, len(files)))


if __name__ == "__main__":
    main()
