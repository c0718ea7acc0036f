"""Fonts and symbols out of text files.

A file is a list of blocks with an empty line between them: a line of names, then rows with one word
a name. In a word "#" is a full pixel, "+" a half and "-" a quarter of one, "." none. "//" begins a
comment line.
"""
import os

HERE = os.path.dirname(os.path.abspath(__file__))
STRENGTH = {"#": 1.0, "+": 0.5, "-": 0.25, ".": 0.0}


class GlyphError(Exception):
    pass


def load(name):
    """Returns {name: rows}."""
    with open(os.path.join(HERE, name), encoding="utf-8") as source:
        lines = [line.split() for line in source if not line.startswith("//")]
    found, names = {}, []
    for words in lines:
        if not words:
            names = []
        elif not names:
            names = words
            for glyph in names:
                if glyph in found:
                    raise GlyphError(f"{name}: {glyph} is drawn twice")
                found[glyph] = []
        else:
            if len(words) != len(names) or set("".join(words)) - set(STRENGTH):
                raise GlyphError(f"{name}: not a row of {len(names)} glyphs: {' '.join(words)}")
            for glyph, row in zip(names, words):
                found[glyph].append(row)
    for glyph, rows in found.items():
        if len({len(row) for row in rows}) != 1:
            raise GlyphError(f"{name}: the rows of {glyph} differ in width")
    return found


def draw(canvas, rows, x, y, colour):
    for dy, row in enumerate(rows):
        for dx, pixel in enumerate(row):
            if STRENGTH[pixel]:
                canvas.dot(x + dx, y + dy, colour, STRENGTH[pixel])


class Font:
    """Proportional: letters stand `gap` apart, whatever the width of their cells."""

    def __init__(self, glyphs, gap, space):
        self.glyphs, self.gap, self.space = glyphs, gap, space

    def _ink(self, char):
        rows = self.glyphs[char]
        used = [x for x in range(len(rows[0])) if any(row[x] != "." for row in rows)]
        return [row[used[0]:used[-1] + 1] for row in rows]

    def width(self, text):
        return sum(self._advance(char) for char in text) - self.gap

    def _advance(self, char):
        return self.space if char == " " else len(self._ink(char)[0]) + self.gap

    def draw(self, canvas, text, x, y, colour):
        for char in text:
            if char != " ":
                draw(canvas, self._ink(char), x, y, colour)
            x += self._advance(char)

    def centre(self, canvas, text, x, y, width, colour):
        self.draw(canvas, text, x + (width - self.width(text)) // 2, y, colour)


TEXT = load("text_font.txt")  # cells of 5 by 6
SYMBOLS = load("symbols.txt")
LABEL = Font({**TEXT, **load("label_font.txt")}, gap=1, space=3)
UNIT = Font(load("unit_font.txt"), gap=1, space=3)
CAPTION = Font(load("caption_font.txt"), gap=2, space=5)


def symbol(canvas, name, x, y, width, height, colour):
    """Centres a symbol in the rectangle."""
    rows = SYMBOLS[name]
    draw(canvas, rows, x + (width - len(rows[0])) // 2, y + (height - len(rows)) // 2, colour)
