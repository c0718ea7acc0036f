"""What the windows are made of: bodies, glass, keys, lamps, tracks."""
import glyphs
import palette as p
from canvas import Canvas


def body(width, height):
    """An empty window without its title bar."""
    window = Canvas(width, height, p.EDGE)
    window.shade(1, 1, width - 2, height - 2, p.BODY_TOP, p.BODY_LOW)
    window.fill(1, 1, 1, height - 2, p.LIGHT, 0.55)
    window.fill(width - 2, 1, 1, height - 2, p.SHADE, 0.8)
    window.fill(1, height - 2, width - 2, 1, p.SHADE, 0.8)
    return window


def glass(canvas, x, y, width, height):
    """A sunken display; what is lit on it stands at least two pixels inside."""
    canvas.frame(x, y, width, height, p.EDGE)
    canvas.fill(x + 1, y + 1, width - 2, height - 2, p.GLASS)
    canvas.fill(x + 1, y + 1, width - 2, 1, p.EDGE, 0.5)
    canvas.fill(x + 1, y + height, width - 2, 1, p.LIGHT, 0.5)
    canvas.fill(x + width, y + 1, 1, height - 2, p.LIGHT, 0.25)


def key(canvas, x, y, width, height, down=False):
    top, low = (p.KEY_DOWN_TOP, p.KEY_DOWN_LOW) if down else (p.KEY_TOP, p.KEY_LOW)
    canvas.frame(x, y, width, height, p.EDGE)
    canvas.shade(x + 1, y + 1, width - 2, height - 2, top, low)
    if down:
        canvas.fill(x + 1, y + 1, width - 2, 1, p.EDGE, 0.6)
        canvas.fill(x + 1, y + 2, 1, height - 3, p.EDGE, 0.35)
    else:
        canvas.fill(x + 1, y + 1, width - 2, 1, p.KEY_LIT)
        canvas.fill(x + 1, y + 2, 1, height - 3, p.KEY_LIT, 0.35)
        canvas.fill(x + 1, y + height - 2, width - 2, 1, p.SHADE, 0.6)
    for column in (x, x + width - 1):
        for row in (y, y + height - 1):
            canvas.dot(column, row, p.EDGE, 0.5)


def key_ink(down):
    return p.ACCENT if down else p.INK


def window_button(canvas, name, x, y, down):
    """9 by 9, on a title bar."""
    key(canvas, x, y, 9, 9, down)
    glyphs.symbol(canvas, name, x, y, 9, 9, key_ink(down))


def lamp(canvas, x, y, width, height, lit):
    canvas.fill(x, y, width, height, p.ACCENT if lit else p.GLASS)
    if lit:
        canvas.fill(x, y, width, 1, p.ACCENT_LIT)
        canvas.fill(x - 1, y, 1, height, p.ACCENT, 0.25)
        canvas.fill(x + width, y, 1, height, p.ACCENT, 0.25)
    else:
        canvas.fill(x, y, width, height, p.LIGHT, 0.25)


def switch(canvas, label, x, y, width, height, lit, down):
    """A key that stays: a lamp and a label."""
    key(canvas, x, y, width, height, down)
    wide = 5 + glyphs.LABEL.width(label)
    left = x + (width - wide) // 2
    top = y + (height - 5) // 2
    lamp(canvas, left, top, 2, 5, lit)
    glyphs.LABEL.draw(canvas, label, left + 5, top, p.ACCENT if lit else p.INK)


def well(canvas, x, y, width, height):
    """What a thumb runs in."""
    canvas.frame(x, y, width, height, p.EDGE)
    canvas.fill(x + 1, y + 1, width - 2, height - 2, p.GLASS)
    canvas.fill(x + 1, y + height, width - 2, 1, p.LIGHT, 0.5)


def thumb(canvas, x, y, width, height, down, across):
    """`across`: its line stands across a horizontal track."""
    key(canvas, x, y, width, height, down)
    ink = p.ACCENT_LIT if down else p.ACCENT
    if across:
        middle = x + width // 2 - (1 if width % 2 == 0 else 0)
        canvas.fill(middle, y + 2, 2 if width % 2 == 0 else 1, height - 4, ink)
    else:
        canvas.fill(x + 2, y + height // 2, width - 4, 1, ink)
