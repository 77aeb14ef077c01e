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
    m_levels.push_back({style, space, 0, nullptr});
}

ElementWalk::~ElementWalk() {
    while (!m_levels.empty()) {  // more than one only when an exception passes
        for (; m_levels.back().clips > 0; --m_levels.back().clips) m_context.popClip();
        m_levels.pop_back();
    }
}

bool ElementWalk::open(pugi::xml_node container, Element element, Display display) {
    const Level& outer = m_levels.back();
    m_attributes.read(container);
    Level level{m_context.styleOf(container, m_attributes, outer.style, outer.space, m_room),
                enter(outer.space, element, m_attributes), 0, nullptr};
    Style& style = level.style;
    if (display == Display::ofModel) style.displayed = outer.style.displayed;
    if (!style.displayed) return false;
    AAffine shift;
    if (Compositing::isNeeded(style)) {
        UserSpace own = outer.space;
        if (m_attributes.has(Attribute::transform))
            own.toDrawing = own.toDrawing * parseTransform(m_attributes.get(Attribute::transform));
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
    return true;
}

void ElementWalk::openAround(pugi::xml_node container, Element element) {
    const Level& outer = m_levels.back();
    m_attributes.read(container);
    Level level{m_context.styleOf(container, m_attributes, outer.style, outer.space, m_room),
                enter(outer.space, element, m_attributes), 0, nullptr};
    level.style.displayed = outer.style.displayed;
    m_levels.push_back(std::move(level));
}

bool ElementWalk::beginRoot(pugi::xml_node root) {
    Level& level = m_levels.back();
    Style style = level.style;
    // The paper does not belong to the drawing, so the root's content blends with a transparent ground.
    style.own.blend = EBlend::normal;
    style.own.isolated = m_context.blends();
    if (!root || !Compositing::isNeeded(style)) return true;
    m_attributes.read(root);
    const UserSpace own = rootSpace(level.space, m_attributes);
    const DrawnElement drawn{root, m_attributes, style, own};
    BoundingBox box(m_context, drawn);
    level.compositing = std::make_unique<Compositing>(m_context);
    if (!level.compositing->begin(drawn, box, nullptr, style.own.opacity)) return false;
    level.space.toDrawing = level.compositing->shift() * level.space.toDrawing;
    return true;
}

void ElementWalk::openPlain() {
    m_levels.push_back({style(), space(), 0, nullptr});
}

void ElementWalk::close() {
    Level& level = m_levels.back();
    for (; level.clips > 0; --level.clips) m_context.popClip();
    if (level.compositing) level.compositing->end();
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
            if (frame.opened) close();
            if (frame.reference) m_context.leaveReference();
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
    // Of an object, the model knows whether it shows.
    if (!source.object && !(own.displayed && own.visible)) return;
    if (!m_attributes.has(Attribute::transform)) {
        paintDrawn({node, m_attributes, own, space()}, element, source);
        return;
    }
    UserSpace moved = space();
    moved.toDrawing = moved.toDrawing * parseTransform(m_attributes.get(Attribute::transform));
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
