"""The controls of the main window, drawn on the part of the window where they stand."""
import glyphs
import palette as p
import shapes
from canvas import Canvas

STEPS = 28


def transport_key(ground, name, width, down):
    """`width` may leave a column of the tray free at the right."""
    shapes.key(ground, 0, 0, width, ground.height, down)
    glyphs.symbol(ground, name, 0, 1 if down else 0, width, ground.height, shapes.key_ink(down))
    return ground


def switch(ground, label, lit, down, width=None):
    shapes.switch(ground, label, 0, 0, width or ground.width, ground.height, lit, down)
    return ground


def _bars(canvas, x, y, height, levels):
    """Small lamps two pixels wide; a level is 0 to 1."""
    for i, level in enumerate(levels):
        canvas.fill(x + 3 * i, y, 2, height, p.GHOST)
        canvas.fill(x + 3 * i, y, 2, height, p.ACCENT_DIM, level)
        canvas.fill(x + 3 * i, y, 2, 1, p.ACCENT, level)


def volume(ground, step):
    shapes.well(ground, 0, 2, 68, 8)
    count = 21
    full = step / (STEPS - 1) * count
    _bars(ground, 3, 4, 4, [min(1, max(0, full - i)) for i in range(count)])
    return ground


def balance(ground, step):
    """Lit from the middle to both sides; the thumb says which side is meant."""
    shapes.well(ground, 0, 2, 38, 8)
    half = 5
    full = step / (STEPS - 1) * half
    side = [min(1, max(0, full - i)) for i in range(half)]
    _bars(ground, 3, 4, 4, side[::-1] + [1] + side)
    return ground


def slider_thumb(down):
    piece = Canvas(14, 11, p.BODY)
    shapes.thumb(piece, 0, 0, 14, 11, down, across=True)
    return piece


def position_track(ground):
    shapes.well(ground, 0, 1, 248, 8)
    for x in range(6, 242, 8):
        ground.fill(x, 4, 4, 2, p.GHOST)
    return ground


def position_thumb(down):
    piece = Canvas(29, 10, p.BODY)
    shapes.thumb(piece, 0, 0, 29, 10, down, across=True)
    for x in (9, 11, 17, 19):
        piece.fill(x, 3, 1, 4, p.EDGE, 0.7)
        piece.fill(x + 1, 3, 1, 4, p.KEY_LIT, 0.4)
    return piece


def channel_lamp(label, width, lit):
    """A word behind the glass, 12 high."""
    piece = Canvas(width, 12, p.GLASS)
    glyphs.LABEL.centre(piece, label, 0, 2, width, p.ACCENT if lit else p.GLASS_INK)
    return piece


def state_lamp(name):
    piece = Canvas(9, 9, p.GLASS)
    if name:
        glyphs.symbol(piece, name, 0, 0, 9, 9, p.ACCENT)
    return piece


def work_lamp(colour):
    piece = Canvas(3, 9, p.GLASS)
    piece.fill(0, 0, 2, 9, colour, 0.5)
    piece.fill(0, 3, 2, 3, colour)
    return piece
