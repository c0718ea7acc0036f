"""eqmain.bmp and eq_ex.bmp: the equalizer's window, whole and rolled up."""
import glyphs
import palette as p
import shapes
import title_bars
from canvas import Canvas
from palette import mix

WIDTH, HEIGHT = 275, 116
BANDS = ("60", "170", "310", "600", "1K", "3K", "6K", "12K", "14K", "16K")
SLIDERS = [21] + [78 + 18 * i for i in range(10)]  # x on the window; the first is the preamplifier
TOP, SLIDER_WIDTH, SLIDER_HEIGHT = 38, 14, 63
STEPS = 28
SWITCHES = (("ON", 26, 14, 10), ("BASS", 32, 40, 36))  # width, x on the window, x of the first piece


def ground():
    window = shapes.body(WIDTH, HEIGHT)
    shapes.glass(window, 84, 15, 117, 22)
    _scale(window)
    glyphs.LABEL.centre(window, "PREAMP", 14, 105, 28, p.INK_DIM)
    for label, x in zip(BANDS, SLIDERS[1:]):
        glyphs.LABEL.centre(window, label, x - 2, 105, 18, p.INK_DIM)
    return window


def _scale(window):
    """Boost above, cut below, nothing in the middle; the sliders are drawn over the lines."""
    for label, y in (("+", 43), ("0", 69), ("-", 95)):
        share = 0.9 if label == "0" else 0.45
        window.fill(38, y, 11, 1, p.INK_FAINT, share)
        window.fill(61, y, 15, 1, p.INK_FAINT, share)
        for x in SLIDERS[1:-1]:
            window.fill(x + SLIDER_WIDTH + 1, y, 2, 1, p.INK_FAINT, share)
        glyphs.LABEL.centre(window, label, 49, y - 2, 12, p.INK_DIM)


def slider(piece, step):
    """Lit from the middle to the step."""
    shapes.well(piece, 4, 0, 6, SLIDER_HEIGHT - 1)
    edge = 5 + round((STEPS - 1 - step) * 52 / (STEPS - 1))  # where the thumb's middle is
    for y in range(3, SLIDER_HEIGHT - 3, 2):
        lit = min(edge, 31) <= y <= max(edge, 31)
        piece.fill(6, y, 2, 1, p.ACCENT if lit else p.GHOST)
    return piece


def _switch(window, label, x, width, lit, down):
    piece = window.cut(x, 18, width, 12)
    shapes.switch(piece, label, 0, 0, width if label == "BASS" else width - 1, 12, lit, down)
    return piece


def _presets(window, down):
    piece = window.cut(217, 18, 44, 12)
    shapes.key(piece, 0, 0, 44, 12, down)
    glyphs.LABEL.centre(piece, "PRESETS", 0, 3, 44, shapes.key_ink(down))
    return piece


def _graph(sheet):
    sheet.fill(0, 294, 113, 19, p.GLASS)
    for x in range(2, 113, 12):  # a line a band
        for y in range(294, 313, 2):
            sheet.dot(x, y, p.GHOST)
    sheet.fill(0, 303, 113, 1, p.GLASS_LINE)
    for y in range(19):
        far = abs(y - 9) / 9
        sheet.dot(115, 294 + y, mix(p.ACCENT_DIM, p.ACCENT_LIT, far))
    sheet.fill(0, 314, 113, 1, p.INK_FAINT)


def equalizer_sheet():
    window = ground()
    sheet = Canvas(WIDTH, 315, p.BODY)
    for step in range(STEPS):
        piece = slider(window.cut(SLIDERS[1], TOP, SLIDER_WIDTH, SLIDER_HEIGHT), step)
        sheet.paste(piece, 13 + 15 * (step % 14), 164 if step < 14 else 229)
    for down in (False, True):
        thumb = Canvas(11, 11, p.BODY)
        shapes.thumb(thumb, 0, 0, 11, 11, down, across=False)
        sheet.paste(thumb, 0, 176 if down else 164)
        sheet.paste(_presets(window, down), 224, 176 if down else 164)
        sheet.paste(title_bars.button("close", down), 0, 125 if down else 116)
        for label, width, x, first in SWITCHES:
            for lit in (False, True):
                piece = _switch(window, label, x, width, lit, down)
                sheet.paste(piece, first + 59 * lit + 118 * down, 119)
    for active, y in ((True, 134), (False, 149)):
        sheet.paste(title_bars.title_bar("EQUALIZER", WIDTH, active, (("close", 264),)), 0, y)
    _graph(sheet)
    sheet.paste(_whole(window, sheet), 0, 0)
    return sheet


def _whole(window, sheet):
    """The window at rest, out of the sheet's pieces."""
    whole = window.cut(0, 0, WIDTH, HEIGHT)
    whole.paste(sheet.cut(0, 134, WIDTH, title_bars.HEIGHT), 0, 0)
    whole.paste(sheet.cut(10, 119, 26, 12), 14, 18)
    whole.paste(sheet.cut(36, 119, 32, 12), 40, 18)
    whole.paste(sheet.cut(224, 164, 44, 12), 217, 18)
    whole.paste(sheet.cut(0, 294, 113, 19), 86, 17)
    for x in SLIDERS:
        whole.paste(sheet.cut(13, 229, SLIDER_WIDTH, SLIDER_HEIGHT), x, TOP)
    return whole


def rolled_sheet():
    sheet = Canvas(WIDTH, 82, p.BODY)
    for active, y in ((True, 0), (False, 15)):
        buttons = (("unshade", 254), ("close", 264))
        sheet.paste(title_bars.title_bar("EQUALIZER", WIDTH, active, buttons), 0, y)
    for down in (False, True):
        for name, x in (("unshade", 1), ("close", 11)):
            sheet.paste(title_bars.button(name, down), x, 47 if down else 38)
    return sheet
