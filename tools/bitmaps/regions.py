"""Shapes of pixels: a region is a set of (x, y) in a picture of 16x16. All arithmetic is in integers.

Unions, intersections and differences are those of sets. Corners and ends are pixels, inclusive.
"""

SIDE = 16
ALL = {(x, y) for x in range(SIDE) for y in range(SIDE)}


def rectangle(left, top, right, bottom):
    return {(x, y) for x in range(left, right + 1) for y in range(top, bottom + 1)}


def rounded(left, top, right, bottom):
    """A rectangle without its corner pixels."""
    corners = {(x, y) for x in (left, right) for y in (top, bottom)}
    return rectangle(left, top, right, bottom) - corners


def oval(left, top, right, bottom):
    """The pixels whose centres lie in the ellipse that touches the four sides."""
    width, height = right - left + 1, bottom - top + 1

    def inside(x, y):
        across, down = 2 * x - left - right, 2 * y - top - bottom
        return (across * height) ** 2 + (down * width) ** 2 <= (width * height) ** 2

    return {(x, y) for x, y in rectangle(left, top, right, bottom) if inside(x, y)}


def line(start, end):
    """Bresenham's line; the same pixels in either direction."""
    (x, y), (to_x, to_y) = sorted((start, end))
    across, down = to_x - x, abs(to_y - y)
    step = 1 if to_y > y else -1
    steps = max(across, down)
    if steps == 0:
        return {start}
    return {
        (x + (2 * i * across + steps) // (2 * steps), y + step * ((2 * i * down + steps) // (2 * steps)))
        for i in range(steps + 1)
    }


def path(*points):
    """A polyline."""
    return set().union(*(line(start, end) for start, end in zip(points, points[1:])))


def polygon(*points):
    """What a closed polyline runs through and encloses."""
    edge = path(*points, points[0])
    outside = set()
    found = [(-1, -1)]
    while found:
        x, y = found.pop()
        for pixel in ((x - 1, y), (x + 1, y), (x, y - 1), (x, y + 1)):
            if -1 <= min(pixel) and max(pixel) <= SIDE and pixel not in outside and pixel not in edge:
                outside.add(pixel)
                found.append(pixel)
    return ALL - outside


def moved(region, across, down):
    return {(x + across, y + down) for x, y in region}


def turned(region):
    """Mirrored at the falling diagonal: across becomes down."""
    return {(y, x) for x, y in region}


def symmetric(region):
    """With its mirror image: left and right are the same."""
    return region | {(SIDE - 1 - x, y) for x, y in region}


def both_halves(upper):
    """With its mirror image: top and bottom are the same."""
    return upper | {(x, SIDE - 1 - y) for x, y in upper}


def letter(left, top, *rows):
    """The pixels that are marked in rows of text."""
    return {(left + x, top + y) for y, row in enumerate(rows) for x, mark in enumerate(row) if mark != "."}


def border(region):
    """The pixels of a region that have a side in common with what is outside."""
    return {
        (x, y) for x, y in region if not {(x - 1, y), (x + 1, y), (x, y - 1), (x, y + 1)} <= region
    }


def dotted(region):
    """Every other pixel."""
    return {(x, y) for x, y in region if (x + y) % 2 == 0}
