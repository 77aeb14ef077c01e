#include "formats/svg/draw/inner_drawing.h"

#include "formats/svg/draw/element_walk.h"
#include "formats/svg/xml/encoding.h"
#include "formats/svg/xml/entities.h"

namespace svg {

std::unique_ptr<InnerDrawing> InnerDrawing::read(std::string bytes) {
    convertToUtf8(bytes);
    EntityError error;
    std::vector<EntityUse> uses;
    if (!expandEntities(bytes, error, uses)) return nullptr;
    std::unique_ptr<InnerDrawing> drawing(new InnerDrawing(std::move(bytes)));
    const DrawingTree tree(drawing->m_text);
    if (kindOf(tree.root()) != Element::svg) return nullptr;
    AttributeSet attributes;
    attributes.read(tree.root());
    drawing->m_root = rootSpace(attributes, drawing->m_page);
    const AFRect& area = drawing->m_page.area;
    const double scale = drawing->m_page.scale;
    drawing->m_size = {area.Width() * scale, area.Height() * scale};
    return drawing;
}

bool InnerDrawing::draw(DrawContext& around, ACanvas& canvas, const AAffine& toPixels) {
    UserSpace root = m_root;
    const AFRect& area = m_page.area;
    root.toDrawing =
        toPixels * AAffine::scaling(m_page.scale) * translation(-area.left, -area.top) * root.toDrawing;
    if (m_context) {
        m_context->restart(root, canvas);
    } else {
        m_context = std::make_unique<PictureContext>(m_text, root, canvas);
    }
    if (!around.lendTo(*m_context)) return false;
    {
        const pugi::xml_node node = m_context->tree().root();
        ElementWalk walk(*m_context, m_context->styleAt(node), root);
        m_context->pushClip(APath::rectangle(area), root.toDrawing, EFillRule::nonZero);
        if (walk.beginRoot(node)) walk.paintChildren(node, {});
        walk.close();
        m_context->popClip();
    }
    around.takeBack(*m_context);
    return true;
}

}  // namespace svg
