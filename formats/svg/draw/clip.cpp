#include "formats/svg/draw/clip.h"

#include <memory>
#include <unordered_map>

#include "formats/svg/draw/compositing.h"
#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/element_walk.h"
#include "formats/svg/draw/mask.h"
#include "formats/svg/draw/shapes.h"
#include "formats/svg/draw/text/text.h"
#include "formats/svg/tree/switch_case.h"
#include "formats/svg/values/basic_shape.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// More shapes than this are not compared with each other but painted.
constexpr std::size_t kMostJoined = 64;

// A "use" in a clip path that has a clip path itself; it cuts what it repeats.
struct ClippedUse {
    pugi::xml_node node;
    AttributeSet attributes;
    Style style;
    UserSpace space;
};

// Calls use(element, kind, uses) for every shape and text of a clip path, those behind "use" included. `uses`: those
// around it that are cut, the outermost first.
template <class Use>
void forEachClipShape(DrawContext& context, const Style& style, const UserSpace& space,
                      pugi::xml_node clipPath, Use use) {
    AttributeSet attributes;
    Style room;
    std::vector<std::unique_ptr<ClippedUse>> uses;
    const auto visitOne = [&](pugi::xml_node node, Element element, const Style& around,
                              const UserSpace& outer, const auto& next) -> void {
        if (!context.spend(1)) return;
        attributes.read(node);
        const Style own = context.styleOf(node, attributes, around, outer, room);
        if (!own.displayed || !isWanted(attributes)) return;
        if (hasOwnTransform(own)) {
            const DrawnElement drawn{node, attributes, own, outer};
            readTransform(attributes, own, outer, [&] { return context.boundsOf(drawn); });
        }
        const UserSpace inner = enter(outer, element, attributes);
        if (element != Element::use) {
            if (own.visible) use(DrawnElement{node, attributes, own, inner}, element, uses);
            return;
        }
        const pugi::xml_node target = useTarget(context, node);
        const Element kind = kindOf(target);
        if (!isShape(kind) && kind != Element::text) return;
        const DrawContext::Visit visit(context, target);
        if (!visit) return;
        const bool clips = !own.own.clipPath.empty();
        if (clips) {
            UserSpace before = outer;
            before.toDrawing = before.toDrawing * ownTransform(attributes);
            Style clipped;
            clipped.own.clipPath = own.own.clipPath;
            uses.push_back(std::make_unique<ClippedUse>(ClippedUse{node, attributes, clipped, before}));
        }
        next(target, kind, own, inner, next);
        if (clips) uses.pop_back();
    };
    for (const pugi::xml_node child : clipPath.children()) {
        const Element element = kindOf(child);
        if (isShape(element) || element == Element::text || element == Element::use)
            visitOne(child, element, style, space, visitOne);
    }
}

void appendOutline(DrawContext& context, const DrawnElement& element, Element kind, APath& path) {
    if (kind != Element::text)
        return appendShape(kind, element.attributes, element.space, element.style.fontSize, path);
    std::vector<TextPiece> pieces;
    layOutText(context, element, pieces);
    for (const TextPiece& piece : pieces) piece.outline.appendTo(path, AAffine());
}

// What a clip path cuts, in the user space of its content.
struct ClipOutline {
    APath path;
    EFillRule rule = EFillRule::nonZero;
    bool simple = true;  // one outline with one rule cuts it
    double width = 0;    // what percentages referred to
    double height = 0;
};

struct ClipOutlines : DrawCache {
    std::unordered_map<std::size_t, ClipOutline> byNode;
};

bool overlap(const AFRect& a, const AFRect& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

ClipOutline outlineOf(DrawContext& context, pugi::xml_node clipPath, double width, double height) {
    ClipOutline result;
    result.width = width;
    result.height = height;
    const UserSpace space{AAffine(), width, height};
    std::vector<AFRect> boxes;
    APath one;
    APath placed;
    forEachClipShape(context, context.styleAt(clipPath), space, clipPath,
                     [&](const DrawnElement& element, Element kind, const auto& uses) {
                         if (!result.simple) return;
                         one.clear();
                         appendOutline(context, element, kind, one);
                         if (one.empty()) return;
                         placed.clear();
                         placed.append(one, element.space.toDrawing);
                         const AFRect box = placed.bounds();
                         result.simple = element.style.own.clipPath.empty() && uses.empty() &&
                                         boxes.size() < kMostJoined &&
                                         (boxes.empty() || result.rule == element.style.clipRule);
                         // Where outlines overlap, they could take each other away.
                         for (const AFRect& other : boxes) result.simple &= !overlap(box, other);
                         boxes.push_back(box);
                         result.rule = element.style.clipRule;
                         result.path.append(placed, AAffine());
                     });
    return result;
}

// From the content of a clip path to the user space of what it cuts; false when there is no such thing.
bool contentSpace(pugi::xml_node clipPath, const Style& style, const UserSpace& space, BoundingBox& box,
                  UserSpace& content) {
    content = space;
    AttributeSet attributes;
    attributes.read(clipPath);
    if (hasOwnTransform(style)) readTransform(attributes, style, space, [&] { return box.get(); });
    content.toDrawing = content.toDrawing * ownTransform(attributes);
    if (textOf(clipPath, "clipPathUnits") != "objectBoundingBox") return true;
    AAffine units;
    if (!boxUnits(box.get(), units)) return false;
    content.toDrawing = content.toDrawing * units;
    content.width = content.height = 1;
    return true;
}

pugi::xml_node findClipPath(DrawContext& context, std::string_view text) {
    std::string_view id;
    if (!takeUrl(text, id)) return {};
    const pugi::xml_node node = context.tree().findResource(id);
    return kindOf(node) == Element::clipPath ? node : pugi::xml_node();
}

const ClipOutline& cachedOutline(DrawContext& context, pugi::xml_node clipPath, const UserSpace& content) {
    ClipOutlines& cache = context.cache<ClipOutlines>(CacheOf::clips);
    const auto [entry, isNew] = cache.byNode.try_emplace(clipPath.hash_value());
    ClipOutline& outline = entry->second;
    if (isNew || outline.width != content.width || outline.height != content.height)
        outline = outlineOf(context, clipPath, content.width, content.height);
    return outline;
}

// False: nothing is left.
bool pushOutline(DrawContext& context, const APath& outline, const UserSpace& space, EFillRule rule,
                 int& pushed) {
    context.pushClip(outline, space.toDrawing, rule);
    ++pushed;
    return !isEmpty(context.clipBounds());
}

// A shape that the style itself tells, placed in a box of the element or of its viewport.
bool pushBasicShape(DrawContext& context, const BasicShape& shape, const Style& style, const UserSpace& space,
                    BoundingBox& box, int& pushed) {
    AFRect reference{0, 0, space.width, space.height};
    if (shape.box != ShapeBox::view) reference = box.get();
    if (shape.box == ShapeBox::stroke && style.stroke.kind != PaintKind::none) {
        const double half = style.strokeWidth / 2;
        reference = {reference.left - half, reference.top - half, reference.right + half,
                     reference.bottom + half};
    }
    APath outline;
    appendBasicShape(shape, reference, style.fontSize, outline);
    return !outline.empty() && pushOutline(context, outline, space, shape.rule, pushed);
}

// Paints a shape of a clip path, cut by its own clip path and those of the uses around it.
void paintClipShape(DrawContext& context, const DrawnElement& shape, Element kind,
                    const std::vector<std::unique_ptr<ClippedUse>>& uses) {
    APath outline;
    appendOutline(context, shape, kind, outline);
    if (outline.empty()) return;
    std::vector<std::unique_ptr<Compositing>> around;
    AAffine shift;
    const auto begin = [&](const DrawnElement& element, BoundingBox& box) {
        around.push_back(std::make_unique<Compositing>(context));
        if (!around.back()->begin(element, box, nullptr, 1)) return false;
        shift = around.back()->shift() * shift;
        context.touch(context.clipBounds());
        return true;
    };
    const auto shifted = [&](UserSpace space) {
        space.toDrawing = shift * space.toDrawing;
        return space;
    };
    bool seen = true;
    for (std::size_t i = 0; seen && i < uses.size(); ++i) {
        const UserSpace space = shifted(uses[i]->space);
        const DrawnElement element{uses[i]->node, uses[i]->attributes, uses[i]->style, space};
        BoundingBox box(context, element);
        seen = begin(element, box);
    }
    if (seen) {
        // Only the shape's own clip path counts here.
        Style style;
        style.own.clipPath = shape.style.own.clipPath;
        const UserSpace space = shifted(shape.space);
        BoundingBox box(outline);
        seen = begin({shape.node, shape.attributes, style, space}, box);
        if (seen) context.fill(outline, around.back()->space().toDrawing, APaint{}, shape.style.clipRule);
    }
    // One that was begun in vain has no end.
    if (!seen) around.pop_back();
    for (; !around.empty(); around.pop_back()) around.back()->end();
}

}  // namespace

bool pushClipPath(DrawContext& context, const Style& clipped, const UserSpace& space, BoundingBox& box,
                  int& pushed, std::vector<pugi::xml_node>& complex) {
    BasicShape shape;
    if (!startsWithNoCase(clipped.own.clipPath, "url(") && parseBasicShape(clipped.own.clipPath, shape))
        return pushBasicShape(context, shape, clipped, space, box, pushed);
    const pugi::xml_node clipPath = findClipPath(context, clipped.own.clipPath);
    if (!clipPath) return true;  // not there: nothing is cut
    const DrawContext::Visit visit(context, clipPath);
    if (!visit) return true;
    UserSpace content;
    const Style style = context.styleAt(clipPath);
    if (!contentSpace(clipPath, style, space, box, content)) return false;
    // A clip path may be cut by another one, in the same user space.
    if (!style.own.clipPath.empty() && !pushClipPath(context, style, space, box, pushed, complex))
        return false;
    const ClipOutline& outline = cachedOutline(context, clipPath, content);
    if (!outline.simple) {
        complex.push_back(clipPath);
        return true;
    }
    if (outline.path.empty()) return false;
    return pushOutline(context, outline.path, content, outline.rule, pushed);
}

void clipImage(DrawContext& context, pugi::xml_node clipPath, const UserSpace& space, const AFRect& box,
               AImage& image) {
    // Clip paths in clip paths without end, or far too many: the image stays as it is.
    DrawContext::HeldPixels held(context);
    constexpr double kSteps = 3;
    if (!held.take(image.pixels().size()) ||
        !context.spendPixels(kSteps * static_cast<double>(image.pixels().size()))) {
        return;
    }
    AImage coverage(image.width(), image.height());
    const DrawContext::Visit visit(context, clipPath);
    UserSpace content;
    BoundingBox known(box);
    const Style style = context.styleAt(clipPath);
    if (visit && contentSpace(clipPath, style, space, known, content)) {
        ACanvas canvas(pixelsOf(coverage));
        const DrawContext::OnCanvas on(context, canvas);
        forEachClipShape(context, style, content, clipPath,
                         [&](const DrawnElement& element, Element kind, const auto& uses) {
                             paintClipShape(context, element, kind, uses);
                         });
    }
    multiplyByAlpha(image, coverage);
}

}  // namespace svg
