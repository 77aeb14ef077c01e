#include "formats/svg/draw/effect.h"

#include "formats/svg/draw/clip.h"
#include "formats/svg/draw/filters.h"
#include "formats/svg/draw/mask.h"
#include "formats/svg/draw/pixel_area.h"
#include "formats/svg/transform.h"

namespace svg {

Effect::~Effect() {
    // Left without an end: nothing is drawn, but the canvas is as before.
    m_on.reset();
    popClips();
}

void Effect::popClips() {
    for (; m_clips > 0; --m_clips) m_context.popClip();
}

bool Effect::begin(const DrawnElement& element, BoundingBox& box, const RECT* reach, double opacity) {
    m_view = m_outerView = element.view;
    m_opacity = opacity;
    if (!(opacity > 0)) return false;
    const DrawStyle& style = element.style;
    if (!style.clipPath.empty() &&
        !pushClipPath(m_context, style.clipPath, element.view, box, m_clips, m_clipPaths)) {
        popClips();
        return false;
    }
    std::string_view text = style.mask;
    std::string_view id;
    if (!text.empty() && takeUrl(text, id)) {
        m_mask = m_context.tree().findResource(id);
        if (kindOf(m_mask) != Element::mask) m_mask = {};
    }
    m_filtered = !style.filter.empty() && hasFilter(m_context, style.filter);
    const bool needsImage = opacity < 1 || m_mask || m_filtered || !m_clipPaths.empty();
    if (needsImage ? beginImage(element, box, reach) : !isEmpty(m_context.clipBounds())) return true;
    popClips();
    return false;
}

bool Effect::beginImage(const DrawnElement& element, BoundingBox& box, const RECT* reach) {
    RECT area = m_context.clipBounds();
    if (reach && !m_filtered) area = intersection(area, *reach);
    if (m_mask) {
        AFRect region;
        if (maskNeedsBox(m_mask)) m_box = box.get();
        if (!maskRegion(m_context, m_mask, element.view, m_box, region)) return false;
        area = intersection(area, pixelsAround(rectBounds(element.view.toDrawing, region), 1));
    }
    if (m_filtered || !m_clipPaths.empty()) m_box = box.get();
    if (isEmpty(area)) return false;
    m_style = element.style;
    if (m_filtered) {
        area = filterBounds(m_context, {m_style.filter, m_box, m_outerView, m_style}, area);
        if (isEmpty(area)) return false;
    }
    m_image = AImage(area.right - area.left, area.bottom - area.top);
    m_canvas = std::make_unique<ACanvas>(pixelsOf(m_image));
    m_area = area;
    m_view.toDrawing = shift() * m_view.toDrawing;
    m_on.emplace(m_context, *m_canvas);
    return true;
}

void Effect::end() {
    if (m_on) finishImage();
    popClips();
}

void Effect::finishImage() {
    m_on.reset();
    m_canvas.reset();  // the pixels are complete
    if (m_filtered)
        applyFilter(m_context, {m_style.filter, m_box, m_outerView, m_style}, m_image,
                    {m_area.left, m_area.top});
    for (const pugi::xml_node clipPath : m_clipPaths) clipImage(m_context, clipPath, m_view, m_box, m_image);
    if (m_mask) maskImage(m_context, m_mask, m_view, m_box, m_image);
    const AAffine place = AAffine::translation(m_area.left, m_area.top);
    m_context.canvas().drawImage(m_image, place, m_opacity, false);
    m_image = AImage();
}

}  // namespace svg
