"""text.bmp, numbers.bmp and nums_ex.bmp."""
import glyphs
import numerals
import palette as p
from canvas import Canvas

# A blank stands for itself; columns beyond a row's end are blank too.
ROWS = ('ABCDEFGHIJKLMNOPQRSTUVWXYZ"@   ', "0123456789….:()-'!_+\\/[]^&%,=$#", "ÅÖÄ?*")
CELL_WIDTH, CELL_HEIGHT, COLUMNS = 5, 6, 31


def text_sheet():
    sheet = Canvas(COLUMNS * CELL_WIDTH, len(ROWS) * CELL_HEIGHT, p.GLASS)
    for y, row in enumerate(ROWS):
        for x, char in enumerate(row):
            if char != " ":
                glyphs.draw(sheet, glyphs.TEXT[char], x * CELL_WIDTH, y * CELL_HEIGHT, p.ACCENT)
    return sheet


def number_sheet(with_minus):
    sheet = Canvas(108 if with_minus else 99, numerals.HEIGHT, p.GLASS)
    for i, char in enumerate("0123456789 "):
        numerals.draw(sheet, char, i * numerals.WIDTH, 0)
    if with_minus:
        numerals.draw_minus(sheet, 99, 0)
    return sheet
