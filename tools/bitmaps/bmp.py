"""BMP files of 16 colours. A picture is a cell of 16x16 letters; a bitmap is a row of cells."""

import struct


def rows_of(cells):
    for cell in cells:
        assert len(cell) == 16 and all(len(row) == 16 for row in cell), "a cell has 16 rows of 16 letters"
    return ["".join(cell[y] for cell in cells) for y in range(16)]


def bmp(cells, palette, number_of):
    """The bytes of a file: file header, info header, palette, rows from the bottom up, two pixels a byte.

    number_of(letter, x, y) is a pixel's place in the palette.
    """
    assert len(palette) == 16
    rows = rows_of(cells)
    width, height = len(rows[0]), len(rows)
    pixels = b""
    for y in reversed(range(height)):
        numbers = [number_of(letter, x, y) for x, letter in enumerate(rows[y])]
        packed = bytes(left << 4 | right for left, right in zip(numbers[::2], numbers[1::2]))
        pixels += packed + bytes(-len(packed) % 4)
    colors = b"".join(struct.pack("<I", color) for color in palette)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 4, 0, len(pixels), 0, 0, len(palette), 0)
    start = 14 + len(info) + len(colors)
    header = struct.pack("<2sIHHI", b"BM", start + len(pixels), 0, 0, start)
    return header + info + colors + pixels
