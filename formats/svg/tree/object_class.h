// Which class of the document model an element becomes.
#pragma once

#include <string_view>

#include "formats/svg/style/attributes.h"
#include "formats/svg/values/text_map.h"
#include "kzcore/document/class_info.h"

namespace svg {

// Elements whose content becomes objects.
constexpr bool isContainer(Element element) {
    return element >= Element::svg && element <= Element::use;
}
// Elements that become objects.
constexpr bool isDrawn(Element element) {
    return element >= Element::svg && element <= Element::image;
}

constexpr bool isContainerClass(const AClassInfo& row) {
    return row.kind == AClassKind::group || row.kind == AClassKind::composite ||
           row.kind == AClassKind::effect;
}

class ObjectClasses {
public:
    ObjectClasses();

    // The class of an element: the one it names (kz:class), when that is a class of objects which can hold
    // what the element holds; else by its kind. `masked`: it has a mask or clip path. `onPath`: text on path.
    const AClassInfo& classFor(Element element, const AttributeSet& attributes, bool masked, bool onPath);
    // The layer class that a layer names; the drawing layer without one.
    const AClassInfo& layerClass(const AttributeSet& attributes);
    const AClassInfo& shadow() const { return *m_shadow; }

private:
    const AClassInfo* named(std::string_view name);
    const AClassInfo& pathClass(const AttributeSet& attributes) const;

    const AClassInfo *m_rectangle, *m_oval, *m_polygon, *m_starburst, *m_fan, *m_path, *m_text, *m_pathText,
        *m_bitmap, *m_group, *m_composite, *m_mask, *m_shadow, *m_layer;
    TextMap<const AClassInfo*> m_named;
};

}  // namespace svg
