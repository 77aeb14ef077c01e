"""Small drawings that would cost much without a bound, each at a size and at twice that size."""


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


# Name, what makes it, the smaller size, the command with {} for the drawing.
SELECT = ["info", "{}"]
RENDER = ["render", "{}", "--size", "1000", "-o", "/dev/null"]
CASES = [
    ("one rule of n selectors x n declarations", selectors_times_declarations, 20_000, SELECT),
    ("a class of n equal words x n rules", class_words_times_rules, 20_000, SELECT),
    ("n type rules x n elements", type_rules, 4_000, SELECT),
    ("descendant rules x depth 900 x n", descendant_rules, 4_000, SELECT),
    ("an id of n slashes", slashes, 1_000_000, SELECT),
    ("entities that make 60,000 x n elements", entities, 16, SELECT),
    ("n patterns in one another", nested_patterns, 12, RENDER),
    ("masks twice in one another, n deep", masks_twice, 16, RENDER),
    ("n times blur and dilate", filter_steps, 32, RENDER),
]
