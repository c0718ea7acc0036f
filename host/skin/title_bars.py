"""titlebar.bmp: title bars of the main window, whole and rolled up, and their buttons."""
import main_window
import palette as p
import shapes
from canvas import Canvas

BUTTONS = (("menu", 6), ("minimise", 244), ("shade", 254), ("close", 264))  # x on a title bar


def title_bar(text, width, active, buttons=BUTTONS):
    bar = Canvas(width, shapes.TITLE_HEIGHT)
    shapes.title_ground(bar, 0, 0, width, active)
    shapes.title_ends(bar, 0, 0, width)
    left = 19 if buttons[0][0] == "menu" else 10
    shapes.caption(bar, text, left, 0, buttons[-1][1] - 24 - left if len(buttons) > 2 else
                   width - 2 * left, active)
    for name, x in buttons:
        shapes.window_button(bar, name, x, 3, False)
    return bar


def title_sheet():
    width = main_window.WIDTH
    sheet = Canvas(344, 87, p.BODY)
    for active, y, rolled_y in ((False, 15, 42), (True, 0, 29)):
        sheet.paste(title_bar("VELMORA", width, active), 27, y)
        rolled = BUTTONS[:2] + (("unshade", 254),) + BUTTONS[3:]
        sheet.paste(title_bar("VELMORA", width, active, rolled), 27, rolled_y)
    for down in (False, True):
        for name, x, y in (("menu", 0, 9 * down), ("minimise", 9, 9 * down),
                           ("close", 18, 9 * down), ("shade", 9 * down, 18),
                           ("unshade", 9 * down, 27)):
            shapes.window_button(sheet, name, x, y, down)
    for x in (304, 312):  # the strip left of the display, enabled and not: plain glass
        sheet.fill(x, 0, 8, 87, p.GLASS)
    return sheet
