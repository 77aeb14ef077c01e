#include "formats/svg/draw/picture_context.h"
#include "formats/svg/draw/element_walk.h"
#include "formats/svg/draw/images.h"
#include "formats/svg/draw/shapes.h"
#include "formats/svg/draw/text/text.h"
#include "formats/svg/tree/object_class.h"
#include "formats/svg/tree/switch_case.h"

namespace svg {

namespace {

// Collects the extent of everything inside an element, in that element's user space.
class ContentBounds {
public:
    explicit ContentBounds(DrawContext& context) : m_context(context) {}

    // `space`: the one in which the element stands.
    AFRect of(pugi::xml_node element, const Style& around, const UserSpace& space) {
        m_levels.push_back({{}, around, space, false, false});
        visit(element, true, true);
        while (m_levels.size() > 1) {
            Level& level = m_levels.back();
            const pugi::xml_node node = level.next;
            if (!node) {
                if (level.reference) m_context.leaveReference();
                m_levels.pop_back();
                continue;
            }
            level.next = level.single ? pugi::xml_node() : node.next_sibling();
            visit(node, level.reference);
        }
        return m_bounds.get();
    }

private:
    struct Level {
        pugi::xml_node next;
        Style style;
        UserSpace space;
        bool single;
        bool reference;
    };

    // `still`: the element's own transform does not belong to its user space.
    void visit(pugi::xml_node node, bool mayBeSymbol, bool still = false) {
        const Element element = kindOf(node);
        const bool container = isContainer(element) || (mayBeSymbol && element == Element::symbol);
        if ((!container && !isDrawn(element)) || !m_context.spend(1)) return;
        const Level& outer = m_levels.back();
        m_attributes.read(node);
        const Style& style = m_context.styleOf(node, m_attributes, outer.style, outer.space, m_room);
        if (!style.displayed || !isWanted(m_attributes)) return;
        if (still) {
            readGeometry(m_attributes, style);
            m_attributes.setTransform({});
        } else if (hasOwnTransform(style)) {
            const DrawnElement drawn{node, m_attributes, style, outer.space};
            readTransform(m_attributes, style, outer.space, [&] { return m_context.boundsOf(drawn); });
        }
        const UserSpace inner = enter(outer.space, element, m_attributes);
        if (!container) return addLeaf({node, m_attributes, style, inner}, element);
        if (m_levels.size() >= static_cast<std::size_t>(kDeepestNesting)) return;
        Level level{node.first_child(), style, inner, false, element == Element::use};
        if (element == Element::use) {
            level.next = useTarget(m_context, node);
            if (!m_context.enterReference(level.next)) return;
        } else if (element == Element::switch_) {
            level.next = chosenCase(node);
        }
        level.single = element == Element::use || element == Element::switch_;
        m_levels.push_back(level);
    }

    void addLeaf(const DrawnElement& leaf, Element element) {
        m_path.clear();
        if (element == Element::text) {
            m_pieces.clear();
            layOutText(m_context, leaf, m_pieces);
            for (const TextPiece& piece : m_pieces) m_bounds.add(rectBounds(leaf.space.toDrawing, piece.box));
            return;
        }
        const bool image = element == Element::image;
        appendShape(image ? Element::rect : element, leaf.attributes, leaf.space, leaf.style.fontSize,
                    m_path);
        m_placed.clear();
        m_placed.append(m_path, leaf.space.toDrawing);
        if (!m_placed.empty()) m_bounds.add(outlineBounds(m_placed));
    }

    DrawContext& m_context;
    BoundsBuilder m_bounds;
    std::vector<Level> m_levels;
    AttributeSet m_attributes;
    Style m_room;
    APath m_path;
    APath m_placed;
    std::vector<TextPiece> m_pieces;
};

}  // namespace

void PictureContext::paintChildren(pugi::xml_node parent, const Style& style, const UserSpace& space) {
    ElementWalk(*this, style, space).paintChildren(parent, {});
}

AFRect PictureContext::boundsOf(const DrawnElement& element) {
    // Boxes of boxes of boxes, each of which a transform refers to: the innermost ones count as empty.
    constexpr int kMostBoxes = 8;
    if (m_boxes == kMostBoxes) return {};
    struct Deeper {
        explicit Deeper(int& count) : depth(++count) {}
        ~Deeper() { --depth; }
        int& depth;
    } const deeper(m_boxes);
    const UserSpace space{AAffine(), element.space.width, element.space.height};
    return ContentBounds(*this).of(element.node, element.style, space);
}

void PictureContext::paintElement(pugi::xml_node element, const Style& style, const UserSpace& space) {
    ElementWalk(*this, style, space).paint(element, {});
}

void PictureContext::paintUri(std::string_view uri, const AFRect& viewport, std::string_view aspect,
                              const UserSpace& space, bool smooth) {
    svg::paintUri(*this, {uri, viewport, aspect, smooth, 1}, space);
}

}  // namespace svg
