"""The plug-in's bitmaps: check boxes, the tree's own pictures, the swatches' frame. They have the standard palette."""

from .bmp import bmp

PALETTE = [
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0x808080,
    0xC0C0C0, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
]

# '%' is yellow and light grey in turns, the folders' filling.
COLORS = {".": 0xFFFFFF, "k": 0x000000, "g": 0x808080, "l": 0xC0C0C0, "y": 0xFFFF00, "r": 0xFF0000}
FILLING = "yl"

BLANK = ["................"] * 16

# The tick marks are 't'; each state colours them.
CHECK_BOX = [
    "................",
    "................",
    "................",
    "...ggggggggggg..",
    "...g.........g..",
    "...g.......t.g..",
    "...g......tt.g..",
    "...g.t...ttt.g..",
    "...g.tt.ttt..g..",
    "...g.ttttt...g..",
    "...g..ttt....g..",
    "...g...t.....g..",
    "...g.........g..",
    "...ggggggggggg..",
    "................",
    "................",
]

DROP = [
    "................",
    "................",
    ".kkkkkkkkkkkkk..",
    ".k...........k..",
    ".k.....r.....k..",
    ".k.....r.....k..",
    ".k....rrr....k..",
    ".k....rrr....k..",
    ".k...rrrrr...k..",
    ".k...rrrrr...k..",
    ".k...rrrrr...k..",
    ".k....rrr....k..",
    ".k...........k..",
    ".kkkkkkkkkkkkk..",
    "................",
    "................",
]

CLOSED_FOLDER = [
    "................",
    "................",
    "..ggggg.........",
    ".g%%%%%g........",
    "g%%%%%%%gggggg..",
    "gyyyyyyyyyyyyyg.",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gy%%%%%%%%%%%%gk",
    "gggggggggggggggk",
    ".kkkkkkkkkkkkkkk",
    "................",
]

OPEN_FOLDER = [
    "................",
    "................",
    "..ggggg.........",
    ".g%%%%%g........",
    "g%%%%%%%ggggg...",
    "gyyyyyyyyyyyyg..",
    "gy%%%%%%%%%%%g..",
    "gy%%gggggggggggg",
    "gy%%gyyyyyyyyyyg",
    "gy%gy%%%%%%%%%gk",
    "gy%gy%%%%%%%%%gk",
    "gygy%%%%%%%%%gk.",
    "gygy%%%%%%%%%gk.",
    "gggggggggggggk..",
    ".kkkkkkkkkkkkk..",
    "................",
]

SWATCH_FRAME = [
    "................",
    "................",
    "................",
    "..kkkkkkkkkkkk..",
    *["..k..........k.."] * 8,
    "..kkkkkkkkkkkk..",
    "................",
    "................",
    "................",
]


def with_tick(letter):
    return [row.replace("t", letter) for row in CHECK_BOX]


EMPTY_FRAME = [row.replace("r", ".") for row in DROP]

UNCHECKED = with_tick(".")
CHECKED = with_tick("k")
PARTLY_CHECKED = with_tick("g")

# File name: the cells from left to right. Of each pair the second is the disabled form.
CELLS = {
    "check_boxes.bmp": [BLANK, UNCHECKED, UNCHECKED, CHECKED, CHECKED, PARTLY_CHECKED, PARTLY_CHECKED],
    "tree_pictures.bmp": [DROP, EMPTY_FRAME, CLOSED_FOLDER, CLOSED_FOLDER, OPEN_FOLDER, OPEN_FOLDER],
    "swatch_frame.bmp": [SWATCH_FRAME],
    "blank.bmp": [BLANK],
}


def palette_number(letter, x, y):
    if letter == "%":
        letter = FILLING[(x + y) % 2]
    return PALETTE.index(COLORS[letter])


def files():
    return {name: bmp(cells, PALETTE, palette_number) for name, cells in CELLS.items()}
