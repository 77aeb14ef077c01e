"""Every class icon: the name of its file, the function that draws it."""

from . import attributes, effects, objects
from .bmp import bmp
from .icon import COLORS

ICONS = {
    "rectangle": objects.rectangle_icon,
    "oval": objects.oval_icon,
    "polygon": objects.polygon_icon,
    "starburst": objects.starburst,
    "fan": objects.fan,
    "arrow": objects.arrow,
    "param_shape": objects.param_shape,
    "reg_mark": objects.reg_mark,
    "dimension": objects.dimension,
    "dimension_h": objects.dimension_h,
    "dimension_v": objects.dimension_v,
    "label": objects.label,
    "label2": objects.label2,
    "edit_path": objects.edit_path,
    "guide_line": objects.guide_line,
    "ole_object": objects.ole_object,
    "group": objects.group,
    "composite": objects.composite,
    "mask": objects.mask,
    "text": objects.text,
    "arc_text": objects.arc_text,
    "combine_path_text": objects.combine_path_text,
    "bitmap": objects.bitmap,
    "combine_weld": effects.weld,
    "combine_cut_out": effects.cut_out,
    "combine_common": effects.common,
    "combine_xor": effects.exclusive,
    "combine_mask": effects.combine_mask,
    "trans_lens": effects.trans_lens,
    "invert_lens": effects.invert_lens,
    "brighten_lens": effects.brighten_lens,
    "wireframe_lens": effects.wireframe_lens,
    "zoom_lens": effects.zoom_lens,
    "stripe": effects.stripe,
    "in_outline": effects.in_outline,
    "distort": effects.distort,
    "shadow": effects.shadow,
    "gradient_brush": attributes.gradient_brush,
    "pattern_brush": attributes.pattern_brush,
    "solid_brush": attributes.solid_brush,
    "pen": attributes.pen,
    "layer": attributes.layer,
    "guide_layer": attributes.guide_layer,
    "master_layer": attributes.master_layer,
    "rgb_color": attributes.rgb_color,
    "cmyk_color": attributes.cmyk_color,
    "gray_color": attributes.gray_color,
    "spot_color": attributes.spot_color,
}


def files():
    letters = "".join(COLORS)

    def palette_number(letter, _x, _y):
        return letters.index(letter)

    return {f"{name}.bmp": bmp([draw().rows()], list(COLORS.values()), palette_number) for name, draw in ICONS.items()}
