"""pledit.bmp: corners, borders and tiles of the playlist window, and its menus."""
import glyphs
import palette as p
import shapes
from canvas import Canvas

TOP, BOTTOM = 20, 38  # heights of the window's top and bottom
KEY_WIDTH, KEY_HEIGHT, KEY_Y = 22, 18, 8
MENUS = (  # x of the pieces, labels from the top
    (0, ("URL", "DIR", "FILE")), (54, ("ALL", "CROP", "SEL", "DUP")), (104, ("INV", "NONE", "ALL")),
    (154, ("SORT", "INFO", "MORE")), (204, ("NEW", "SAVE", "LOAD")))


def top_row(width):
    """One strip of the window's top; any part of it fits beside any other."""
    strip = Canvas(width, TOP, p.BODY)
    strip.fill(0, TOP - 2, width, 1, p.SHADE, 0.8)
    strip.fill(0, TOP - 1, width, 1, p.EDGE)
    return strip


def _top_pieces(active):
    corner, title, tile, right = (top_row(width) for width in (25, 100, 25, 25))
    for strip in (corner, title, tile, right):
        shapes.title_ground(strip, 0, 0, strip.width, active)
    shapes.grip(corner, 8, 0, 17, active)
    shapes.caption(title, "PLAYLIST", 0, 0, 100, active)
    shapes.grip(tile, 0, 0, 25, active)
    shapes.window_button(right, "shade", 4, 3, False)
    shapes.window_button(right, "close", 14, 3, False)
    for strip, side, inner in ((corner, 0, 1), (right, 24, 23)):
        strip.fill(side, 0, 1, TOP, p.EDGE)
        strip.fill(inner, 14, 1, TOP - 14, p.LIGHT if side == 0 else p.SHADE, 0.55)
    corner.fill(12, TOP - 2, 13, 1, p.SHADE, 0.8)
    return corner, title, tile, right


def left_border():
    tile = Canvas(12, 29, p.BODY)
    tile.fill(0, 0, 1, 29, p.EDGE)
    tile.fill(1, 0, 1, 29, p.LIGHT, 0.55)
    tile.fill(10, 0, 1, 29, p.SHADE, 0.8)
    tile.fill(11, 0, 1, 29, p.EDGE)
    return tile


def right_border():
    tile = Canvas(20, 29, p.BODY)
    tile.fill(0, 0, 1, 29, p.EDGE)
    tile.fill(1, 0, 1, 29, p.LIGHT, 0.35)
    tile.fill(4, 0, 10, 29, p.EDGE)
    tile.fill(5, 0, 8, 29, p.GLASS)
    tile.fill(14, 0, 1, 29, p.LIGHT, 0.35)
    tile.fill(18, 0, 1, 29, p.SHADE, 0.8)
    tile.fill(19, 0, 1, 29, p.EDGE)
    return tile


def bottom_strip(width):
    strip = Canvas(width, BOTTOM)
    strip.shade(0, 0, width, BOTTOM, p.BODY, p.BODY_LOW)
    strip.fill(0, 0, width, 1, p.EDGE)
    strip.fill(0, 1, width, 1, p.LIGHT, 0.5)
    strip.fill(0, BOTTOM - 2, width, 1, p.SHADE, 0.8)
    strip.fill(0, BOTTOM - 1, width, 1, p.EDGE)
    return strip


def menu_key(canvas, label, x, y, down=False):
    shapes.key(canvas, x, y, KEY_WIDTH, KEY_HEIGHT, down)
    glyphs.LABEL.centre(canvas, label, x, y + 6, KEY_WIDTH, shapes.key_ink(down))


def bottom_left():
    corner = bottom_strip(125)
    corner.fill(0, 0, 1, BOTTOM, p.EDGE)
    corner.fill(1, 0, 1, BOTTOM - 2, p.LIGHT, 0.55)
    for i, label in enumerate(("ADD", "REM", "SEL", "OPT")):
        menu_key(corner, label, 14 + 29 * i, KEY_Y)
    return corner


def bottom_right():
    corner = bottom_strip(150)
    corner.fill(149, 0, 1, BOTTOM, p.EDGE)
    corner.fill(148, 1, 1, BOTTOM - 2, p.SHADE, 0.8)
    corner.fill(4, 0, 10, 1, p.EDGE)
    corner.fill(130, 0, 20, 1, p.BODY)
    corner.fill(149, 0, 1, 1, p.EDGE)
    corner.fill(134, 0, 10, 1, p.EDGE)
    shapes.glass(corner, 3, KEY_Y, 94, KEY_HEIGHT)
    menu_key(corner, "LIST", 104, KEY_Y)
    for step in range(4):  # the corner that sizes the window
        for i in range(step + 1):
            x, y = 145 - 3 * i, 26 + 3 * step - 3 * (step - i) + 3 * (3 - step)
            corner.fill(x, y, 2, 2, p.EDGE)
            corner.dot(x, y, p.KEY_LIT)
    return corner


def scroll_thumb(down):
    thumb = Canvas(8, 18, p.GLASS)
    shapes.thumb(thumb, 0, 0, 8, 18, down, across=False)
    for y in (6, 12):
        thumb.fill(2, y, 4, 1, p.EDGE, 0.6)
    return thumb


def _rolled(sheet):
    """The title bar of the rolled-up window: left end, tile, right end with and without the focus."""
    ends = {"left": (72, 42, 25), "tile": (72, 57, 25), "active": (99, 42, 50), "quiet": (99, 57, 50)}
    for name, (x, y, width) in ends.items():
        shapes.title_ground(sheet, x, y, width, name != "quiet")
        if name == "left":
            sheet.fill(x, y, 1, 14, p.EDGE)
        elif name != "tile":
            sheet.fill(x + width - 1, y, 1, 14, p.EDGE)
            shapes.window_button(sheet, "unshade", x + 29, y + 3, False)
            shapes.window_button(sheet, "close", x + 39, y + 3, False)


def playlist_sheet():
    sheet = Canvas(280, 186, p.BODY)
    for active, y in ((True, 0), (False, 21)):
        for piece, x in zip(_top_pieces(active), (0, 26, 127, 153)):
            sheet.paste(piece, x, y)
    sheet.paste(left_border(), 0, 42)
    sheet.paste(right_border(), 31, 42)
    shapes.window_button(sheet, "close", 52, 42, True)
    shapes.window_button(sheet, "shade", 62, 42, True)
    for down in (False, True):
        sheet.paste(scroll_thumb(down), 61 if down else 52, 53)
    sheet.paste(bottom_left(), 0, 72)
    sheet.paste(bottom_right(), 126, 72)
    sheet.paste(bottom_strip(25), 179, 0)
    sheet.paste(bottom_strip(75), 205, 0)
    _rolled(sheet)
    for x, labels in MENUS:
        for i, label in enumerate(labels):
            for down in (False, True):
                menu_key(sheet, label, x + 23 * down, 111 + 19 * i, down)
        sheet.fill(x + 46 + 2, 111, 3, 19 * len(labels) - 1, p.EDGE)
        sheet.fill(x + 46 + 3, 111, 1, 19 * len(labels) - 1, p.ACCENT_DIM)
    return sheet
