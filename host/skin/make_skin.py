#!/usr/bin/env python3
"""Draws the host's default skin (docs/formats/classic-skin.md): make_skin.py OUT

Writes the files into the folder OUT and, the same bytes, into the archive OUT.zip.
"""
import pathlib
import sys
import zipfile

import colour_texts
import equalizer
import main_window
import playlist
import text_sheets
from glyphs import GlyphError

SHEETS = {
    "balance.bmp": main_window.balance_sheet,
    "cbuttons.bmp": main_window.transport_sheet,
    "eq_ex.bmp": equalizer.rolled_sheet,
    "eqmain.bmp": equalizer.equalizer_sheet,
    "main.bmp": main_window.main_sheet,
    "monoster.bmp": main_window.channel_sheet,
    "numbers.bmp": lambda: text_sheets.number_sheet(False),
    "nums_ex.bmp": lambda: text_sheets.number_sheet(True),
    "playpaus.bmp": main_window.state_sheet,
    "pledit.bmp": playlist.playlist_sheet,
    "posbar.bmp": main_window.position_sheet,
    "shufrep.bmp": main_window.switch_sheet,
    "text.bmp": text_sheets.text_sheet,
    "titlebar.bmp": main_window.title_sheet,
    "volume.bmp": main_window.volume_sheet,
}


def skin_files():
    files = {name: draw().bitmap() for name, draw in SHEETS.items()}
    files["pledit.txt"] = colour_texts.playlist_text()
    files["viscolor.txt"] = colour_texts.visualisation_text()
    return files


def write_archive(path, files):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in sorted(files.items()):
            # A fixed date: the same drawing is the same archive.
            entry = zipfile.ZipInfo(name, (2000, 1, 1, 0, 0, 0))
            archive.writestr(entry, data, zipfile.ZIP_DEFLATED)


def main(out):
    folder = pathlib.Path(out)
    folder.mkdir(parents=True, exist_ok=True)
    files = skin_files()
    for name, data in files.items():
        (folder / name).write_bytes(data)
    write_archive(folder.with_name(folder.name + ".zip"), files)


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except (GlyphError, OSError) as error:
        sys.exit(f"make_skin: {error}")
