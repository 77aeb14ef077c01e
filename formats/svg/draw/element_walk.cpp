#include "formats/svg/draw/element_walk.h"

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/images.h"
#include "formats/svg/draw/markers.h"
#include "formats/svg/draw/shapes.h"
#include "formats/svg/tree/object_class.h"
#include "formats/svg/tree/switch_case.h"

namespace svg {

pugi::xml_node useTarget(DrawContext& context, pugi::xml_node use) {
    const std::string_view id = referenceOf(use);
    const pugi::xml_node target = id.empty() ? pugi::xml_node() : context.tree().findAny(id);
    for (pugi::xml_node around = use; around; around = around.parent()) {
        if (around == target) return {};
    }
    return target;
}

namespace {

// The root's own user space, before its view box; `content`: the space inside.
UserSpace rootSpace(const UserSpace& content, const AttributeSet& root) {
    Page page;
    rootSpace(root, page);
    const AAffine toContent{1 / page.scale, 0, 0, 1 / page.scale, page.area.left, page.area.top};
    return {content.toDrawing * toContent, page.area.Width() * page.scale, page.area.Height() * page.scale};
}

}  // namespace

ElementWalk::ElementWalk(DrawContext& context, const Style& style, const UserSpace& space)
    : m_context(context) {
    m_levels.push_back({style, space, 0, nullptr, nullptr});
}

ElementWalk::~ElementWalk() {
    while (!m_levels.empty()) {  // more than one only when an exception passes
        if (m_levels.back().paint) m_context.setContextPaint(m_levels.back().paint->outer);
        for (; m_levels.back().clips > 0; --m_levels.back().clips) m_context.popClip();
        m_levels.pop_back();
    }
}

bool ElementWalk::open(pugi::xml_node container, Element element, Display display) {
    const Level& outer = m_levels.back();
    m_attributes.read(container);
    Level level{m_context.styleOf(container, m_attributes, outer.style, outer.space, m_room), outer.space, 0,
                nullptr, nullptr};
    Style& style = level.style;
    if (display == Display::ofModel) style.displayed = outer.style.displayed;
    if (!style.displayed || !isWanted(m_attributes)) return false;
    if (isViewport(element) && isEmptyViewBox(m_attributes.get(Attribute::viewBox))) return false;
    readOwnTransform(container, style);
    level.space = enter(outer.space, element, m_attributes);
    AAffine shift;
    if (hasEffects(style)) {
        UserSpace own = outer.space;
        own.toDrawing = own.toDrawing * ownTransform(m_attributes);
        const DrawnElement drawn{container, m_attributes, style, own};
        BoundingBox box(m_context, drawn);
        level.compositing = std::make_unique<Compositing>(m_context);
        if (!level.compositing->begin(drawn, box, nullptr, style.own.opacity)) return false;
        shift = level.compositing->shift();
        level.space.toDrawing = shift * level.space.toDrawing;
    }
    if (isViewport(element) && !style.own.showsOverflow) {
        const UserSpace port = viewportOf(outer.space, m_attributes);
        if (!(port.width > 0 && port.height > 0)) return false;
        m_context.pushClip(APath::rectangle({0, 0, port.width, port.height}), shift * port.toDrawing,
                           EFillRule::nonZero);
        if (isEmpty(m_context.clipBounds())) {
            m_context.popClip();
            return false;
        }
        level.clips = 1;
    }
    m_levels.push_back(std::move(level));
    if (element == Element::use && m_context.usesContextPaint()) lendPaint(container);
    return true;
}

void ElementWalk::openAround(pugi::xml_node container, Element element) {
    const Level& outer = m_levels.back();
    m_attributes.read(container);
    Level level{m_context.styleOf(container, m_attributes, outer.style, outer.space, m_room), outer.space, 0,
                nullptr, nullptr};
    readOwnTransform(container, level.style);
    level.space = enter(outer.space, element, m_attributes);
    level.style.displayed = outer.style.displayed;
    m_levels.push_back(std::move(level));
    if (element == Element::use && m_context.usesContextPaint()) lendPaint(container);
}

void ElementWalk::readOwnTransform(pugi::xml_node node, const Style& style) {
    if (!hasOwnTransform(style)) return;
    const DrawnElement drawn{node, m_attributes, style, space()};
    readTransform(m_attributes, style, space(), [&] { return m_context.boundsOf(drawn); });
}

bool ElementWalk::beginRoot(pugi::xml_node root) {
    Level& level = m_levels.back();
    Style style = level.style;
    // The paper does not belong to the drawing, so the root's content blends with a transparent ground.
    style.own.blend = EBlend::normal;
    style.own.isolated = m_context.blends();
    if (!root) return true;
    m_attributes.read(root);
    readGeometry(m_attributes, style);
    if (style.own.background.kind != PaintKind::none) paintBackground(style, m_attributes);
    if (!hasEffects(style)) return true;
    const UserSpace own = rootSpace(level.space, m_attributes);
    const DrawnElement drawn{root, m_attributes, style, own};
    BoundingBox box(m_context, drawn);
    level.compositing = std::make_unique<Compositing>(m_context);
    if (!level.compositing->begin(drawn, box, nullptr, style.own.opacity)) return false;
    level.space.toDrawing = level.compositing->shift() * level.space.toDrawing;
    return true;
}

// The root's background lies under the whole page, whatever effects the root has.
void ElementWalk::paintBackground(const Style& style, const AttributeSet& root) {
    const Paint& color = style.own.background;
    const UserSpace own = rootSpace(m_levels.back().space, root);
    const std::uint32_t rgb = color.kind == PaintKind::currentColor ? style.color : color.rgb;
    const double opacity = color.kind == PaintKind::rgb ? color.alpha / 255.0 : 1;
    const AFRect page{0, 0, own.width, own.height};
    m_context.touch(pixelsAround(rectBounds(own.toDrawing, page), 1));
    m_context.fill(APath::rectangle(page), own.toDrawing,
                   {AColor(RGB(rgb >> 16 & 0xff, rgb >> 8 & 0xff, rgb & 0xff), opacity)}, EFillRule::nonZero);
}

void ElementWalk::openPlain() {
    m_levels.push_back({style(), space(), 0, nullptr, nullptr});
}

// What a "use" is painted with, for what it repeats. It is open.
void ElementWalk::lendPaint(pugi::xml_node use) {
    Level& level = m_levels.back();
    level.paint = std::make_unique<ContextPaint>();
    ContextPaint& paint = *level.paint;
    paint.style = level.style;
    paint.space = level.space;
    paint.place = m_context.place();
    paint.outer = m_context.contextPaint();
    const DrawnElement drawn{use, m_attributes, level.style, level.space};
    if (level.style.fill.kind == PaintKind::reference || level.style.stroke.kind == PaintKind::reference)
        paint.box = m_context.boundsOf(drawn);
    m_context.setContextPaint(&paint);
}

void ElementWalk::close() {
    Level& level = m_levels.back();
    for (; level.clips > 0; --level.clips) m_context.popClip();
    if (level.compositing) level.compositing->end();
    if (level.paint) m_context.setContextPaint(level.paint->outer);
    m_levels.pop_back();
}

void ElementWalk::paint(pugi::xml_node element, const PaintSource& source) {
    const Element kind = kindOf(element);
    if (isDrawn(kind) && !isContainer(kind)) return paintLeaf(element, kind, source);
    // An object that is drawn by a whole group: its paint is what is inside.
    const PaintSource content{nullptr, source.visible};
    enterContainer(element, kind);
    run(content);
}

void ElementWalk::paintChildren(pugi::xml_node parent, const PaintSource& source) {
    m_frames.push_back({parent.first_child()});
    run(source);
}

void ElementWalk::run(const PaintSource& source) {
    while (!m_frames.empty()) {
        Frame& frame = m_frames.back();
        const pugi::xml_node node = frame.next;
        if (!node) {
            // What closes it, a mask perhaps, may repeat the same element.
            if (frame.reference) m_context.leaveReference();
            if (frame.opened) close();
            m_frames.pop_back();
            continue;
        }
        frame.next = frame.single ? pugi::xml_node() : node.next_sibling();
        step(node, frame.reference, source);
    }
}

void ElementWalk::step(pugi::xml_node node, bool inUse, const PaintSource& source) {
    const Element element = kindOf(node);
    const bool container = isContainer(element) || (inUse && element == Element::symbol);
    if ((!container && !isDrawn(element)) || !m_context.spend(1)) return;
    if (container) {
        enterContainer(node, element);
    } else {
        paintLeaf(node, element, source);
    }
}

void ElementWalk::enterContainer(pugi::xml_node node, Element element) {
    if (m_levels.size() >= static_cast<std::size_t>(kDeepestNesting)) return;
    Frame frame{node.first_child(), false, element == Element::use, true};
    if (element == Element::use) frame.next = useTarget(m_context, node);
    if (element == Element::switch_) frame.next = chosenCase(node);
    frame.single = frame.reference || element == Element::switch_;
    if (!frame.next || !open(node, element, Display::ofElement)) return;
    if (frame.reference && !m_context.enterReference(frame.next)) return close();
    m_frames.push_back(frame);
}

void ElementWalk::paintLeaf(pugi::xml_node node, Element element, const PaintSource& source) {
    m_attributes.read(node);
    const Style& own = m_context.styleOf(node, m_attributes, style(), space(), m_room);
    // Of an object, the model knows whether it shows. What a filter makes of nothing shows in any case.
    const bool seen = own.visible || !own.own.filter.empty();
    if (!source.object && !(own.displayed && seen && isWanted(m_attributes))) return;
    readOwnTransform(node, own);
    if (!m_attributes.has(Attribute::transform)) {
        paintDrawn({node, m_attributes, own, space()}, element, source);
        return;
    }
    UserSpace moved = space();
    moved.toDrawing = moved.toDrawing * ownTransform(m_attributes);
    paintDrawn({node, m_attributes, own, moved}, element, source);
}

void ElementWalk::paintDrawn(const DrawnElement& drawn, Element element, const PaintSource& source) {
    if (element == Element::text) {
        paintText(drawn, source);
    } else if (element == Element::image) {
        paintPicture(drawn);
    } else {
        paintShape(drawn, element, source);
    }
}

}  // namespace svg
