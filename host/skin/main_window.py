"""main.bmp, and the sheets of the main window's controls."""
import glyphs
import main_pieces as pieces
import numerals
import palette as p
import shapes
import title_bars
from canvas import Canvas

NAME = "VELMORA"
WIDTH, HEIGHT = 275, 116
BUTTONS = (("menu", 6), ("minimise", 244), ("shade", 254), ("close", 264))
ROLLED_BUTTONS = (("menu", 6), ("minimise", 244), ("unshade", 254), ("close", 264))
TRANSPORT = [  # name, x, y, width and height on the window, width of the key
    ("previous", 16, 88, 23, 18, 22), ("play", 39, 88, 23, 18, 22), ("pause", 62, 88, 23, 18, 22),
    ("stop", 85, 88, 23, 18, 22), ("next", 108, 88, 22, 18, 22), ("eject", 136, 89, 22, 16, 22),
]


def ground():
    """The window without controls and without what is lit."""
    window = shapes.body(WIDTH, HEIGHT)
    _left_glass(window)
    _right_glass(window)
    shapes.well(window, 15, 87, 116, 20)
    for below, colour in ((1, p.EDGE), (0, p.INK_FAINT)):
        glyphs.symbol(window, "mark", 247, 89 + below, 15, 15, colour)
    return window


def _left_glass(window):
    shapes.glass(window, 4, 20, 100, 47)
    for x in (48, 60, 78, 90):
        numerals.draw(window, " ", x, 26)
    for y in (29, 35):
        window.fill(72, y, 2, 2, p.ACCENT_DIM)
    for y in range(43, 60, 4):  # the scale of the visualisation
        window.fill(19, y, 3 if (y - 43) % 8 == 0 else 2, 1, p.GLASS_LINE)
    window.fill(24, 60, 76, 1, p.GLASS_LINE)


def _right_glass(window):
    shapes.glass(window, 106, 20, 165, 35)
    window.fill(110, 38, 157, 1, p.GLASS_LINE)
    for text, x in (("kbps", 128), ("kHz", 168)):
        glyphs.UNIT.draw(window, text, x, 42, p.INK_FAINT)


def title_sheet():
    """Title bars with and without the focus, the same of the rolled-up window, the buttons."""
    sheet = Canvas(344, 87, p.BODY)
    for active, y, rolled_y in ((False, 15, 42), (True, 0, 29)):
        sheet.paste(title_bars.title_bar(NAME, WIDTH, active, BUTTONS), 27, y)
        sheet.paste(title_bars.title_bar(NAME, WIDTH, active, ROLLED_BUTTONS), 27, rolled_y)
    for down in (False, True):
        for name, x, y in (("menu", 0, 9 * down), ("minimise", 9, 9 * down),
                           ("close", 18, 9 * down), ("shade", 9 * down, 18),
                           ("unshade", 9 * down, 27)):
            sheet.paste(title_bars.button(name, down), x, y)
    sheet.fill(304, 0, 16, 87, p.GLASS)  # the strip left of the display, empty in both states
    return sheet


def transport_sheet():
    empty, sheet = ground(), Canvas(136, 36, p.BODY)
    for name, x, y, width, height, key in TRANSPORT:
        for down in (False, True):
            piece = pieces.transport_key(empty.cut(x, y, width, height), name, key, down)
            sheet.paste(piece, x - 16 if name != "eject" else 114, height if down else 0)
    return sheet


def switch_sheet():
    empty, sheet = ground(), Canvas(92, 85, p.BODY)
    for lit in (False, True):
        for down in (False, True):
            y = 30 * lit + 15 * down
            sheet.paste(pieces.switch(empty.cut(210, 89, 28, 15), "REP", lit, down), 0, y)
            sheet.paste(pieces.switch(empty.cut(164, 89, 47, 15), "SHUFFLE", lit, down, 46), 28, y)
            x, y = 46 * down, 61 + 12 * lit
            sheet.paste(pieces.switch(empty.cut(219, 58, 23, 12), "EQ", lit, down, 22), x, y)
            sheet.paste(pieces.switch(empty.cut(242, 58, 23, 12), "PL", lit, down), x + 23, y)
    return sheet


def position_sheet():
    sheet = Canvas(307, 10, p.BODY)
    sheet.paste(pieces.position_track(ground().cut(16, 72, 248, 10)), 0, 0)
    for down in (False, True):
        sheet.paste(pieces.position_thumb(down), 278 if down else 248, 0)
    return sheet


def _level_sheet(x, window_x, width, draw):
    """28 tracks and the two thumbs."""
    empty, sheet = ground(), Canvas(68, 433, p.BODY)
    for step in range(pieces.STEPS):
        sheet.paste(draw(empty.cut(window_x, 57, width, 13), step), x, 15 * step)
    for down in (False, True):
        sheet.paste(pieces.slider_thumb(down), 0 if down else 15, 422)
    return sheet


def volume_sheet():
    return _level_sheet(0, 107, 68, pieces.volume)


def balance_sheet():
    return _level_sheet(9, 177, 38, pieces.balance)


def channel_sheet():
    sheet = Canvas(58, 24, p.GLASS)
    for lit in (True, False):
        sheet.paste(pieces.channel_lamp("STEREO", 29, lit), 0, 0 if lit else 12)
        sheet.paste(pieces.channel_lamp("MONO", 27, lit), 29, 0 if lit else 12)
    return sheet


def state_sheet():
    sheet = Canvas(42, 9, p.GLASS)
    for i, name in enumerate(("playing", "paused", "stopped", None)):
        sheet.paste(pieces.state_lamp(name), 9 * i, 0)
    sheet.paste(pieces.work_lamp(p.RED), 36, 0)
    sheet.paste(pieces.work_lamp(p.GREEN), 39, 0)
    return sheet


def main_sheet():
    """The window is whole at rest: the controls that the player draws over are on it."""
    window = ground()
    for draw, pieces_at_rest in AT_REST.items():
        sheet = draw()
        for x, y, width, height, at_x, at_y in pieces_at_rest:
            window.paste(sheet.cut(x, y, width, height), at_x, at_y)
    return window


AT_REST = {  # x, y, width and height on the sheet; place on the window
    title_sheet: [(27, 0, 275, 14, 0, 0)],
    transport_sheet: [(0, 0, 114, 18, 16, 88), (114, 0, 22, 16, 136, 89)],
    switch_sheet: [(28, 0, 47, 15, 164, 89), (0, 0, 28, 15, 210, 89), (0, 61, 46, 12, 219, 58)],
    position_sheet: [(0, 0, 248, 10, 16, 72)],
    volume_sheet: [(0, 0, 68, 13, 107, 57)],
    balance_sheet: [(9, 0, 38, 13, 177, 57)],
    channel_sheet: [(0, 12, 29, 12, 239, 41), (29, 12, 27, 12, 212, 41)],
}
