#include "formats/svg/draw/paint/paint_source.h"

#include <unordered_map>

#include "formats/svg/draw/paint/gradients.h"
#include "formats/svg/draw/paint/patterns.h"
#include "formats/svg/values/color.h"
#include "kzcore/document/refer_item.h"

namespace svg {

namespace {

// The elements that brush items are made of, by item.
struct BrushServers : DrawCache {
    std::unordered_map<const ABrushItem*, pugi::xml_node> byItem;
};

// What is needed to make a paint of a paint server.
struct Painted {
    DrawContext& context;
    const UserSpace& space;
    BoundingBox& box;
    double opacity;
};

bool solid(COLORREF color, double opacity, APaint& paint) {
    paint = {AColor(color, opacity)};
    return opacity > 0;
}

bool solidRgb(std::uint32_t rgb, double opacity, APaint& paint) {
    return solid(RGB(rgb >> 16 & 0xff, rgb >> 8 & 0xff, rgb & 0xff), opacity, paint);
}

// Some colour stands for the pattern, to tell where it is painted.
bool recordPattern(ADisplayRecorder& recorder, APaint& paint) {
    recorder.openPicture();
    recorder.close();
    paint = {};
    return true;
}

bool serverPaint(const Painted& painted, pugi::xml_node server, APaint& paint) {
    paint = {};
    paint.opacity = painted.opacity;
    switch (kindOf(server)) {
        case Element::linearGradient:
        case Element::radialGradient:
            paint.gradient = gradientFor(painted.context, server, painted.box, painted.space);
            return paint.gradient != nullptr;
        case Element::pattern:
            // A tile is made at the resolution of the picture.
            if (painted.context.recorder()) return recordPattern(*painted.context.recorder(), paint);
            paint.tile = patternTile(painted.context, server, painted.box.get(), painted.space);
            return paint.tile != nullptr;
        default:
            return false;  // meshes and hatches
    }
}

bool isServer(Element element) {
    return element >= Element::linearGradient && element <= Element::hatch;
}

bool contextPaint(const Painted& painted, PaintKind kind, APaint& result);

// What a style says. A server that cannot be painted gives way to the colour behind it, where there is one.
bool stylePaint(const Painted& painted, const Paint& paint, std::uint32_t currentColor, APaint& result) {
    PaintKind kind = paint.kind;
    if (kind == PaintKind::reference) {
        const pugi::xml_node server = painted.context.tree().findResource(paint.text);
        if (isServer(kindOf(server)) && serverPaint(painted, server, result)) return true;
        kind = paint.fallback;
    }
    switch (kind) {
        case PaintKind::contextFill:
        case PaintKind::contextStroke:
            return contextPaint(painted, kind, result);
        case PaintKind::rgb:
            return solidRgb(paint.rgb, painted.opacity * (paint.alpha / 255.0), result);
        case PaintKind::currentColor:
            return solidRgb(currentColor, painted.opacity, result);
        case PaintKind::cmyk: {
            std::array<float, 4> cmyk{};
            std::string_view text = paint.text;
            takeCmyk(text, cmyk);
            return solidRgb(cmykToRgb(cmyk), painted.opacity, result);
        }
        default:
            return false;
    }
}

// The paint of what is drawn around, where that stands: one gradient goes on from one marker to the next.
bool contextPaint(const Painted& painted, PaintKind kind, APaint& result) {
    DrawContext& context = painted.context;
    const ContextPaint* const around = context.contextPaint();
    if (!around) return false;
    const std::optional<AAffine> back = around->place.inverse();
    if (!back) return false;
    UserSpace space = around->space;
    space.toDrawing = context.place() * *back * space.toDrawing;
    BoundingBox box(around->box);
    const Paint& paint = kind == PaintKind::contextFill ? around->style.fill : around->style.stroke;
    context.setContextPaint(around->outer);
    const bool paints =
        stylePaint({context, space, box, painted.opacity}, paint, around->style.color, result);
    context.setContextPaint(around);
    return paints;
}

// The opacity that the style gives to what the model keeps as a plain colour.
double colorOpacity(DrawContext& context, const Paint& paint) {
    if (paint.kind == PaintKind::rgb) return paint.alpha / 255.0;
    if (paint.kind != PaintKind::reference) return 1;
    const pugi::xml_node server = context.tree().findResource(paint.text);
    if (isServer(kindOf(server))) return swatchOpacity(context, server);
    return paint.fallback == PaintKind::rgb ? paint.alpha / 255.0 : 1;
}

// The element of a gradient or pattern brush: that of its name, or what the style refers to where names had
// to be changed.
pugi::xml_node serverOf(DrawContext& context, const ABrushItem* item, const Paint& paint) {
    auto& cache = context.cache<BrushServers>(CacheOf::brushes);
    const auto [entry, isNew] = cache.byItem.try_emplace(item);
    if (isNew) {
        entry->second = context.tree().findResource(item->getName().toUtf8());
        if (!isServer(kindOf(entry->second)) && paint.kind == PaintKind::reference)
            entry->second = context.tree().findResource(paint.text);
    }
    return entry->second;
}

bool itemPaint(Painted painted, const AColorItem* color, const ABrushItem* item, const Paint& paint,
               std::uint32_t currentColor, APaint& result) {
    if (!color && item) {
        if (const auto* const plain = dynamic_cast<const ASolidBrushItem*>(item)) {
            color = plain->getColorItem();
        } else {
            if (serverPaint(painted, serverOf(painted.context, item, paint), result)) return true;
            Paint behind = paint;
            behind.kind = paint.kind == PaintKind::reference ? paint.fallback : PaintKind::none;
            return stylePaint(painted, behind, currentColor, result);
        }
    }
    if (!color) return false;
    return solid(color->getDisplayColor(), painted.opacity * colorOpacity(painted.context, paint), result);
}

// What is painted like something around it is placed there too, which the model knows nothing of.
bool isOfModel(const PaintSource& source, const Paint& paint) {
    return source.object && paint.kind != PaintKind::contextFill && paint.kind != PaintKind::contextStroke;
}

}  // namespace

bool hasFill(const PaintSource& source, const Style& style) {
    if (!source.visible.fill) return false;
    return isOfModel(source, style.fill) ? source.object->getBrush() != nullptr
                                         : style.fill.kind != PaintKind::none;
}

bool hasStroke(const PaintSource& source, const Style& style) {
    if (!source.visible.stroke || !(style.strokeWidth > 0)) return false;
    return isOfModel(source, style.stroke) ? source.object->getPen() != nullptr
                                           : style.stroke.kind != PaintKind::none;
}

bool fillPaint(DrawContext& context, const PaintSource& source, const Style& style, const UserSpace& space,
               BoundingBox& box, double opacity, APaint& paint) {
    const Painted painted{context, space, box, opacity * style.fillOpacity};
    if (!isOfModel(source, style.fill)) return stylePaint(painted, style.fill, style.color, paint);
    const ABrush* const brush = source.object->getBrush();
    return brush && itemPaint(painted, nullptr, brush->getBrushItem(), style.fill, style.color, paint);
}

bool strokePaint(DrawContext& context, const PaintSource& source, const Style& style, const UserSpace& space,
                 BoundingBox& box, double opacity, APaint& paint) {
    const Painted painted{context, space, box, opacity * style.strokeOpacity};
    if (!isOfModel(source, style.stroke)) return stylePaint(painted, style.stroke, style.color, paint);
    const APen* const pen = source.object->getPen();
    const APenItem* const item = pen ? pen->getPenItem() : nullptr;
    if (!item || item->getStyle() == APenItem::kStyleNone) return false;
    return itemPaint(painted, item->getColorItem(), item->getBrushItem(), style.stroke, style.color, paint);
}

}  // namespace svg
