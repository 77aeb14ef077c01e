#include "formats/svg/import/importer.h"

#include <algorithm>

#include "formats/svg/import/image_model.h"
#include "formats/svg/import/text_bounds.h"
#include "formats/svg/tree/switch_case.h"
#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

// How many elements "use" may repeat in all.
constexpr std::size_t kRepeatableAtLeast = 100'000;
constexpr std::size_t kRepeatablePerElement = 100;
constexpr std::size_t kRepeatableAtMost = 2'000'000;

constexpr std::size_t kElementsBetweenAsking = 4096;

bool isTrue(std::string_view text) {
    return trim(text) == "true";
}

AFRect boxOf(Element element, const AttributeSet& attributes, const UserSpace& space, double fontSize) {
    const bool curve =
        element == Element::path || element == Element::polygon || element == Element::polyline;
    return curve ? curveBounds(element, attributes, space)
                 : shapeBounds(element, attributes, space, fontSize);
}

}  // namespace

Importer::Importer(ADocument& document, DrawingIndex& index)
    : m_document(document),
      m_index(index),
      m_styles(Vocabulary::model),
      m_paint(document.getPaint(), index, m_styles),
      m_names(index, document.getNames()),
      m_repeatable(
          std::min(kRepeatableAtLeast + kRepeatablePerElement * index.elementCount(), kRepeatableAtMost)) {}

bool Importer::run(pugi::xml_node root, UserSpace& space, const std::function<bool(std::size_t)>& goesOn) {
    m_root = root;
    for (const pugi::xml_node style : m_index.styles()) m_styles.sheet().add(styleText(style));
    m_document.reserve(m_index.elementCount());

    m_attributes.read(root, m_namespaces);
    Page page;
    space = rootSpace(m_attributes, page);
    const Style style = m_styles.compute(root, m_attributes, {Style()});
    if (hasOwnTransform(style)) {
        readTransform(m_attributes, style, space, [&] { return page.area; });
        space = rootSpace(m_attributes, page);
    }
    m_document.setPage(page.area, page.scale);
    m_frames.push_back({root, root.first_child(), nullptr, style, space, m_namespaces.size(), false, false,
                        hasOwnTransform(style)});
    for (std::size_t count = 0; !m_frames.empty() && !m_styles.sheet().isSpent(); ++count) {
        if (count % kElementsBetweenAsking == 0 && goesOn && !goesOn(count)) return false;
        Frame& frame = m_frames.back();
        const pugi::xml_node node = frame.next;
        if (!node) {
            m_frames.pop_back();
            if (!m_frames.empty()) m_namespaces.shrink(m_frames.back().namespaces);
            continue;
        }
        frame.next = frame.single ? pugi::xml_node() : node.next_sibling();
        if (frame.repeating && !spendRepeating(1)) continue;
        read(node);
    }
    return !m_styles.sheet().isSpent();
}

bool Importer::spendRepeating(std::size_t nodes) {
    const bool enough = m_repeatable >= nodes;
    m_repeatable = enough ? m_repeatable - nodes : 0;
    return enough;
}

void Importer::read(pugi::xml_node node) {
    const Element element = kindOf(node);
    const Frame& frame = m_frames.back();
    const bool inUse = frame.single && kindOf(frame.node) == Element::use;
    if (!isDrawn(element) && !(element == Element::symbol && inUse)) return;
    const std::size_t namespaces = m_namespaces.size();
    m_attributes.read(node, m_namespaces);
    if (isDrawing(node, m_namespaces)) {
        const bool layer = frame.container == nullptr && element == Element::g &&
                           m_attributes.get(Attribute::groupMode) == "layer";
        if (layer) {
            readLayer(node);
        } else {
            readObject(node, element);
        }
    }
    // What this element declared holds for its content; a container that was entered takes it away later.
    if (m_frames.back().node != node) m_namespaces.shrink(namespaces);
}

void Importer::readLayer(pugi::xml_node node) {
    const Frame& top = m_frames.back();
    Style style = m_styles.compute(node, m_attributes, {top.style});
    const bool master =
        m_attributes.get(Attribute::kzDatabase) == "master" && m_document.getSecondaryDatabase();
    ADatabase& database = master ? *m_document.getSecondaryDatabase() : m_document.getDatabase();
    std::string_view title = m_attributes.get(Attribute::label);
    if (title.empty()) title = m_attributes.get(Attribute::id);
    if (title.empty()) title = "Layer";
    ALayer* const layer = m_document.createLayer(database, m_classes.layerClass(m_attributes),
                                                 AString::fromUtf8(cleanName(title, m_buffer)));
    layer->setLocked(isTrue(m_attributes.get(Attribute::insensitive)));
    layer->setHidden(!style.displayed || !isWanted(m_attributes));
    layer->setSourceIndex(static_cast<std::uint32_t>(node.offset_debug()));
    style.displayed = top.style.displayed;
    const bool moved = moves(style, Element::g) || top.moved;
    const UserSpace space = enter(top.space, Element::g, m_attributes);
    m_frames.push_back(
        {node, node.first_child(), layer, style, space, m_namespaces.size(), false, false, moved});
}

// Whether a style moves an element. Its attributes then say where to.
bool Importer::moves(const Style& style, Element element) {
    if (!hasOwnTransform(style)) return false;
    const UserSpace& around = m_frames.back().space;
    // The box of what holds others is not known yet.
    readTransform(m_attributes, style, around, [&] {
        const UserSpace own{AAffine(), around.width, around.height};
        AttributeSet still = m_attributes;
        still.setTransform({});
        return isContainer(element) ? AFRect() : boxOf(element, still, own, style.fontSize);
    });
    return true;
}

AParent& Importer::looseLayer() {
    if (m_looseLayer != nullptr) return *m_looseLayer;
    // Drawing programs call their first layer "Layer 1" too.
    TextSet titles;
    for (const pugi::xml_node child : m_root.children()) {
        for (const pugi::xml_attribute attribute : child.attributes()) {
            if (splitName(attribute.name()).local == "label") titles.insert(attribute.value());
        }
    }
    std::string title;
    for (int number = 1; title.empty() || titles.contains(title); ++number) {
        title = "Layer " + std::to_string(number);
    }
    static const AClassInfo& layerClass = *findClass(_T("ALayer"));
    m_looseLayer = m_document.createLayer(m_document.getDatabase(), layerClass, AString::fromUtf8(title));
    return *m_looseLayer;
}

AObject* Importer::createObject(const AClassInfo& row, pugi::xml_node node, Element element) {
    const std::string_view id = m_attributes.get(Attribute::id);
    if (id.empty() || m_frames.back().repeating) {
        const std::string_view word = splitName(node.name()).local;
        return m_document.createObject(row, m_names.make(static_cast<std::size_t>(element), word));
    }
    const std::string_view name = cleanName(id, m_buffer);
    AObject* const object = m_document.tryCreateObject(row, name);
    return object != nullptr ? object : m_document.createObject(row, m_names.another(name));
}

void Importer::readObject(pugi::xml_node node, Element element) {
    if (m_attributes.has(Attribute::id)) m_document.getNames().prefetch(m_attributes.get(Attribute::id));
    const Style& computed = m_styles.compute(node, m_attributes, {m_frames.back().style}, m_ownStyle);
    const bool conditional =
        m_attributes.has(Attribute::systemLanguage) || m_attributes.has(Attribute::requiredExtensions);
    const bool wanted = !conditional || isWanted(m_attributes);
    if (!wanted) {
        if (&computed != &m_ownStyle) m_ownStyle = computed;
        m_ownStyle.displayed = false;
    }
    const Style& style = wanted ? computed : m_ownStyle;
    const bool moved = (hasOwnTransform(style) && moves(style, element)) || m_frames.back().moved;
    const auto refersTo = [&](std::string_view text, Element kind) {
        std::string_view id;
        return !text.empty() && takeUrl(text, id) && kindOf(m_index.findResource(id)) == kind;
    };
    const bool masked =
        refersTo(style.own.mask, Element::mask) || refersTo(style.own.clipPath, Element::clipPath);
    const bool onPath = element == Element::text && findTextPath(node);
    const AClassInfo& row = m_classes.classFor(element, m_attributes, masked, onPath);

    AParent* container = m_frames.back().container ? m_frames.back().container : &looseLayer();
    if (!style.own.filter.empty() && row.kind != AClassKind::effect && isShadow(style.own.filter)) {
        AObject* const effect =
            m_document.createObject(m_classes.shadow(), m_names.make(kShadowStem, "shadow"));
        container->appendChild(effect);
        container = static_cast<AParent*>(effect);
    }
    AObject* const object = createObject(row, node, element);
    object->setSourceIndex(static_cast<std::uint32_t>(node.offset_debug()));
    container->appendChild(object);

    const bool drawsItself = !isContainerClass(row) || row.kind == AClassKind::composite;
    if (drawsItself && !(style.displayed && style.visible)) object->setObjectFlags(kObjectHidden, true);
    if (isTrue(m_attributes.get(Attribute::insensitive))) object->setObjectFlags(kObjectLocked, true);
    if (isContainerClass(row)) {
        enterContainer(static_cast<AParent&>(*object), node, element, style, moved);
        return;
    }
    if (row.kind == AClassKind::bitmap) {
        static_cast<ABitmap*>(object)->setColorModel(colorModelOf(m_attributes));
    } else {
        // The last kinds are those of what stands around.
        if (style.fill.kind >= PaintKind::contextFill || style.stroke.kind >= PaintKind::contextFill) {
            setContextPaint(*object, style);
        } else {
            object->setBrush(m_paint.brush(style.fill, style.color));
            object->setPen(m_paint.pen(style.stroke, style.color));
        }
    }
    setGeometry(*object, node, element, style, moved);
}

void Importer::setContextPaint(AObject& object, const Style& style) {
    const auto isOfContext = [](const Paint& paint) { return paint.kind >= PaintKind::contextFill; };
    // What a "use" is painted with stands for its context.
    struct Found {
        Paint paint;
        std::uint32_t color;
    };
    const auto find = [&](Found found) {
        for (std::size_t i = m_frames.size(); i-- > 0 && isOfContext(found.paint);) {
            if (kindOf(m_frames[i].node) != Element::use) continue;
            const Style& around = m_frames[i].style;
            found = {found.paint.kind == PaintKind::contextFill ? around.fill : around.stroke, around.color};
        }
        if (isOfContext(found.paint)) found.paint.kind = PaintKind::none;
        return found;
    };
    const Found fill = find({style.fill, style.color});
    const Found stroke = find({style.stroke, style.color});
    object.setBrush(m_paint.brush(fill.paint, fill.color));
    object.setPen(m_paint.pen(stroke.paint, stroke.color));
}

void Importer::setGeometry(AObject& object, pugi::xml_node node, Element element, const Style& style,
                           bool moved) {
    const UserSpace& space = m_frames.back().space;
    switch (element) {
        case Element::rect:
        case Element::circle:
        case Element::ellipse:
        case Element::line:
        case Element::image:
            // The geometry source knows no styles, so lengths in other than the usual em and transforms of styles
            // are read at once.
            if (style.fontSize != kUsualFontSize || moved) {
                object.setBoundingRect(shapeBounds(element, m_attributes, space, style.fontSize));
                break;
            }
            object.setObjectFlags(kObjectBoundsPending, true);
            break;
        case Element::path:
        case Element::polygon:
        case Element::polyline:
            if (moved) {
                object.setBoundingRect(curveBounds(element, m_attributes, space));
                break;
            }
            object.setObjectFlags(kObjectBoundsPending, true);
            break;
        case Element::text:
            object.setBoundingRect(textBounds(node, m_attributes, style, space, m_styles, m_index));
            break;
        default:
            object.setBoundingRect(contentBounds(node, style));
            break;
    }
}

// The box of a container that is a single object: that of the shapes inside.
AFRect Importer::contentBounds(pugi::xml_node node, const Style& style) {
    struct Level {
        UserSpace space;
        Style style;
    };
    BoundsBuilder bounds;
    std::vector<Level> around{{m_frames.back().space, style}};
    around.push_back({enter(around[0].space, kindOf(node), m_attributes), style});
    Namespaces namespaces;
    AttributeSet attributes;
    int depth = 1;
    bool inside = true;
    for (pugi::xml_node at = nextNode(node, node, depth); at; at = nextNode(at, node, depth, inside)) {
        if (m_frames.back().repeating && !spendRepeating(1)) break;
        around.resize(static_cast<std::size_t>(depth), around[0]);
        const Element element = kindOf(at);
        inside = element != Element::use && element != Element::text && isContainer(element);
        if (!isDrawn(element)) continue;
        attributes.read(at, namespaces);
        namespaces.shrink(0);
        const Level level = around.back();
        const Style own = m_styles.compute(at, attributes, {level.style});
        if (hasOwnTransform(own)) readTransform(attributes, own, level.space, [] { return AFRect(); });
        AFRect box;
        if (inside) {
            around.push_back({enter(level.space, element, attributes), own});
        } else if (element == Element::text) {
            box = textBounds(at, attributes, own, level.space, m_styles, m_index);
        } else {
            box = boxOf(element, attributes, level.space, own.fontSize);
        }
        if (box != AFRect()) bounds.add(box);
    }
    return bounds.get();
}

void Importer::enterContainer(AParent& container, pugi::xml_node node, Element element, const Style& style,
                              bool moved) {
    if (m_frames.size() >= static_cast<std::size_t>(kDeepestNesting)) return;  // only "use" gets here
    Frame frame{node,
                node.first_child(),
                &container,
                style,
                enter(m_frames.back().space, element, m_attributes),
                m_namespaces.size(),
                false,
                m_frames.back().repeating,
                moved};
    if (element == Element::use) {
        enterUse(std::move(frame));
        return;
    }
    if (element == Element::switch_) {
        frame.next = chosenCase(node);
        frame.single = true;
    }
    m_frames.push_back(std::move(frame));
}

void Importer::enterUse(Frame frame) {
    const std::string_view id = localReference(m_attributes.get(Attribute::href));
    const pugi::xml_node target = id.empty() ? pugi::xml_node() : m_index.findAny(id);
    if (!target || target == frame.node) return;
    for (const Frame& open : m_frames) {
        if (open.node == target) return;  // would repeat itself for ever
    }
    frame.next = target;
    frame.single = frame.repeating = true;
    m_frames.push_back(std::move(frame));
}

// A filter that draws a shadow: it says so, or moves a copy and puts the original over it.
bool Importer::isShadow(std::string_view filter) {
    if (startsWithNoCase(filter, "drop-shadow(")) return true;
    std::string_view id;
    if (!takeUrl(filter, id)) return false;
    const pugi::xml_node node = m_index.findResource(id);
    if (kindOf(node) != Element::filter) return false;
    bool moved = false;
    bool joined = false;
    for (const pugi::xml_node child : node.children()) {
        const Element element = kindOf(child);
        if (element == Element::feDropShadow) return true;
        moved |= element == Element::feOffset;
        joined |=
            element == Element::feMerge || element == Element::feBlend || element == Element::feComposite;
    }
    return moved && joined;
}

}  // namespace svg
