"""A rectangle of pixels to draw on, and its form as an uncompressed 24-bit bitmap file."""
import struct

from palette import mix


class Canvas:
    def __init__(self, width, height, colour=(0, 0, 0)):
        self.width, self.height = width, height
        self.rows = [[colour] * width for _ in range(height)]

    def dot(self, x, y, colour, share=1.0):
        if 0 <= x < self.width and 0 <= y < self.height:
            self.rows[y][x] = mix(self.rows[y][x], colour, share)

    def fill(self, x, y, width, height, colour, share=1.0):
        for row in range(y, y + height):
            for column in range(x, x + width):
                self.dot(column, row, colour, share)

    def shade(self, x, y, width, height, top, bottom):
        """Fills with a gradient from `top` down to `bottom`."""
        for row in range(height):
            colour = mix(top, bottom, row / max(1, height - 1))
            self.fill(x, y + row, width, 1, colour)

    def frame(self, x, y, width, height, colour, share=1.0):
        """The outline of a rectangle without its four corners, which so look round."""
        self.fill(x + 1, y, width - 2, 1, colour, share)
        self.fill(x + 1, y + height - 1, width - 2, 1, colour, share)
        self.fill(x, y + 1, 1, height - 2, colour, share)
        self.fill(x + width - 1, y + 1, 1, height - 2, colour, share)

    def paste(self, piece, x, y):
        for row in range(piece.height):
            for column in range(piece.width):
                self.dot(x + column, y + row, piece.rows[row][column])

    def cut(self, x, y, width, height):
        piece = Canvas(width, height)
        for row in range(height):
            piece.rows[row] = self.rows[y + row][x:x + width]
        return piece

    def bitmap(self):
        """Rows bottom up, blue first, padded to four bytes."""
        padding = bytes(-3 * self.width % 4)
        pixels = b"".join(
            b"".join(bytes((blue, green, red)) for red, green, blue in row) + padding
            for row in reversed(self.rows))
        offset = 14 + 40
        return (struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) +
                struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 24, 0, len(pixels),
                            0, 0, 0, 0) + pixels)
