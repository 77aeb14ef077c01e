#include "formats/svg/tree/object_class.h"

#include <cmath>
#include <numbers>

#include "formats/svg/values/text_scan.h"
#include "formats/svg/values/units.h"
#include "kzutil/utf.h"

namespace svg {

namespace {

// Whether a path drawn as an arc goes all the way round: without ends, or with ends a whole turn apart.
bool isFullTurn(const AttributeSet& attributes) {
    double ends[2];
    int at = 0;
    for (const Attribute attribute : {Attribute::arcStart, Attribute::arcEnd}) {
        std::string_view text = trim(attributes.get(attribute));
        if (!takeNumber(text, ends[at++])) return true;
    }
    return std::fabs(std::remainder(ends[1] - ends[0], 2 * std::numbers::pi)) < 1e-6;
}

}  // namespace

ObjectClasses::ObjectClasses()
    : m_rectangle(findClass(_T("ARectangle"))),
      m_oval(findClass(_T("AOval"))),
      m_polygon(findClass(_T("APolygon"))),
      m_starburst(findClass(_T("AStarburst"))),
      m_fan(findClass(_T("AFan"))),
      m_path(findClass(_T("AEditPath"))),
      m_text(findClass(_T("AText"))),
      m_pathText(findClass(_T("ACombinePathText"))),
      m_bitmap(findClass(_T("ABitmap"))),
      m_group(findClass(_T("AGroup"))),
      m_composite(findClass(_T("AComposite"))),
      m_mask(findClass(_T("AMask"))),
      m_shadow(findClass(_T("AShadow"))),
      m_layer(findClass(_T("ALayer"))) {}

const AClassInfo* ObjectClasses::named(std::string_view name) {
    const auto [entry, isNew] = m_named.try_emplace(name);
    if (isNew) entry->second = findClass(kzutil::widen(name));
    return entry->second;
}

const AClassInfo& ObjectClasses::pathClass(const AttributeSet& attributes) const {
    const std::string_view type = attributes.get(Attribute::drawingType);
    if (type == "star") return attributes.get(Attribute::flatSided) == "true" ? *m_polygon : *m_starburst;
    if (type == "arc") return isFullTurn(attributes) ? *m_oval : *m_fan;
    return *m_path;
}

const AClassInfo& ObjectClasses::classFor(Element element, const AttributeSet& attributes, bool masked,
                                          bool onPath) {
    if (attributes.has(Attribute::kzClass)) {
        const AClassInfo* const row = named(attributes.get(Attribute::kzClass));
        const bool leaf = row && (row->kind == AClassKind::leaf || row->kind == AClassKind::bitmap);
        // A container may be one object whose drawing is the content, such as a dimension. A shape holds
        // nothing, so it cannot be a group.
        if (leaf || (row && isContainerClass(*row) && isContainer(element))) return *row;
    }
    switch (element) {
        case Element::rect:
            return *m_rectangle;
        case Element::circle:
        case Element::ellipse:
            return *m_oval;
        case Element::polygon:
            return *m_polygon;
        case Element::path:
            return attributes.has(Attribute::drawingType) ? pathClass(attributes) : *m_path;
        case Element::line:
        case Element::polyline:
            return *m_path;
        case Element::text:
            return onPath ? *m_pathText : *m_text;
        case Element::image:
            return *m_bitmap;
        case Element::use:
            return *m_composite;
        default:
            return masked ? *m_mask : *m_group;
    }
}

const AClassInfo& ObjectClasses::layerClass(const AttributeSet& attributes) {
    const AClassInfo* const row =
        attributes.has(Attribute::kzClass) ? named(attributes.get(Attribute::kzClass)) : nullptr;
    return row && row->kind == AClassKind::layer ? *row : *m_layer;
}

}  // namespace svg
