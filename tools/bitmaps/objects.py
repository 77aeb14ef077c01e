"""The icons of the drawing objects: blue shapes and letters, red measures."""

from .icon import BLUE, PAPER, YELLOW, Icon
from .regions import (border, both_halves, dotted, letter, line, oval, path, polygon, rectangle, rounded, symmetric,
                      turned)


def rectangle_icon():
    return Icon().solid(rectangle(1, 3, 14, 12), BLUE)


def oval_icon():
    return Icon().solid(oval(1, 3, 14, 12), BLUE)


def polygon_icon():
    return Icon().solid(symmetric(polygon((4, 2), (1, 7), (1, 8), (4, 13), (7, 13), (7, 2))), BLUE)


def starburst():
    quarter = polygon((7, 1), (5, 4), (2, 2), (4, 5), (1, 7), (7, 7))
    return Icon().solid(both_halves(symmetric(quarter)), BLUE)


def fan():
    return Icon().solid(oval(1, 1, 14, 14) - rectangle(8, 1, 14, 7), BLUE)


def arrow():
    upper = polygon((1, 5), (7, 5), (7, 1), (8, 1), (14, 7), (1, 7))
    return Icon().solid(both_halves(upper), BLUE)


# The grip by which a parameter is dragged.
def grip(icon, x, y):
    return icon.solid({(x + i, y + j) for i in range(-2, 3) for j in range(-2, 3) if abs(i) + abs(j) < 3}, "yyy")


def param_shape():
    icon = Icon().solid(polygon((5, 4), (14, 4), (10, 13), (1, 13)), BLUE)
    return grip(icon, 5, 4)


def reg_mark():
    ring = oval(3, 3, 11, 11)
    icon = Icon().flat(ring, "o")
    icon.paint((ring - border(ring)) & (rectangle(3, 3, 7, 7) | rectangle(7, 7, 11, 11)), "b")
    return icon.paint(rectangle(7, 1, 7, 13) | rectangle(1, 7, 13, 7), "k")


# What is measured, its two extension lines and the measure between them.
def dimension_h():
    icon = Icon().solid(rectangle(1, 9, 14, 13), BLUE)
    icon.paint(rectangle(1, 2, 1, 8) | rectangle(14, 2, 14, 8), "d")
    head = letter(2, 3, "..#", ".##", "###", ".##", "..#")
    return icon.paint(symmetric(head) | rectangle(2, 5, 13, 5), "r")


def dimension_v():
    icon = Icon().solid(rectangle(9, 1, 13, 14), BLUE)
    icon.paint(rectangle(2, 1, 8, 1) | rectangle(2, 14, 8, 14), "d")
    head = turned(symmetric(letter(2, 3, "..#", ".##", "###", ".##", "..#")))
    return icon.paint(head | rectangle(5, 2, 5, 13), "r")


def dimension():
    icon = Icon().solid(polygon((14, 3), (14, 14), (3, 14)), BLUE)
    icon.paint(line((1, 12), (3, 14)) | line((12, 1), (14, 3)), "d")
    half = letter(2, 8, "#...", "##..", "###.", "####") | line((4, 9), (6, 7))
    return icon.paint(half | turned(half), "r")


def label():
    icon = Icon().solid(rectangle(5, 2, 14, 9), PAPER)
    icon.paint(rectangle(7, 4, 12, 4) | rectangle(7, 6, 11, 6), "d")
    return icon.paint(line((5, 10), (2, 13)) | letter(1, 10, "#...", "#...", "##..", "####"), "r")


def label2():
    icon = Icon().solid(oval(5, 1, 14, 10), YELLOW)
    icon.paint(letter(8, 3, ".##.", "#..#", "..#.", ".#..", "####"), "k")
    return icon.paint(path((9, 11), (9, 12), (2, 12)) | letter(1, 10, "..#", ".##", "###", ".##", "..#"), "r")


def node(icon, x, y):
    return icon.flat(rectangle(x - 1, y - 1, x + 1, y + 1), "c", "n")


def edit_path():
    icon = Icon().paint(border(oval(2, 3, 13, 22)) & rectangle(2, 3, 13, 12), "d")
    icon.paint(rectangle(2, 3, 13, 3), "n").paint(rectangle(1, 2, 2, 4) | rectangle(13, 2, 14, 4), "n")
    icon.flat(rectangle(6, 1, 9, 4), "c", "n")
    return node(node(icon, 2, 12), 13, 12)


def guide_line():
    icon = Icon().flat(rectangle(1, 1, 14, 6), "y").paint(rectangle(2, 2, 13, 2), "h")
    for x in range(3, 13, 2):
        icon.paint(rectangle(x, 4 if x % 4 == 3 else 5, x, 5), "k")
    for x in (1, 5, 9, 13):
        icon.paint(rectangle(x, 10, min(x + 2, 14), 11), "n")
    return icon


def ole_object():
    icon = Icon().solid(rectangle(1, 1, 14, 13), PAPER)
    icon.paint(rectangle(2, 2, 13, 4), "b").paint(rectangle(2, 2, 13, 2), "c").paint(rectangle(1, 5, 14, 5), "k")
    icon.paint({(10, 3), (12, 3)}, "o")
    icon.paint(rectangle(3, 9, 5, 11), "r").paint(rectangle(6, 7, 8, 11), "y").paint(rectangle(9, 8, 11, 11), "e")
    return icon


def corners(icon, color):
    for x in (1, 13):
        for y in (1, 13):
            icon.paint(rectangle(x, y, x + 1, y + 1), color)
    return icon


def group():
    icon = Icon().paint(dotted(border(rectangle(1, 1, 14, 14))), "g")
    icon.solid(rectangle(3, 3, 9, 9), BLUE).solid(oval(6, 6, 12, 12), YELLOW)
    return corners(icon, "k")


def composite():
    icon = Icon().solid(rounded(1, 1, 14, 14), BLUE)
    hole = oval(4, 4, 11, 11)
    icon.paint(hole, ".").paint(border(hole), "k")
    return icon


# A picture that is seen through an opening.
def landscape(icon, opening):
    hill = polygon((5, 6), (12, 13), (-2, 13)) | polygon((10, 8), (15, 13), (5, 13)) | rectangle(0, 12, 15, 15)
    icon.paint(opening, "c").paint(opening & rectangle(9, 3, 11, 5), "y").paint(opening & hill, "e")
    return icon


def mask():
    opening = oval(3, 3, 12, 12)
    icon = Icon().flat(rectangle(1, 1, 14, 14), "l")
    return landscape(icon, opening).paint(border(opening), "k")


def bitmap():
    frame = rectangle(1, 2, 14, 13)
    return landscape(Icon(), frame).paint(border(frame), "k")


SMALL_A = ("..##..", "..##..", ".####.", ".#..#.", ".####.", "##..##", "#....#")


def text():
    strokes = polygon((6, 1), (7, 1), (7, 11), (6, 11), (5, 14), (1, 14), (1, 13))
    opening = polygon((7, 5), (7, 8), (6, 8))
    return Icon().flat(symmetric(strokes) - symmetric(opening), "b")


def arc_text():
    arch = border(oval(1, 9, 14, 22)) & rectangle(1, 9, 14, 13)
    icon = Icon().paint(arch | {(x, y + 1) for x, y in arch}, "r")
    return icon.paint(symmetric(letter(4, 1, "...#", "..##", "..##", ".##.", ".###", "##..", "##..")), "n")


def combine_path_text():
    wave = letter(1, 9,
                  "..###.........",
                  ".##.##........",
                  "##...##.......",
                  "......##....##",
                  ".......##..##.",
                  "........####..")
    return Icon().paint(wave, "r").paint(letter(1, 1, *SMALL_A) | letter(8, 4, *SMALL_A), "n")
