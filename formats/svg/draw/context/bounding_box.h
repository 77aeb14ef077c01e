// The bounding box of an element in its user space, computed on first use: most elements never need theirs.
#pragma once

#include <optional>

#include "formats/svg/draw/context/context.h"
#include "formats/svg/values/path_data.h"

namespace svg {

class BoundingBox {
public:
    // Both must outlive the box.
    BoundingBox(DrawContext& context, const DrawnElement& element)
        : m_context(&context), m_element(&element) {}
    explicit BoundingBox(const APath& outline) : m_outline(&outline) {}
    explicit BoundingBox(const AFRect& known) : m_box(known) {}

    const AFRect& get() {
        if (!m_box) m_box = m_outline ? outlineBounds(*m_outline) : m_context->boundsOf(*m_element);
        return *m_box;
    }

private:
    DrawContext* m_context = nullptr;
    const DrawnElement* m_element = nullptr;
    const APath* m_outline = nullptr;
    std::optional<AFRect> m_box;
};

}  // namespace svg
