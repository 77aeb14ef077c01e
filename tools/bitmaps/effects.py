"""The icons of the effects: what becomes of a square and a disc, glasses, and what is done to one shape."""

from .icon import BLUE, YELLOW, Icon
from .regions import border, oval, polygon, rectangle, rounded

SQUARE = rectangle(1, 1, 10, 10)
DISC = oval(4, 4, 14, 14)


# The result is yellow; of the two shapes a grey trace remains.
def combination(result):
    return Icon().paint(border(SQUARE) | border(DISC), "g").solid(result, YELLOW)


def weld():
    return combination(SQUARE | DISC)


def cut_out():
    return combination(SQUARE - DISC)


def common():
    return combination(SQUARE & DISC)


def exclusive():
    icon = combination(SQUARE | DISC)
    both = SQUARE & DISC
    return icon.paint(both, ".").paint(border(both), "k")


def combine_mask():
    icon = Icon().paint(border(SQUARE), "g").flat(DISC, "o")
    return icon.paint((SQUARE & DISC) - border(DISC), "y").paint(border(SQUARE) & (DISC - border(DISC)), "w")


GLASS = oval(1, 1, 11, 11)
VIEW = GLASS - border(GLASS)


# A magnifying glass; what distinguishes the lenses is the view through it.
def lens(color):
    icon = Icon()
    icon.flat(polygon((10, 9), (14, 13), (13, 14), (9, 10)), "w").paint({(11, 11), (12, 12)}, "y")
    return icon.flat(GLASS, color)


def trans_lens():
    icon = lens("o")
    return icon.paint({(x, y) for x, y in VIEW if (x // 2 + y // 2) % 2 == 0}, "c")


def invert_lens():
    icon = lens("o")
    icon.paint(VIEW & rectangle(6, 0, 11, 11), "k")
    dot = oval(4, 4, 8, 8)
    return icon.paint(dot, "k").paint(dot & rectangle(6, 0, 11, 11), "o")


def brighten_lens():
    icon = lens("o")
    icon.paint({(6, 3), (6, 9), (3, 6), (9, 6), (4, 4), (8, 4), (4, 8), (8, 8)}, "w")
    return icon.paint(oval(5, 5, 7, 7) | rectangle(5, 5, 7, 7), "w").paint({(6, 6)}, "y")


def wireframe_lens():
    icon = lens("o")
    wires = border(rectangle(3, 5, 7, 9)) | border(rectangle(5, 3, 9, 7))
    return icon.paint(wires & VIEW, "n")


def zoom_lens():
    icon = lens("c")
    return icon.paint(rectangle(6, 3, 6, 9) | rectangle(3, 6, 9, 6), "n")


def stripe():
    icon = Icon()
    disc = oval(1, 1, 14, 14)
    icon.flat(disc, "o")
    inside = disc - border(disc)
    return icon.paint({(x, y) for x, y in inside if (x + y) % 5 < 2}, "b")


def in_outline():
    icon = Icon()
    icon.paint(border(rounded(1, 1, 14, 14)), "n")
    icon.solid(rounded(3, 3, 12, 12), YELLOW)
    return icon.paint(border(rectangle(6, 6, 9, 9)), "n")


def distort():
    down = (2, 1, 0, 0, 0, 1, 2, 3, 4, 4, 4, 3, 2, 1)
    flag = {(x + 1, y + shift) for x, shift in enumerate(down) for y in range(1, 11)}
    icon = Icon().solid(flag, BLUE)
    lines = {(x + 1, y + shift) for x, shift in enumerate(down) for y in (4, 7)} | rectangle(5, 0, 5, 15)
    return icon.paint(lines & (flag - border(flag)), "n")


def shadow():
    icon = Icon().paint(rectangle(5, 5, 14, 14), "g")
    return icon.solid(rectangle(1, 1, 11, 11), BLUE)
