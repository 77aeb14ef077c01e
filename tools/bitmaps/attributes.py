"""The icons of fills, the pen, layers and colours."""

from .icon import BLUE, PAPER, YELLOW, Icon
from .regions import border, letter, line, moved, oval, polygon, rectangle

FILLING = rectangle(3, 3, 12, 12)


# A fill is shown as a sample in a mount.
def sample():
    return Icon().flat(rectangle(1, 1, 14, 14), "o")


def gradient_brush():
    icon = sample()
    for x, y in FILLING:
        step = (x - 3) * 7 // 10  # pure colours and, between them, checkered ones
        icon.paint({(x, y)}, "nbco"[step // 2 + (step % 2 and (x + y) % 2)])
    return icon


def pattern_brush():
    joints = {(x, y) for x, y in FILLING if y % 4 == 2 or x % 6 == (5 if y % 8 < 2 or y % 8 > 5 else 2)}
    return sample().paint(FILLING, "r").paint(joints, "h")


def solid_brush():
    return sample().paint(FILLING, "r")


def pen():
    icon = Icon().paint(rectangle(1, 13, 13, 14), "n")
    icon.solid(polygon((11, 1), (14, 4), (6, 12), (3, 12), (3, 9)), YELLOW)
    icon.paint(letter(4, 9, "#..", "##.", "###"), "o")
    icon.paint({(11, 2), (12, 2), (12, 3), (13, 3), (13, 4)}, "r")
    return icon.paint(rectangle(3, 11, 4, 12), "k")


# Three sheets, one above the other.
SHEET = polygon((6, 1), (14, 1), (9, 6), (1, 6))


def layers(top, others):
    icon = Icon()
    for down in (8, 4):
        icon.solid(moved(SHEET, 0, down), others)
    return icon.solid(SHEET, top)


def layer():
    return layers(BLUE, PAPER)


def guide_layer():
    icon = layers("ooo", PAPER)
    return icon.paint(rectangle(1, 3, 14, 3) | line((11, 1), (6, 6)), "n")


def master_layer():
    return layers(YELLOW, YELLOW)


# Three discs: their colours, those of the first with the second, the first with the third and the second with the
# third, and that of all.
def mixture(colors, mixed, middle):
    first, second, third = discs = oval(4, 1, 11, 8), oval(1, 6, 8, 13), oval(7, 6, 14, 13)
    icon = Icon()
    for disc, color in zip(discs, colors):
        icon.paint(disc, color)
    for both, color in zip((first & second, first & third, second & third), mixed):
        icon.paint(both, color)
    return icon.paint(first & second & third, middle).paint(border(first | second | third), "k")


def rgb_color():
    return mixture("ren", "ymt", "o")


def cmyk_color():
    return mixture("tmy", "ner", "k")


def gray_color():
    disc = oval(1, 1, 14, 14)
    icon = Icon()
    for step, color in enumerate("dglo"):
        icon.paint(disc & rectangle(2 + step * 3, 1, 4 + step * 3, 14), color)
    return icon.paint(border(disc), "k")


def spot_color():
    icon = Icon().flat(rectangle(2, 1, 13, 14), "o")
    icon.paint(rectangle(3, 2, 12, 9), "w").paint(rectangle(2, 10, 13, 10), "k")
    return icon.paint(rectangle(4, 12, 9, 12), "d")
