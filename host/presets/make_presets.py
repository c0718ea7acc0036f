#!/usr/bin/env python3
"""Writes one preset file (docs/formats/eqf.md) a line of bands.txt: make_presets.py BANDS OUT_DIR

The eleven bytes are the host's: preamplifier, then ten bands, each 0 (strongest boost) to 27
(strongest cut). A band is left alone by 14, the preamplifier by 13.
"""
import pathlib
import sys

NAME_BYTES = 20
PREAMP_MIDDLE = 13
BAND_MIDDLE = 14
VALUES = 11


def preset(line):
    name, *steps = line.split()
    steps = [int(step) for step in steps]
    if len(steps) != VALUES or len(name) >= NAME_BYTES:
        raise ValueError(f"not a name and {VALUES} numbers: {line!r}")
    setting = bytes([PREAMP_MIDDLE - steps[0]] + [BAND_MIDDLE - step for step in steps[1:]])
    if max(setting) > 27:
        raise ValueError(f"out of range: {line!r}")
    return name, name.encode("ascii").ljust(NAME_BYTES, b"\0") + setting


def main(bands, out):
    out = pathlib.Path(out)
    out.mkdir(parents=True, exist_ok=True)
    for line in pathlib.Path(bands).read_text(encoding="ascii").splitlines():
        if line.strip() and not line.startswith("#"):
            name, data = preset(line)
            (out / f"{name}.eqf").write_bytes(data)


if __name__ == "__main__":
    main(*sys.argv[1:])
