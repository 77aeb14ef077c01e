"""Small drawings that would cost much without a bound, each at a size and at twice that size.

    bench/hostile.py FOLDER     writes some of them, smaller, as they lie in fuzz/corpus
"""
import base64
import pathlib
import struct
import sys
import zlib


def svg(body, size=100):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" '
            f'width="{size}" height="{size}">{body}</svg>')


def selectors_times_declarations(n):
    return svg("<style>" + ",".join(["a"] * n) + "{" + "fill:red;" * n + "}</style><a/>" * 1 + "<a/>" * 20)


def class_words_times_rules(n):
    return svg("<style>" + ".a{fill:red}" * n + f"</style><rect class='{'a ' * n}'/>")


def type_rules(n):
    return svg("<style>" + "rect{fill:red}" * n + "</style>" + "<rect/>" * n)


def descendant_rules(n):
    rules = "".join(f"g g g g x{i % 9} rect{{fill:red}}" for i in range(150))
    return svg(f"<style>{rules}</style>" + "<g>" * 900 + "<rect/>" * n + "</g>" * 900)


def slashes(n):
    return svg(f"<rect id='{'/' * n}'/>")


def entities(n):
    return (f'<!DOCTYPE svg [<!ENTITY a "{"<g/>" * 1000}"><!ENTITY b "{"&a;" * 60}">]>' + svg("&b;" * n))


def nested_patterns(n):
    """Patterns in one another."""
    body = "".join(f'<pattern id="p{i}" width="3000" height="3000" patternUnits="userSpaceOnUse">'
                   f'<rect width="3000" height="3000" fill="url(#p{i + 1})"/></pattern>' for i in range(n))
    return svg(body + '<rect width="3000" height="3000" fill="url(#p0)"/>', 3000)


def masks_twice(n):
    """Masks that use the next one twice."""
    body = "".join(f'<mask id="m{i}"><rect width="99" height="99" fill="#fff" mask="url(#m{i + 1})"/>'
                   f'<rect width="99" height="99" fill="#fff" mask="url(#m{i + 1})"/></mask>' for i in range(n))
    return svg(body + '<rect width="99" height="99" mask="url(#m0)"/>', 2000)


def filter_steps(n):
    steps = '<feGaussianBlur stdDeviation="9"/><feMorphology operator="dilate" radius="9"/>' * n
    return svg(f'<filter id="f">{steps}</filter><rect width="4000" height="4000" filter="url(#f)"/>', 4000)


def merges(n):
    """Filter steps that put n results on each other, n times."""
    nodes = "<feMergeNode/>" * n
    return svg(f'<filter id="f">{f"<feMerge>{nodes}</feMerge>" * n}</filter>'
               '<rect width="4000" height="4000" filter="url(#f)"/>', 4000)


def attributes(n):
    return svg("<text>t</text>" * n).replace("<svg ", "<svg " + " ".join(f"a{i}=''" for i in range(n)) + " ", 1)


def nested_urls(n):
    return svg(f"<rect fill='{'url(' * n}'/><rect fill='red'/>")


def colliding_ids(n):
    """Ids of one value in the unseeded hash of the usual standard library: n is a power of two."""
    # Either word flips the highest bit of the state against the other; the same once more flips it back.
    units = [2 * word for word in ("\u06b9o5\u05c6\u02dd", "\u06b9,Orls,")]
    bits = n.bit_length() - 1
    return svg("".join(f"<rect id='{''.join(units[i >> bit & 1] for bit in range(bits))}'/>" for i in range(n)))


def one_bit_picture(side, seed=0):
    """A data URI of a square picture with a bit for each pixel."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    row = b"\0" + bytes([seed % 256]) * (side // 8)
    packed = zlib.compressobj(9)
    data = b"".join(packed.compress(row) for _ in range(side)) + packed.flush()
    head = struct.pack(">IIBBBBB", side, side, 1, 0, 0, 0, 0)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", data) + chunk(b"IEND", b"")
    return "data:image/png;base64," + base64.b64encode(png).decode()


def text_uses(n, letters=60_000):
    text = ("abcdefghij klmnopqrst uvwxyz " * (letters // 28))[:letters]
    return svg(f"<defs><text id='t' font-size='3'>{text}</text></defs>"
               + "".join(f"<use xlink:href='#t' y='{i % 100}'/>" for i in range(n)))


def image_uses(n, side=8192):
    return svg(f"<defs><image id='i' width='99' height='99' xlink:href='{one_bit_picture(side)}'/></defs>"
               + "<use xlink:href='#i'/>" * n)


def large_images(n, side=16384):
    return svg("".join(f"<image width='99' height='99' xlink:href='{one_bit_picture(side, i)}'/>" for i in range(n)))


# Name, what makes it, the smaller size, the command with {} for the drawing, {out} for one that is written.
SELECT = ["info", "{}"]
WRITE = ["view", "{}", "--hide", "red", "-o", "{out}"]
RENDER = ["render", "{}", "--size", "1000", "-o", "/dev/null"]
CASES = [
    ("one rule of n selectors x n declarations", selectors_times_declarations, 20_000, SELECT),
    ("a class of n equal words x n rules", class_words_times_rules, 20_000, SELECT),
    ("n type rules x n elements", type_rules, 4_000, SELECT),
    ("descendant rules x depth 900 x n", descendant_rules, 4_000, SELECT),
    ("an id of n slashes", slashes, 1_000_000, SELECT),
    ("n ids of one unseeded hash", colliding_ids, 1 << 14, SELECT),
    ("n attributes on the root x n texts", attributes, 100_000, SELECT),
    ("a paint of n times url(, written", nested_urls, 1_000_000, WRITE),
    ("entities that make 60,000 x n elements", entities, 16, SELECT),
    ("n patterns in one another", nested_patterns, 12, RENDER),
    ("masks twice in one another, n deep", masks_twice, 16, RENDER),
    ("n times blur and dilate", filter_steps, 32, RENDER),
    ("n merges of n inputs", merges, 16, RENDER),
    ("n uses of a text of 60 kB", text_uses, 20, RENDER),
    ("n uses of a picture of 8192 x 8192", image_uses, 20, RENDER),
    ("n one-bit pictures of 16384 x 16384", large_images, 8, RENDER),
]

if __name__ == "__main__":
    for name, text in {"draw/colliding_ids.svg": colliding_ids(16), "draw/merges.svg": merges(6),
                       "draw/text_uses.svg": text_uses(6, 4000), "draw/image_uses.svg": image_uses(6, 2048),
                       "draw/large_images.svg": large_images(4, 4096),
                       "svg/descendant_rules.svg": descendant_rules(2),
                       "svg/root_attributes.svg": attributes(60), "svg/nested_urls.svg": nested_urls(200)}.items():
        (pathlib.Path(sys.argv[1]) / name).write_text(text)
