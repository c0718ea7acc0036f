"""pledit.bmp: corners, borders and tiles of the playlist window, and its menus."""
import glyphs
import palette as p
import shapes
import title_bars
from canvas import Canvas

TOP, BOTTOM, LEFT, RIGHT = 20, 38, 12, 20  # what the window's borders take
GROOVE, GROOVE_WIDTH = 4, 10  # of the scrollbar in the right border, with its outlines
KEY_WIDTH, KEY_HEIGHT, KEY_Y = 22, 18, 8
MENUS = (  # x of the pieces, labels from the top
    (0, ("URL", "DIR", "FILE")), (54, ("ALL", "CROP", "SEL", "DUP")), (104, ("INV", "NONE", "ALL")),
    (154, ("SORT", "INFO", "ETC")), (204, ("NEW", "SAVE", "LOAD")))


def top_strip(width, active):
    """The title bar and the upper edge of the list."""
    strip = Canvas(width, TOP, p.BODY)
    title_bars.ground(strip, 0, 0, width, active)
    strip.fill(0, TOP - 2, width, 1, p.SHADE, 0.8)
    strip.fill(0, TOP - 1, width, 1, p.EDGE)
    return strip


def top_left(active):
    corner = top_strip(25, active)
    title_bars.grip(corner, 8, 25, active)
    corner.paste(left_border().cut(0, 0, LEFT - 2, TOP - title_bars.HEIGHT), 0, title_bars.HEIGHT)
    corner.fill(0, 0, 1, title_bars.HEIGHT, p.EDGE)
    return corner


def top_right(active):
    corner = top_strip(25, active)
    shapes.window_button(corner, "shade", 4, 3, False)
    shapes.window_button(corner, "close", 14, 3, False)
    border = right_border().cut(0, 0, RIGHT, TOP - title_bars.HEIGHT)
    border.fill(0, 0, GROOVE + GROOVE_WIDTH + 1, border.height, p.BODY)
    border.fill(GROOVE, border.height - 1, GROOVE_WIDTH, 1, p.EDGE)
    border.fill(0, border.height - 1, 1, 1, p.EDGE)
    corner.paste(border, 25 - RIGHT, title_bars.HEIGHT)
    corner.fill(24, 0, 1, title_bars.HEIGHT, p.EDGE)
    return corner


def title(active):
    piece = top_strip(100, active)
    title_bars.caption(piece, "PLAYLIST", 0, 100, active)
    return piece


def top_tile(active):
    tile = top_strip(25, active)
    title_bars.grip(tile, 0, 25, active)
    return tile


def left_border():
    tile = Canvas(LEFT, 29, p.BODY)
    tile.fill(0, 0, 1, 29, p.EDGE)
    tile.fill(1, 0, 1, 29, p.LIGHT, 0.55)
    tile.fill(LEFT - 2, 0, 1, 29, p.SHADE, 0.8)
    tile.fill(LEFT - 1, 0, 1, 29, p.EDGE)
    return tile


def right_border():
    tile = Canvas(RIGHT, 29, p.BODY)
    tile.fill(0, 0, 1, 29, p.EDGE)
    tile.fill(1, 0, 1, 29, p.LIGHT, 0.35)
    tile.fill(GROOVE, 0, GROOVE_WIDTH, 29, p.EDGE)
    tile.fill(GROOVE + 1, 0, GROOVE_WIDTH - 2, 29, p.GLASS)
    tile.fill(GROOVE + GROOVE_WIDTH, 0, 1, 29, p.LIGHT, 0.35)
    tile.fill(RIGHT - 2, 0, 1, 29, p.SHADE, 0.8)
    tile.fill(RIGHT - 1, 0, 1, 29, p.EDGE)
    return tile


def bottom_ground(width):
    strip = Canvas(width, BOTTOM)
    strip.shade(0, 0, width, BOTTOM, p.BODY, p.BODY_LOW)
    strip.fill(0, BOTTOM - 2, width, 1, p.SHADE, 0.8)
    strip.fill(0, BOTTOM - 1, width, 1, p.EDGE)
    return strip


def lower_edge(strip, x, width):
    """Where the list or the groove above ends."""
    strip.fill(x, 0, width, 1, p.EDGE)
    strip.fill(x, 1, width, 1, p.LIGHT, 0.5)


def bottom_tile(width):
    strip = bottom_ground(width)
    lower_edge(strip, 0, width)
    return strip


def menu_key(canvas, label, x, y, down=False):
    shapes.key(canvas, x, y, KEY_WIDTH, KEY_HEIGHT, down)
    glyphs.LABEL.centre(canvas, label, x + 1, y + 6, KEY_WIDTH - 1, shapes.key_ink(down))


def bottom_left():
    corner = bottom_ground(125)
    lower_edge(corner, LEFT - 1, 125 - LEFT + 1)
    corner.fill(0, 0, 1, BOTTOM, p.EDGE)
    corner.fill(1, 0, 1, BOTTOM - 2, p.LIGHT, 0.55)
    for i, label in enumerate(("ADD", "REM", "SEL", "OPT")):
        menu_key(corner, label, 14 + 29 * i, KEY_Y)
    return corner


def bottom_right():
    corner = bottom_ground(150)
    border = 150 - RIGHT
    lower_edge(corner, 0, border + 1)
    lower_edge(corner, border + GROOVE, GROOVE_WIDTH)
    corner.fill(149, 0, 1, BOTTOM, p.EDGE)
    corner.fill(148, 0, 1, BOTTOM - 1, p.SHADE, 0.8)
    shapes.glass(corner, 3, KEY_Y, 94, 24)
    menu_key(corner, "LIST", 104, KEY_Y)
    for row in range(4):  # the corner that sizes the window: a triangle of studs
        for column in range(3 - row, 4):
            x, y = 136 + 3 * column, 25 + 3 * row
            corner.fill(x, y, 2, 2, p.EDGE)
            corner.dot(x, y, p.KEY_LIT)
    return corner


def scroll_thumb(down):
    thumb = Canvas(8, 18, p.GLASS)
    shapes.thumb(thumb, 0, 0, 8, 18, down, across=False)
    for y in (6, 12):
        thumb.fill(2, y, 4, 1, p.EDGE, 0.6)
    return thumb


def rolled_pieces():
    """The rolled-up window: left end, tile, and the right end with and without the focus."""
    for x, y, width, active in ((72, 42, 25, True), (72, 57, 25, True), (99, 42, 50, True),
                                (99, 57, 50, False)):
        piece = Canvas(width, title_bars.HEIGHT)
        title_bars.ground(piece, 0, 0, width, active)
        if width == 50:
            piece.fill(49, 0, 1, title_bars.HEIGHT, p.EDGE)
            shapes.window_button(piece, "unshade", 29, 3, False)
            shapes.window_button(piece, "close", 39, 3, False)
        elif y == 42:
            piece.fill(0, 0, 1, title_bars.HEIGHT, p.EDGE)
        yield piece, x, y


def draw_menus(sheet):
    for x, labels in MENUS:
        for i, label in enumerate(labels):
            for down in (False, True):
                menu_key(sheet, label, x + 23 * down, 111 + 19 * i, down)
        height = 19 * len(labels) - 1
        sheet.fill(x + 48, 111, 3, height, p.EDGE)  # stands beside the open menu
        sheet.fill(x + 49, 111, 1, height, p.ACCENT_DIM)


def playlist_sheet():
    sheet = Canvas(280, 186, p.BODY)
    for active, y in ((True, 0), (False, 21)):
        for x, draw in ((0, top_left), (26, title), (127, top_tile), (153, top_right)):
            sheet.paste(draw(active), x, y)
    sheet.paste(left_border(), 0, 42)
    sheet.paste(right_border(), 31, 42)
    for name, x in (("close", 52), ("shade", 62)):
        sheet.paste(title_bars.button(name, True), x, 42)
    for down in (False, True):
        sheet.paste(scroll_thumb(down), 61 if down else 52, 53)
    sheet.paste(bottom_left(), 0, 72)
    sheet.paste(bottom_right(), 126, 72)
    for x, width in ((179, 25), (205, 75)):
        sheet.paste(bottom_tile(width), x, 0)
    for piece, x, y in rolled_pieces():
        sheet.paste(piece, x, y)
    draw_menus(sheet)
    return sheet
