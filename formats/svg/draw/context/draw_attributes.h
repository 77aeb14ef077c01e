// The attributes of one element, with all its presentation attributes, read in one walk.
//
// Namespaces are not looked at: what has to be drawn is known by its name, and "href" counts with whatever
// prefix.
#pragma once

#include <array>
#include <bit>

#include "formats/svg/style/style.h"
#include "formats/svg/xml/attributes.h"

namespace svg {

class DrawAttributes {
public:
    void read(pugi::xml_node element);

    // What import reads, too: geometry, transform, id, class, style, the import's presentation attributes.
    const AttributeSet& plain() const { return m_plain; }
    bool has(Attribute attribute) const { return m_plain.has(attribute); }
    std::string_view get(Attribute attribute) const { return m_plain.get(attribute); }

    bool hasPresentation() const { return m_plain.presentation() != 0 || m_present != 0; }
    // Calls use(Property, std::string_view) for every presentation attribute.
    template <class Use>
    void forEachPresentation(Use use) const {
        for (std::uint64_t rest = m_plain.presentation(); rest != 0; rest &= rest - 1) {
            const auto property = static_cast<Property>(std::countr_zero(rest));
            use(property, m_plain.get(presentationAttribute(property)));
        }
        for (std::uint64_t rest = m_present; rest != 0; rest &= rest - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(rest));
            use(static_cast<Property>(bit), std::string_view(m_values[bit]));
        }
    }

private:
    static constexpr auto kCount = static_cast<std::size_t>(Property::count);
    static_assert(kCount <= 64);

    AttributeSet m_plain;
    std::uint64_t m_present = 0;               // one bit for each property beyond the import's
    std::array<const char*, kCount> m_values;  // valid where present
};

}  // namespace svg
