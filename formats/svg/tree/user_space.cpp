#include "formats/svg/tree/user_space.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "formats/svg/values/path_data.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// A drawing without any size, as browsers take it.
constexpr double kDefaultWidth = 300;
constexpr double kDefaultHeight = 150;

// "xMidYMid": 0, 0.5 or 1 of the room that is left.
double alignment(std::string_view word, std::string_view axis) {
    const std::size_t at = word.find(axis);
    if (at == word.npos) return 0.5;
    const std::string_view which = word.substr(at + axis.size(), 3);
    return which == "Min" ? 0 : which == "Max" ? 1 : 0.5;
}

LengthContext contextOf(const UserSpace& space, double fontSize = 16) {
    return {fontSize, space.width, space.height};
}

double positive(double value) {
    return std::max(0.0, value);
}

AFRect rectangleBounds(const AttributeSet& attributes, const Affine& transform,
                       const LengthContext& context) {
    const double x = length(attributes, Attribute::x, Axis::horizontal, context);
    const double y = length(attributes, Attribute::y, Axis::vertical, context);
    const double halfWidth = positive(length(attributes, Attribute::width, Axis::horizontal, context)) / 2;
    const double halfHeight = positive(length(attributes, Attribute::height, Axis::vertical, context)) / 2;
    double rx = length(attributes, Attribute::rx, Axis::horizontal, context, -1);
    double ry = length(attributes, Attribute::ry, Axis::vertical, context, -1);
    if (rx < 0) rx = ry;
    if (ry < 0) ry = rx;
    rx = std::min(positive(rx), halfWidth);
    ry = std::min(positive(ry), halfHeight);
    if (rx == 0 || ry == 0) rx = ry = 0;
    return roundBounds(transform, {x + halfWidth, y + halfHeight}, {halfWidth - rx, halfHeight - ry}, rx, ry);
}

// 0 when the side is missing, not positive, or a percentage, which would refer to a window.
double givenSide(const AttributeSet& root, Attribute attribute, Axis axis) {
    if (!root.has(attribute) || root.get(attribute).find('%') != std::string_view::npos) return 0;
    return positive(length(root, attribute, axis, LengthContext()));
}

// A side that is not given follows the box's proportions. A box that is to be stretched stays as it is.
Page pageAround(const AFRect& box, const AttributeSet& root) {
    double width = givenSide(root, Attribute::width, Axis::horizontal);
    double height = givenSide(root, Attribute::height, Axis::vertical);
    if (width == 0) width = height > 0 ? height * box.Width() / box.Height() : box.Width();
    if (height == 0) height = width * box.Height() / box.Width();
    const Affine place = fitViewBox(box, width, height, root.get(Attribute::preserveAspectRatio));
    const bool isUsable = std::isfinite(width) && std::isfinite(height) && std::isnormal(place.a);
    if (!isUsable) return {box, 1};
    if (place.a != place.d) return {box, place.a};
    const AFRect shown{(0 - place.e) / place.a, (0 - place.f) / place.d, (width - place.e) / place.a,
                       (height - place.f) / place.d};
    // The same proportions but for rounding: "210mm" for 210 units.
    constexpr double kRounding = 1e-6;
    const bool isBox = std::fabs(shown.Width() - box.Width()) <= kRounding * box.Width() &&
                       std::fabs(shown.Height() - box.Height()) <= kRounding * box.Height();
    return {isBox ? box : shown, place.a};
}

// In the order in which they apply, from outside.
constexpr std::string_view kSingleTransforms[] = {"translate", "rotate", "scale"};

// The value that counts; null: none.
const Variable* singleTransform(const OwnStyle& own, std::string_view name) {
    const Variable* one = own.geometry;
    while (one && one->name != name) one = one->outer;
    return one;
}

}  // namespace

Affine ownTransform(const AttributeSet& attributes) {
    if (!attributes.has(Attribute::transform)) return {};
    const Affine* const ofStyle = attributes.transform();
    return ofStyle ? *ofStyle : parseTransform(attributes.get(Attribute::transform));
}

Affine aboutOrigin(const Affine& transform, const Style& style, const UserSpace& space) {
    AFPoint origin;
    if (style.own.transformOrigin.empty() ||
        !parseTransformOrigin(style.own.transformOrigin, {style.fontSize, space.width, space.height},
                              origin)) {
        return transform;
    }
    return translation(origin.x, origin.y) * transform * translation(-origin.x, -origin.y);
}

void readGeometry(AttributeSet& attributes, const Style& style) {
    // The last declared of an attribute counts.
    std::vector<const Variable*> all;
    for (const Variable* one = style.own.geometry; one; one = one->outer) all.push_back(one);
    for (std::size_t i = all.size(); i-- > 0;) attributes.give(all[i]->name.data(), all[i]->value.data());
}

void readTransform(AttributeSet& attributes, const Style& style, const UserSpace& outer,
                   const std::function<AFRect()>& ownBox) {
    const OwnStyle& own = style.own;
    if (own.geometry) readGeometry(attributes, style);
    const bool hasSingle = std::any_of(std::begin(kSingleTransforms), std::end(kSingleTransforms),
                                       [&](std::string_view name) { return singleTransform(own, name); });
    if (own.transform.empty() && !attributes.has(Attribute::transform) && !hasSingle) return;
    const bool ofView = own.transformBox == TransformBox::viewBox;
    AFRect box{0, 0, outer.width, outer.height};
    if (!ofView) box = ownBox();
    if (own.transformBox == TransformBox::strokeBox && style.stroke.kind != PaintKind::none) {
        const double half = style.strokeWidth / 2;
        box = {box.left - half, box.top - half, box.right + half, box.bottom + half};
    }
    const TransformLengths lengths{style.fontSize, box.Width(), box.Height()};
    Affine transform;
    if (own.transform.empty()) {
        transform = ownTransform(attributes);
    } else {
        parseStyleTransform(own.transform, lengths, transform);
    }
    Affine before;
    for (const std::string_view name : kSingleTransforms) {
        const Variable* const one = hasSingle ? singleTransform(own, name) : nullptr;
        Affine single;
        if (one && parseSingleTransform(name, one->value, lengths, single)) before = before * single;
    }
    transform = before * transform;
    AFPoint origin;
    if (!own.transformOrigin.empty()) parseTransformOrigin(own.transformOrigin, lengths, origin);
    origin = {origin.x + box.left, origin.y + box.top};
    attributes.setTransform(translation(origin.x, origin.y) * transform * translation(-origin.x, -origin.y));
}

bool parseViewBox(std::string_view text, AFRect& box) {
    double v[4];
    text = trimFront(text);
    for (double& number : v) {
        if (!takeNumber(text, number)) return false;
        text = skipSeparator(text);
    }
    if (!text.empty() || !(v[2] > 0 && v[3] > 0)) return false;
    box = {v[0], v[1], v[0] + v[2], v[1] + v[3]};
    return true;
}

bool isEmptyViewBox(std::string_view text) {
    double v[4];
    text = trimFront(text);
    for (double& number : v) {
        if (!takeNumber(text, number)) return false;
        text = skipSeparator(text);
    }
    return text.empty() && (v[2] == 0 || v[3] == 0);
}

Affine fitViewBox(const AFRect& box, double width, double height, std::string_view aspect) {
    double x = width / box.Width();
    double y = height / box.Height();
    const std::string_view align = takeWord(aspect);
    if (align != "none") x = y = takeWord(aspect) == "slice" ? std::max(x, y) : std::min(x, y);
    const double left = align == "none" ? 0 : (width - box.Width() * x) * alignment(align, "x");
    const double top = align == "none" ? 0 : (height - box.Height() * y) * alignment(align, "Y");
    return {x, 0, 0, y, left - box.left * x, top - box.top * y};
}

double length(const AttributeSet& attributes, Attribute attribute, Axis axis, const LengthContext& context,
              double missing) {
    double value = missing;
    if (attributes.has(attribute)) parseLength(attributes.get(attribute), axis, context, value);
    return value;
}

UserSpace rootSpace(const AttributeSet& root, Page& page) {
    UserSpace space{ownTransform(root), kDefaultWidth, kDefaultHeight};
    AFRect box;
    if (root.has(Attribute::viewBox) && parseViewBox(root.get(Attribute::viewBox), box)) {
        page = pageAround(box, root);
        space.width = box.Width();
        space.height = box.Height();
        return space;
    }
    const LengthContext context{16, kDefaultWidth, kDefaultHeight};
    space.width = positive(length(root, Attribute::width, Axis::horizontal, context, kDefaultWidth));
    space.height = positive(length(root, Attribute::height, Axis::vertical, context, kDefaultHeight));
    page = {{0, 0, space.width, space.height}, 1};
    return space;
}

UserSpace viewportOf(const UserSpace& outer, const AttributeSet& attributes) {
    const LengthContext context = contextOf(outer);
    double width = length(attributes, Attribute::width, Axis::horizontal, context, outer.width);
    double height = length(attributes, Attribute::height, Axis::vertical, context, outer.height);
    if (outer.useWidth >= 0) width = outer.useWidth;
    if (outer.useHeight >= 0) height = outer.useHeight;
    const Affine offset = translation(length(attributes, Attribute::x, Axis::horizontal, context),
                                      length(attributes, Attribute::y, Axis::vertical, context));
    return {outer.toDrawing * ownTransform(attributes) * offset, width, height};
}

UserSpace enter(const UserSpace& outer, Element element, const AttributeSet& attributes) {
    const LengthContext context = contextOf(outer);
    UserSpace inner = outer;
    inner.useWidth = inner.useHeight = -1;
    if (element == Element::use) {
        const Affine offset = translation(length(attributes, Attribute::x, Axis::horizontal, context),
                                          length(attributes, Attribute::y, Axis::vertical, context));
        inner.toDrawing = outer.toDrawing * ownTransform(attributes) * offset;
        inner.useWidth = length(attributes, Attribute::width, Axis::horizontal, context, -1);
        inner.useHeight = length(attributes, Attribute::height, Axis::vertical, context, -1);
        return inner;
    }
    if (isViewport(element)) {
        inner = viewportOf(outer, attributes);
        AFRect box;
        if (!attributes.has(Attribute::viewBox) || !parseViewBox(attributes.get(Attribute::viewBox), box))
            return inner;
        const std::string_view aspect = attributes.get(Attribute::preserveAspectRatio);
        inner.toDrawing = inner.toDrawing * fitViewBox(box, inner.width, inner.height, aspect);
        inner.width = box.Width();
        inner.height = box.Height();
        return inner;
    }
    if (attributes.has(Attribute::transform)) inner.toDrawing = outer.toDrawing * ownTransform(attributes);
    return inner;
}

AFRect shapeBounds(Element element, const AttributeSet& attributes, const UserSpace& outer, double fontSize) {
    const LengthContext context = contextOf(outer, fontSize);
    const Affine transform =
        attributes.has(Attribute::transform) ? outer.toDrawing * ownTransform(attributes) : outer.toDrawing;
    const auto get = [&](Attribute attribute, Axis axis) {
        return length(attributes, attribute, axis, context);
    };
    switch (element) {
        case Element::rect:
        case Element::image:
            return rectangleBounds(attributes, transform, context);
        case Element::circle: {
            const double r = positive(get(Attribute::r, Axis::both));
            return roundBounds(transform,
                               {get(Attribute::cx, Axis::horizontal), get(Attribute::cy, Axis::vertical)}, {},
                               r, r);
        }
        case Element::ellipse: {
            double rx = length(attributes, Attribute::rx, Axis::horizontal, context, -1);
            double ry = length(attributes, Attribute::ry, Axis::vertical, context, -1);
            if (rx < 0) rx = ry;  // "auto"
            if (ry < 0) ry = rx;
            return roundBounds(transform,
                               {get(Attribute::cx, Axis::horizontal), get(Attribute::cy, Axis::vertical)}, {},
                               positive(rx), positive(ry));
        }
        case Element::line: {
            BoundsBuilder bounds;
            bounds.add(
                transform.apply({get(Attribute::x1, Axis::horizontal), get(Attribute::y1, Axis::vertical)}));
            bounds.add(
                transform.apply({get(Attribute::x2, Axis::horizontal), get(Attribute::y2, Axis::vertical)}));
            return bounds.get();
        }
        default:
            return {};
    }
}

AFRect curveBounds(Element element, const AttributeSet& attributes, const UserSpace& outer) {
    const Affine transform =
        attributes.has(Attribute::transform) ? outer.toDrawing * ownTransform(attributes) : outer.toDrawing;
    BoundsBuilder bounds;
    if (element == Element::path)
        addPathBounds(attributes.get(Attribute::d), transform, bounds);
    else
        addPointsBounds(attributes.get(Attribute::points), transform, bounds);
    return bounds.get();
}

}  // namespace svg
