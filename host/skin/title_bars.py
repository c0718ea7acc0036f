"""Title bars: their ground, grips, captions and buttons."""
import glyphs
import palette as p
import shapes
from canvas import Canvas

HEIGHT = 14
CLEAR = 7  # between a caption and its grips


def ground(canvas, x, y, width, active):
    """The bar alone; its top and bottom lines are outlines."""
    colours = (p.TITLE_TOP, p.TITLE_LOW) if active else (p.QUIET_TOP, p.QUIET_LOW)
    canvas.shade(x, y + 1, width, HEIGHT - 2, *colours)
    canvas.fill(x, y, width, 1, p.EDGE)
    canvas.fill(x, y + HEIGHT - 1, width, 1, p.EDGE)
    canvas.fill(x, y + 1, width, 1, p.KEY_LIT, 0.6 if active else 0.25)


def grip(canvas, left, right, active):
    """Two lines from `left` up to `right`."""
    colour, share = (p.ACCENT, 0.75) if active else (p.INK_FAINT, 0.45)
    for y in (5, 8):
        canvas.fill(left, y, right - left, 1, colour, share)
        canvas.fill(left, y + 1, right - left, 1, p.EDGE, 0.45)


def caption(canvas, text, left, right, active):
    """The text in the middle of the canvas, with grips to both ends."""
    wide = glyphs.CAPTION.width(text)
    start = (canvas.width - wide) // 2
    glyphs.CAPTION.draw(canvas, text, start, 5, p.SHADE)
    glyphs.CAPTION.draw(canvas, text, start, 4, p.INK if active else p.INK_DIM)
    grip(canvas, left, start - CLEAR, active)
    grip(canvas, start + wide + CLEAR, right, active)


def title_bar(text, width, active, buttons):
    """`buttons` are names and places; the menu's is at the left, the others at the right."""
    bar = Canvas(width, HEIGHT)
    ground(bar, 0, 0, width, active)
    for side in (0, width - 1):
        bar.fill(side, 0, 1, HEIGHT, p.EDGE)
    for name, x in buttons:
        shapes.window_button(bar, name, x, 3, False)
    left = 19 if "menu" in dict(buttons) else 10
    caption(bar, text, left, min(x for name, x in buttons if name != "menu") - 4, active)
    return bar


def button(name, down):
    """A window button on the ground of a title bar."""
    piece = Canvas(9, HEIGHT)
    ground(piece, 0, 0, 9, True)
    shapes.window_button(piece, name, 0, 3, down)
    return piece.cut(0, 3, 9, 9)
