"""The numerals of the time display: seven segments, the unlit ones faintly seen."""
import palette as p

WIDTH, HEIGHT = 9, 13  # with a column of spacing at the right

#    a
#  f   b
#    g
#  e   c
#    d
SEGMENTS = {  # rectangles: x, y, width, height
    "a": [(1, 0, 6, 1), (2, 1, 4, 1)],
    "b": [(6, 1, 2, 5)],
    "c": [(6, 7, 2, 5)],
    "d": [(2, 11, 4, 1), (1, 12, 6, 1)],
    "e": [(0, 7, 2, 5)],
    "f": [(0, 1, 2, 5)],
    "g": [(2, 5, 4, 1), (1, 6, 6, 1)],
}
LIT = {
    "0": "abcdef", "1": "bc", "2": "abdeg", "3": "abcdg", "4": "bcfg", "5": "acdfg",
    "6": "acdefg", "7": "abc", "8": "abcdefg", "9": "abcdfg", " ": "",
}


def draw(canvas, char, x, y):
    canvas.fill(x, y, WIDTH, HEIGHT, p.GLASS)
    for name, rectangles in SEGMENTS.items():
        for dx, dy, width, height in rectangles:
            colour = p.ACCENT if name in LIT[char] else p.GHOST
            canvas.fill(x + dx, y + dy, width, height, colour)


def draw_minus(canvas, x, y):
    """Without ghosts: the sign stands at a place where no numeral ever is."""
    canvas.fill(x, y, WIDTH, HEIGHT, p.GLASS)
    canvas.fill(x + 2, y + 5, 5, 2, p.ACCENT)
