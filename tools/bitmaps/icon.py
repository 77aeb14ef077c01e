"""A class icon: 16x16 letters of one palette, painted region by region.

All icons are lit from the upper left: a filled region has a dark outline, its light colour inside the upper and left
edges, its dark one inside the lower and right ones. A pixel of air is left around. White is the background and turns
into the window's colour, so what should look like paper is the palette's paper colour, not white. Edges are not
smoothed: they would be smoothed against white, and windows have other colours too.
"""

from .regions import SIDE, border

COLORS = {
    ".": 0xFFFFFF,  # background
    "k": 0x26303F,  # outline
    "d": 0x5E6977,  # greys
    "g": 0x98A2AE,
    "l": 0xD3D9E0,
    "o": 0xF7F8FA,  # paper
    "n": 0x2C64B0,  # blues
    "b": 0x5596E0,
    "c": 0xB3D6F8,
    "t": 0x25B5D8,  # cyan
    "w": 0xD68A22,  # yellows
    "y": 0xFFCF48,
    "h": 0xFFEFB5,
    "r": 0xD6403A,
    "m": 0xC94A9E,
    "e": 0x49A84F,  # green
}

# Light, body, dark.
BLUE = "cbn"
YELLOW = "hyw"
PAPER = "ool"
GREY = "olg"


class Icon:
    def __init__(self):
        self._pixels = [["."] * SIDE for _ in range(SIDE)]

    def paint(self, region, letter):
        for x, y in region:
            self._pixels[y][x] = letter
        return self

    def solid(self, region, ramp, outline="k"):
        """A lit body with an outline."""
        edge = border(region)
        inside = region - edge
        light, body, dark = ramp
        for x, y in inside:
            if (x - 1, y) in edge or (x, y - 1) in edge:
                shade = light
            elif (x + 1, y) in edge or (x, y + 1) in edge:
                shade = dark
            else:
                shade = body
            self._pixels[y][x] = shade
        return self.paint(edge, outline)

    def flat(self, region, letter, outline="k"):
        """An unlit body with an outline."""
        return self.paint(region, letter).paint(border(region), outline)

    def rows(self):
        return ["".join(row) for row in self._pixels]
