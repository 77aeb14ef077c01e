// The attributes of one element that the reader knows, presentation attributes among them, read once.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "formats/svg/values/transform.h"
#include "formats/svg/xml/namespaces.h"

namespace svg {

// One number for every plain attribute: an Attribute's own, or this and the number of a property.
constexpr std::uint8_t kPropertySlot = 64;
static_assert(kPropertySlot == 64 && static_cast<std::size_t>(Attribute::count) <= kPropertySlot);

class AttributeSet {
public:
    // Reads all attributes; declarations of namespaces among them are added first.
    void read(pugi::xml_node element, Namespaces& namespaces);
    // For drawing: plain names, and "href" with whatever prefix.
    void read(pugi::xml_node element);

    // For readers of their own: starts empty, takes an attribute without a prefix. The texts are kept by
    // address. False when the name is unknown.
    void clear() { m_present = {}; }
    bool addPlain(const char* name, const char* value);

    bool has(Attribute attribute) const { return (m_present[0] >> static_cast<int>(attribute) & 1) != 0; }
    // The text of an attribute, empty when it is not there.
    std::string_view get(Attribute attribute) const {
        return has(attribute) ? std::string_view(m_values[static_cast<std::size_t>(attribute)])
                              : std::string_view();
    }
    // An attribute that the element's style gives it, by its name; the text is terminated and kept by address.
    void give(const char* name, const char* value) { take(name, value); }
    // A transform that the element's style gives it stands for its attribute, until the next read.
    void setTransform(const Affine& transform) {
        m_present[0] |= kHasTransform | std::uint64_t{1} << static_cast<int>(Attribute::transform);
        m_transform = transform;
    }
    // Null: the attribute's text counts.
    const Affine* transform() const { return (m_present[0] & kHasTransform) != 0 ? &m_transform : nullptr; }
    // The presentation attributes that are there: bit n is row n of the table of properties.
    std::uint64_t presentation() const { return m_present[1]; }
    std::string_view presentation(std::size_t property) const { return m_values[kPropertySlot + property]; }

private:
    void readAll(pugi::xml_node element, Namespaces& namespaces, bool declare);
    bool take(const char* name, const char* value);
    void addQualified(const char* name, const char* value, Namespaces& namespaces, bool declare);
    void set(Attribute attribute, const char* value) {
        m_present[0] |= std::uint64_t{1} << static_cast<int>(attribute);
        m_values[static_cast<std::size_t>(attribute)] = value;
    }

    static constexpr std::uint64_t kHasTransform = std::uint64_t{1} << static_cast<int>(Attribute::unknown);

    std::array<std::uint64_t, 2> m_present{};  // a bit for each slot: the attributes, the properties
    std::array<const char*, std::size_t{2} * kPropertySlot> m_values;  // valid where present
    Affine m_transform;
};

}  // namespace svg
